#!/usr/bin/env bash
# menu.sh PROGRAM: drives menu_window by real keys and clicks.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
start_display

start_program "$@"
await "the window" grep -q '^ready$' "$work/log"
bring_to_front '^Menus'
await "the focus" grep -q '^child has the focus' "$work/log"

# on CAPTION: the selector is there now.
on() { [[ $(since | grep '^on ' | tail -n 1) == "on $1" ]]; }
at() { xdotool mousemove --window "$window" "$1" "$2"; }

await "the client area below the bar" has_color 30 65 '#0000FF'

step
key alt+f
await "the File menu by Alt and its letter" on '&Open'
key Down
await "the next item, past the separator" on '&Save'
key Down Up Up
await "back to the first item" on '&Open'
key Escape Escape
await "the end of the popup" windows 1

step
key alt+f s
await "an item by its letter" heard 'command 12'
await "the end of the popup" windows 1

step
key ctrl+s
await "the key of an item" heard 'command 12'
step
key F3
await "a function key" heard 'command 20'
step
key x
await "other keys go to the focus" heard 'child types 120'

step
at 12 8
xdotool click 1
await "the File menu by the mouse" windows 2
key Right
await "the next menu by an arrow" on '&Find'
key Left
await "and back" on '&Open'
key Up
await "up to the last item" on 'E&xit'
key Up Right
await "a submenu" windows 3
key Down Return
await "an item of the submenu" heard 'command 24'
await "the end of both popups" windows 1

# Alt alone takes the keys to the bar, and gives them back.
step
key Alt_L
key Right Down
await "a menu by Alt and arrows" on '&Find'
key Escape Escape
key y
await "the keys are back" heard 'child types 121'
heard 'child loses the focus' && fail "the focus left the child for the menu"

# F10 does the same, and ends all that is open.
step
key F10 Right Down
await "a menu by F10 and arrows" on '&Find'
key F10
await "its end" windows 1
key z
await "the keys are back from F10" heard 'child types 122'
heard 'child loses the focus' && fail "the focus left the child for F10"

step
at 12 8
xdotool click 1
await "the File menu again" windows 2
read -r left top < <(xdotool getmouselocation --shell | sed -n 's/^[XY]=//p' | paste -sd ' ')
xdotool mousemove $((left + 20)) $((top + 24))
await "the selector under the mouse" on '&Open'
xdotool click 1
await "a pick by the mouse" heard 'command 10'

step
at 200 150
xdotool click 3
await "the menu at the mouse" heard 'menu at the mouse'
await "its window" windows 2
key f
await "a pick of that menu" heard 'picked 20'
step
xdotool click 3
await "that menu again" windows 2
key Escape
await "no pick" heard 'picked 0'

step
at 30 65
xdotool click 1
await "a press" heard 'child pressed at 10,15'
key alt+f x
ends 3
heard 'command 13' || fail "Exit was not picked"
if grep -qv 'This plugin does not support' "$work/errors"; then
    cat "$work/errors" >&2
    fail "the program wrote errors"
fi
echo "OK"
