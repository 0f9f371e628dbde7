# Tab-separated rows of quillmere-cli as an aligned table, `width` columns wide, `limit` rows at most.
# Needs LC_ALL=C: it counts bytes, and any awk will do.

# Terminal columns of a UTF-8 text: continuation bytes take none, East Asian characters two.
function columns(text,    wide) {
    gsub(/[\200-\277]/, "", text)
    wide = text
    return length(text) + gsub(/[\343-\355\360]/, "", wide)
}

# The text cut to `most` columns, with blanks behind it up to there.
function cell(text, most,    i, c, used, step, out) {
    if (columns(text) > most) {
        for (i = 1; i <= length(text); i++) {
            c = substr(text, i, 1)
            if (c !~ /[\200-\277]/) {
                step = columns(c)
                if (used + step > most - 3) break
                used += step
            }
            out = out c
        }
        text = out "..."
    }
    return sprintf("%s%" (most - columns(text)) "s", text, "")
}

function line(a, b, c, d, e,    text) {
    text = cell(a, 4) "  " cell(b, 16) "  " cell(c, 18) "  " cell(d, wide) "  " cell(e, wide)
    sub(/ +$/, "", text)
    print text
}

BEGIN {
    FS = "\t"
    wide = int((width - 4 - 16 - 18 - 8) / 2)
    if (wide < 16) wide = 16
    if (wide > 60) wide = 60
    line("Row", "Section", "Key", "Default", "Translation")
}
NR <= limit { line($1, $2, $3, $4, $5) }
END { if (NR > limit) printf "... and %d more rows\n", NR - limit }
