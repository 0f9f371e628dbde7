#!/usr/bin/env bash
# gallery.sh PROGRAM CASE: opens the gallery in a real window and answers its file dialog as a person would. Cases: pick,
# cancel.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
start_display

# The dialog begins in the present directory.
mkdir "$work/files"
cd "$work/files"
touch english.lng dutch.lng

start_program "$1" --log

# said_times COUNT LINE
said_times() { (($(grep -cxF -- "$2" "$work/log") >= $1)); }
click() {
    place "$1"
    xdotool mousemove --window "$window" "$x" "$y" click 1
}

await "the first page" heard "page Button faces on light"
await "the window" visible "Button faces on light - Quillmere gallery"
window=$found
await "the focus" has_focus "$window"
click "Dialogs"
await "the page of the dialogs" heard "page Dialogs"
await "its title" visible "Dialogs - Quillmere gallery"
click "Open a file\.\.\."
await "the dialog" visible "Open a file"
await "the focus of the dialog" has_focus "$found"

answer='answer "Open a file...":'
case $2 in
    pick)
        xdotool type --delay 30 dutch.lng
        xdotool key Return
        await "the name that was typed" heard "$answer $work/files/dutch.lng"
        ;;
    cancel)
        xdotool key Escape
        await "the first answer" heard "$answer cancelled"
        await "the end of the dialog" gone "Open a file"
        await "the focus of the window" has_focus "$window"
        xdotool key space # the button has the focus again
        await "the dialog once more" visible "Open a file"
        await "its focus" has_focus "$found"
        xdotool key alt+F4
        await "the second answer" said_times 2 "$answer cancelled"
        ;;
    *) fail "no case $2" ;;
esac
await "the end of the dialog" gone "Open a file"

await "the focus of the window" has_focus "$window"
click "Desktop"
await "another page" heard "page Desktop"
xdotool key alt+F4
ends 0
no_errors
echo "OK"
