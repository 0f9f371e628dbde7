#!/usr/bin/env bash
# controls.sh PROGRAM: uses the gallery's page of controls as a person does: types, copies, tabs, ticks, presses, and
# rests the mouse until a tip comes.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
start_display

start_program "$1" --log
bring_to_front ' - Quillmere gallery$'

at() {
    place "$1"
    xdotool mousemove --window "$window" "$((x + ${2:-0}))" "$y"
}
click() {
    at "$1"
    sleep 0.6 # or this would be a double click with the last one
    xdotool click 1
}
# says LINE: waits for the line.
says() {
    local what=$1
    await "\"$what\" (it was: $(since | tail -n 1))" heard "$what"
}

await "the list of pages" grep -q '^at [0-9,]* Controls$' "$work/log"
click Controls
await "the page" grep -qx 'page Controls' "$work/log"
await "its last control" grep -q '^at [0-9,]* Round$' "$work/log"

# Text: typed, undone, copied from another box, cut to a limit.
step
click 'One line'
type_text 'Hello, you'
says 'One line: Hello, you'
key ctrl+z
says 'One line: '
step
click Locked
type_text 'no'
click 'Several lines' # it has a Cyrillic line
key ctrl+a ctrl+c
click 'One line'
key ctrl+a ctrl+v
says 'One line: Привет, мир'
key End
type_text '!'
says 'One line: Привет, мир!'
since | grep '^Locked: ' && fail "a locked box was changed"
step
key ctrl+a ctrl+c
click 'Ten units'
key ctrl+v
says 'Ten units: Привет, ми'
step
click 'Several lines'
key ctrl+a
type_text 'one'
key ctrl+Return
type_text 'two'
says 'Several lines: one | two'

# Tab goes through all of it in its order, there and back; Enter and Escape find their buttons.
step
click 'One line'
key ctrl+a
type_text 'a'
says 'One line: a'
key Tab
type_text 'b'
says 'Password: bsecret'
key Tab Tab
type_text 'c'
await "a letter in the box from right to left" eval 'since | grep -q "^Right to left: .*c"'
key Tab Tab
type_text 'd'
says 'Several lines: one | twod'
step
key Tab space
says 'Buttons can be pressed: not ticked'
key space
says 'Buttons can be pressed: ticked'
key Tab space
says 'Tips stay: ticked'
key space
says 'Tips stay: not ticked'
key Tab space
says 'Box at the right: ticked'
step
key Return
says 'OK: pressed'
key Escape
says 'Cancel: pressed'
step
key Tab Tab Tab space # the box that is disabled is passed over
says 'Step: pressed'
key Return
await "a second press" eval '(($(since | grep -cx "Step: pressed") == 2))'
key shift+Tab shift+Tab space
says 'OK: pressed'
step
key alt+t
says 'Tips stay: ticked'
key alt+t
says 'Tips stay: not ticked'
step
click 'Round'
says 'Round: pressed'
click 'Buttons can be pressed'
says 'Buttons can be pressed: not ticked'
click 'Step'
key Return
key alt+b
says 'Buttons can be pressed: ticked'
since | grep 'Step: pressed\|OK: pressed' && fail "a disabled button was pressed"

# Tips: after a rest, gone by a move, gone by themselves.
await "no tip on the way" windows 1
at Cancel
await "a tip" windows 2
at Round # it has none
await "no tip after a move" windows 1
at Cancel 6
await "the next tip" windows 2
await "its end by itself" windows 1
step
key alt+t
says 'Tips stay: ticked'
at Step
await "a tip again" windows 2
sleep 4
windows 2 || fail "a tip that stays has gone"
at 'Round'
await "its end by a move" windows 1

key ctrl+Tab
step
key Down
await "the next page" heard 'page Grid'
xdotool key alt+F4
ends 0
no_errors
echo "OK"
