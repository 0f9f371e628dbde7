#!/usr/bin/env bash
# pair.sh QUILLMERE QUILLMERE_CLI MAIN TRANSLATED [PICTURES]: a translator's work on any pair of files, in a real window
# and on a copy of the pair. What is typed is made of the translated file's own words, so it is in the script that the
# file holds. The file that the window saves must be, byte for byte, what the command line program makes of the same
# edits. QUILLMERE_CODE_PAGE tells the code page of files without a mark. Ends with a line about the pair.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
# shellcheck source=tests/e2e/translator.sh
source "$(dirname -- "$(readlink -f -- "$0")")/translator.sh"
quillmere=$1 cli=$2 given=("$(realpath -- "$3")" "$(realpath -- "$4")") pictures=${5-}
start_display
shopt -s extglob

# Three copies of the pair: the window works on `pair`, the command line program does all edits at once on `expected`,
# and on `scout` one by one, to see what the list is like after each.
copies() {
    local name
    mkdir "$work/$1"
    for name in "${given[@]}"; do install -m 644 -- "$name" "$work/$1/$(basename -- "$name")"; done
}
for copy in pair expected scout; do copies "$copy"; done
names=("$(basename -- "$3")" "$(basename -- "$4")")
pair=("${names[@]/#/$work/pair/}") expected=("${names[@]/#/$work/expected/}") scout=("${names[@]/#/$work/scout/}")

# look: reads the list of `scout` into arrays from 1. `shown` has the numbers of the rows that the filter shows.
look() {
    local fields line
    sections=(x) keys=(x) defaults=(x) translations=(x) shown=()
    while IFS= read -r line; do
        # A tab as IFS would swallow empty fields.
        IFS=$'\x1F' read -ra fields <<<"${line//$'\t'/$'\x1F'}"
        sections+=("${fields[1]-}") keys+=("${fields[2]-}") defaults+=("${fields[3]-}") translations+=("${fields[4]-}")
    done < <("$cli" rows "${scout[@]}")
    mapfile -t shown < <("$cli" rows "${scout[@]}" --untranslated | cut -f 1)
    count=$((${#keys[@]} - 1))
}
trimmed() {
    local text=${1##+( )}
    printf '%s' "${text%%+( )}"
}
# next_empty: the row that F3 goes to, or 0.
next_empty() {
    local i
    for ((i = row + 1; i <= count; i++)); do
        [[ -n $(trimmed "${translations[i]}") ]] || { echo "$i"; return; }
    done
    echo 0
}
# next_with ARRAY TEXT: the row that the search goes to, or 0.
next_with() {
    local -n cells=$1
    local i
    for ((i = row + 1; i <= count; i++)); do
        [[ ${cells[i],,} != *"${2,,}"* ]] || { echo "$i"; return; }
    done
    echo 0
}
json() {
    local text=${1//\\/\\\\}
    printf '"%s"' "${text//\"/\\\"}"
}
# note TEXT: an edit of the current row, for the command line program.
note() {
    local line
    line="{\"section\":$(json "${sections[row]}"),\"key\":$(json "${keys[row]}"),\"translation\":$(json "$1")}"
    echo "$line" >>"$work/edits"
    "$cli" apply "${scout[@]}" - <<<"$line"
    look
}
edit_row() {
    edit "$1"
    note "$1"
}
compare_files() {
    cmp "${expected[1]}" "${pair[1]}" || fail "$1: the window has saved other bytes than the command line program"
    cmp "${given[0]}" "${pair[0]}" || fail "$1: the main file has changed"
}
# saves STEP: by the key; a second time has nothing to do.
saves() {
    local before
    save "${pair[1]}"
    before=$(stat -c %y%i "${pair[1]}")
    key ctrl+s
    back
    [[ $(stat -c %y%i "${pair[1]}") == "$before" ]] || fail "$1: a second save wrote the file again"
    "$cli" apply "${expected[@]}" "$work/edits"
    : >"$work/edits"
    compare_files "$1"
}

# ---- The files, by the dialog; the duplicates are filled at once.
: >"$work/edits"
start
key alt+f
rest
key Return
open_file "${pair[0]}"
key alt+f
rest
key Down Return
open_file "${pair[1]}"
"$cli" fill "${expected[@]}" >"$work/filled"
"$cli" fill "${scout[@]}" >/dev/null
if cmp -s "${given[1]}" "${expected[1]}"; then
    key ctrl+s
    rest
else
    save "${pair[1]}"
fi
compare_files "the fill"
look
status=$("$cli" status "${scout[@]}" --json)

# ---- Words of the file, from all over it: at first such as ASCII has not, then any.
words=()
for pattern in '*[^ -~]*' '*'; do
    for ((i = 1; i <= count && ${#words[@]} < 6; i += 1 + count / 97)); do
        text=${translations[i]}
        # shellcheck disable=SC2053  # a pattern
        if [[ $text == $pattern && $text != *[[:cntrl:]]* ]] && ((${#text} > 2)); then
            words+=("$(trimmed "${text:0:14}")")
        fi
    done
done
words+=(One Two Three Four Five Six)
keys_for "${words[@]}"

# ---- The next untranslated row, three times.
row=0
for i in 0 1 2; do
    next=$(next_empty)
    key F3
    ((next)) || break
    row=$next
    [[ $i != 0 ]] || picture "$main" main
    edit_row "${words[i]}"
done

# ---- A line by its number, and marks that other formats would trip over.
row=$((count / 2 + 1))
go_to "$row"
edit_row "${words[3]} = \"x\"; 'y' [z] \\n &${words[4]} #1 100 %"

# search MODE KEY ARRAY: for a text of a row further down; the dialog goes to the first row that holds it.
search() {
    local text
    row=1
    go_to 1
    for ((i = count * 2 / 3; i < count; i++)); do
        local -n searched=$3
        text=$(trimmed "${searched[i]:0:20}")
        if ((${#text} > 3)) && [[ $text != *[[:cntrl:]]* ]]; then break; fi
    done
    ((i < count)) || return 0
    keys_for "${words[@]}" "$text"
    row=$(next_with "$3" "$text")
    key "$2"
    comes Find
    rest
    type_text "$text"
    [[ $1 != phrase ]] || picture "$found" find
    key Return
    rest
    key Escape
    await "the end of the search for a $1" gone Find
    back
    edit_row "$1 ${words[5]}"
}
search phrase ctrl+f defaults
search translation ctrl+t translations
saves "the edits"

# ---- The same list after a new start.
go_to 1
go_to "$((count / 2 + 1))"
key Return
comes Translation
rest
picture "$found" translation
key Escape
await "the end of the editor" gone Translation
back
import -silent -window "$main" "$work/before.png"
picture "$main" list
key alt+F4
ends 0
start "${pair[@]}"
rest
go_to 1
go_to "$((count / 2 + 1))"
rest
import -silent -window "$main" "$work/after.png"
compare -metric AE "$work"/{before,after}.png null: 2>/dev/null || fail "the list looks different after a new start"

# ---- The filter: only rows that need work can be reached; the others stay as they are.
filter() {
    key alt+t
    rest
    key Down Down Down Return
    rest
}
filter
picture "$main" filtered
if ((${#shown[@]})); then
    row=${shown[0]}
    go_to "$row"
    for ((hidden = 1; hidden <= count; hidden++)); do [[ " ${shown[*]} " == *" $hidden "* ]] || break; done
    go_to "$hidden"
    edit_row "${words[0]} ${words[1]}"
    saves "the filter"
fi
filter
row=$count
go_to "$row"
edit_row "${words[2]}"
saves "the whole list"
key alt+F4
ends 0
no_errors
echo "OK ${names[*]} ${QUILLMERE_CODE_PAGE-}: $(<"$work/filled") $status, all bytes are equal"
