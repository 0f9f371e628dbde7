#!/usr/bin/env bash
# keyboard.sh QUILLMERE QUILLMERE_CLI CLIPBOARD_OWNER: the whole program without a mouse: a pair is translated from its
# first row to its last, each command is picked in the menu, each window is walked through by Tab and left.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
# shellcheck source=tests/e2e/translator.sh
source "$(dirname -- "$(readlink -f -- "$0")")/translator.sh"
quillmere=$1 cli=$2 clipboard_owner=$3 pictures=
start_display

# What the desktop would open pages with, and tell about the system with.
mkdir "$work/bin" "$work/files"
for tool in xdg-open kinfocenter; do
    printf '#!/bin/sh\necho "%s $*" >>"%s/opened"\n' "$tool" "$work" >"$work/bin/$tool"
    chmod +x "$work/bin/$tool"
done
export PATH=$work/bin:$PATH
cd "$work/files"
printf '%s\r\n' '[Menu]' Open=Open Close=Close Save=Save '[Dialog]' Ok=OK Cancel=Cancel Close=Close Help=Help >main.lng
printf '%s\r\n' '; Dutch' '[Menu]' 'Save = Bewaren' >dutch.lng
mkdir "$work/expected"
cp main.lng dutch.lng "$work/expected"
expected=("$work/expected/main.lng" "$work/expected/dutch.lng")

# as_edits [SECTION KEY TRANSLATION]...: the file is as the command line program makes it by these edits, given as JSON.
as_edits() {
    while (($#)); do
        printf '{"section":"%s","key":"%s","translation":"%s"}\n' "$1" "$2" "$3"
        shift 3
    done | "$cli" apply "${expected[@]}" -
    diff "${expected[1]}" dutch.lng >&2 || fail "the window saved other bytes than the command line program"
}
# pick LETTER KEY...: in the menu of that letter, from its first entry.
pick() {
    key "alt+$1"
    rest
    key "${@:2}" Return
}
# leaves TITLE KEY...: the window with that title, which has come.
leaves() {
    comes "$1"
    rest
    key "${@:2}"
    await "the end of the window \"$1\" by ${*:2}" closed "$found"
}
# box KEY...: answers the box that asks for a line, whose title is that of the main window.
box() {
    await "the box that asks" over_main
    rest
    key "$@"
    await "the end of the box by $*" closed "$found"
}

# ---- A pair from its first untranslated row to the last, and the last one again, as F3 finds no other.
start main.lng dutch.lng
rest
for text in Openen Sluiten Goed Annuleren Hulp 'Hulp!'; do
    key F3
    edit "$text"
done
save dutch.lng
as_edits Menu Open Openen Menu Close Sluiten Dialog Ok Goed Dialog Cancel Annuleren Dialog Help 'Hulp!'
[[ $("$cli" status main.lng dutch.lng --json) == *'"empty":0'* ]] || fail "not all rows are translated"

# ---- The editor: Tab goes to its buttons, to the default text, and back; a text comes from another program.
go_to 1
key Return
comes Translation
rest
type_text Ontsluiten
leaves Translation Tab space # Ok
back
go_to 2
key Return
comes Translation
rest
type_text Niet
leaves Translation Tab Tab Return # Cancel
back
key Return
comes Translation
rest
type_text Niet
leaves Translation Escape
back
key Return
leaves Translation alt+F4
back
go_to 4
key Return
leaves Translation Tab Tab Tab x Tab O K Return # past the default text, which takes no letters
back
go_to 5
printf 'op = "de"\r\nklem\tbord' | "$clipboard_owner" >"$work/owner" &
owner=$!
started+=("$owner")
await "the clipboard" grep -q ready "$work/owner"
key Return
leaves Translation ctrl+v Return
back
kill "$owner"
save dutch.lng
as_edits Menu Open Ontsluiten Dialog Ok OK Dialog Cancel 'op = \"de\" klem bord'

# ---- The main window: Tab goes from the list to the boxes and buttons, Shift and Tab back to the check box.
key Tab Tab Return
leaves 'Open File' Escape
back
key Tab Tab Tab Tab space
leaves 'Open File' alt+F4
back
go_to 7
key Return
leaves Translation Delete Return
back
go_to 7
key shift+Tab space # empty translations are saved from here on
save dutch.lng
grep -q '^Help=.\?$' dutch.lng || fail "the empty translation was not saved"

# ---- Each command of the menu.
pick f
leaves 'Open File' Escape
back
pick f Down
leaves 'Open File' Escape
back
pick f Down Down
box Escape
question Return # no name was given
back
pick f Down Down
box alt+c
question Return
back
key ctrl+g
box alt+F4
back
pick f Down Down
box e e n alt+o
await "the new file" test -e een.lng
[[ ! -s een.lng ]] || fail "the new file is not empty"
back
pick t # the next untranslated row
edit Eerst
pick f Down Down Down Down
await "what is saved" grep -q 'Open=Eerst' een.lng
back
pick f Down Down Down
box t w e e Return
question Return # it has been created
cmp main.lng twee.lng || fail "the copy is not like the main file"
back
pick t Down
leaves Find c l o Return Escape
back
edit Dicht
pick t Down Down
leaves Find h e l p Tab space Tab Tab Escape # Tab: Find Next, Cancel, the text
back
edit Bijstand
pick t Down Down Down Down
box 4 Tab Return
back
edit Prima
pick t Down Down Down Down
box 5 Tab Tab space # Cancel
back
edit Best
pick t Down Down Down # the filter; it loads anew
question alt+y
back
go_to 6
go_to 7 # it is not shown
edit Toe
pick f Down Down Down Down
await "what is saved" grep -q 'Close=Toe' twee.lng
back
cp main.lng "$work/expected/main.lng"
cp main.lng "$work/expected/dutch.lng"
mv twee.lng dutch.lng
as_edits Menu Close Dicht Dialog Ok Best Dialog Help Bijstand Dialog Close Toe
mv dutch.lng twee.lng
pick h
await "the help page" grep -q '^xdg-open file:///.*/help/index.html$' "$work/opened"
back
key alt+h
rest
key a
leaves 'About Quillmere' Tab space Escape
await "the system's own information" grep -q '^kinfocenter' "$work/opened"
back
pick h Down
leaves 'About Quillmere' Return
back
pick f Up # Exit
ends 0
grep -q 'EmptyTrans=1' "$XDG_CONFIG_HOME/Quillmere/settings.ini" || fail "the check box was not kept"
no_errors
echo "OK"
