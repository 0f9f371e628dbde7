#!/usr/bin/env bash
# workbench.sh QUILLMERE QUILLMERE_CLI SAMPLES [PICTURES]: a translator's day in a real window, on a copy of the sample
# pair, by real keys and clicks. With a folder for pictures each window is photographed.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
# shellcheck source=tests/e2e/translator.sh
source "$(dirname -- "$(readlink -f -- "$0")")/translator.sh"
quillmere=$1 cli=$2 samples=$3 pictures=${4-}
start_display
export XDG_STATE_HOME=$work/state

mkdir "$work/files"
cp "$samples"/*.lng "$work/files"
cd "$work/files"

# ---- Open both files by the dialog, from the menu and from the button.
start
picture "$main" start
key alt+f
rest
key Return
open_file "$work/files/english.lng"
key alt+f
rest
key Down Return
open_file "$work/files/dutch.lng"

# ---- Save what was filled; then F3, Enter, type, Enter, and save again: as the command line program does it.
mkdir "$work/expected"
cp "$samples"/*.lng "$work/expected"
expected=("$work/expected/english.lng" "$work/expected/dutch.lng")
# save_and_compare: with what the command line program makes of the same edits.
save_and_compare() {
    save dutch.lng
    key ctrl+s # a second one has nothing to do
    back
    if cmp "${expected[1]}" dutch.lng; then return; fi
    diff <(iconv -f cp1252 "${expected[1]}") <(iconv -f cp1252 dutch.lng) >&2 || true
    fail "the window saved other bytes than the command line program"
}
"$cli" fill "${expected[@]}" >/dev/null
save_and_compare
key F3
edit 'Bestanden &laten staan'
key F3
edit "Foto's die er al zijn &overslaan"
key F3
edit 'Gemaakt "tussen"'
mapfile -t keys < <("$cli" rows "${expected[@]}" --untranslated | awk -F '\t' '$5 == "" { print $2 "\t" $3 }')
edits=('Bestanden &laten staan' "Foto's die er al zijn &overslaan" 'Gemaakt \"tussen\"')
for i in 0 1 2; do
    printf '{"section":"%s","key":"%s","translation":"%s"}\n' "${keys[i]%%$'\t'*}" "${keys[i]##*$'\t'}" "${edits[i]}"
done | "$cli" apply "${expected[@]}" -
save_and_compare

# ---- Search, and the messages of it.
key ctrl+f
comes Find
picture "$found" find
xdotool type --delay 15 nowhere
key Return
comes Attention
picture "$found" message
key Return
await "the end of the message" gone Attention
comes Find
key Escape
await "the end of the search" gone Find
back

# ---- Cancel in the editor changes nothing; then closing, three ways.
key F3 Return
comes Translation
picture "$found" translation
rest
xdotool type --delay 15 Weg
key Escape
await "the end of the editor" gone Translation
back
edit Blijft
saved=$(sha256sum <dutch.lng)
key alt+F4
question Escape
back
key alt+F4
comes Attention
picture "$found" question
key alt+n
ends 0
[[ $(sha256sum <dutch.lng) == "$saved" ]] || fail "No at the question saved all the same"

start english.lng dutch.lng
rest
go_to 59x
picture "$main" main
edit 'Nu bewaard'
key alt+F4
question alt+y
ends 0
grep -q 'Nu bewaard' dutch.lng || fail "Yes at the question did not save"

# ---- What cannot be saved is kept as edits.
start english.lng dutch.lng
rest
go_to 59
edit 'Niet te bewaren'
chmod 444 dutch.lng
key alt+F4
question alt+y
question Return # it cannot be saved
question Return # where it is now
ends 0
chmod 644 dutch.lng
kept=("$XDG_STATE_HOME"/quillmere/dutch-*.jsonl)
"$cli" apply english.lng dutch.lng "${kept[0]}"
grep -q 'Niet te bewaren' dutch.lng || fail "the edits that were kept are not in the file"

# ---- The waiting window is painted while the job runs: the program is held as soon as it is up.
stop_at_waiting_window
picture "$found" wait
kill -CONT "$program"
kill "$program"
wait "$program" 2>/dev/null || true

# ---- A new translation, and the settings of the last time.
start english.lng
key alt+f
rest
picture root menu
key Down Down Return
answer_box fries
await "the new file" test -e fries.lng
[[ ! -s fries.lng ]] || fail "the new file is not empty"
key alt+h
rest
key a
comes "About Quillmere"
picture "$found" about
key Escape
await "the end of the About window" gone "About Quillmere"
back
key alt+F4
question alt+n
ends 0

# ---- The mouse, and the settings of the last time: the widths of two columns, and the check box.
# edges: of the columns on the screen, from the first row of pixels that holds nothing but the lines between them;
# that row's place comes first.
edges() {
    import -silent -window "$main" -crop 900x150+0+100 +repage -depth 8 txt:- | awk '
        NR > 1 && !all {
            split($1, at, /[,:]/)
            if (at[2] != y) { if (n >= 6) { all = 1; next } y = at[2]; n = other = 0; found = "" }
            if ($3 == "#8C8C8C") { if (last != $3) n += other ? -9 : 1; found = found " " at[1] }
            else if ($3 != "#FFFFFF") other = 1
            last = $3
        }
        END { print y + 100 found }'
}
start english.lng dutch.lng
rest
xdotool windowsize --sync "$main" 1000 700
rest
read -r y _ _ _ _ _ default_edge translation_edge < <(edges)
xdotool mousemove --window "$main" "$((default_edge - 50))" "$((y + 30))" click --repeat 2 --delay 50 1
comes Translation
key Escape
await "the end of the editor" gone Translation
back
xdotool click 3
rest
picture root pop-up
key Up Return # its last entry
answer_box 1
# drag X BY: the right edge of a column.
drag() {
    xdotool mousemove --window "$main" "$1" "$((y - 10))"
    rest
    xdotool mousedown 1 mousemove_relative -- "$2" 0
    rest
    xdotool mouseup 1
    rest
}
drag "$translation_edge" -45
drag "$default_edge" 70
read -r _ dragged < <(edges)
key shift+Tab space # the check box
key alt+F4
ends 0
start english.lng dutch.lng
rest
xdotool windowsize --sync "$main" 1000 700
rest
read -r _ found < <(edges)
[[ $found == "$dragged" ]] || fail "the columns ended at $dragged, and end at $found after a new start"
for setting in ColDefaultWidth=270 ColTransWidth=155 EmptyTrans=1; do
    grep -q "$setting" "$XDG_CONFIG_HOME/Quillmere/settings.ini" || fail "$setting was not kept"
done
go_to 2
edit Ook
save dutch.lng
grep -q '^[^;=]*=.\?$' dutch.lng || fail "after a new start empty translations are not saved"
key alt+F4
ends 0
no_errors
echo "OK"
