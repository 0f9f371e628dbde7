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
type_keys() { xdotool type --delay 30 -- "$1"; }
# windows COUNT: so many windows of the program show, the main one included.
windows() { [[ $(xdotool search --onlyvisible --pid "$program" 2>/dev/null | wc -l) == "$1" ]]; }
ended() { ! kill -0 "$program" 2>/dev/null; }

await "the list of pages" grep -q '^at [0-9,]* Controls$' "$work/log"
click Controls
await "the page" grep -qx 'page Controls' "$work/log"
await "its last control" grep -q '^at [0-9,]* Round$' "$work/log"

# Text: typed, undone, copied from another box, cut to a limit.
step
click 'One line'
type_keys 'Hello, you'
says 'One line: Hello, you'
press ctrl+z
says 'One line: '
step
click Locked
type_keys 'no'
click 'Several lines' # it has a Cyrillic line
press ctrl+a ctrl+c
click 'One line'
press ctrl+a ctrl+v
says 'One line: Привет, мир'
press End
type_keys '!'
says 'One line: Привет, мир!'
since | grep '^Locked: ' && fail "a locked box was changed"
step
press ctrl+a ctrl+c
click 'Ten units'
press ctrl+v
says 'Ten units: Привет, ми'
step
click 'Several lines'
press ctrl+a
type_keys 'one'
press ctrl+Return
type_keys 'two'
says 'Several lines: one | two'

# Tab goes through all of it in its order, there and back; Enter and Escape find their buttons.
step
click 'One line'
press ctrl+a
type_keys 'a'
says 'One line: a'
press Tab
type_keys 'b'
says 'Password: bsecret'
press Tab Tab
type_keys 'c'
await "a letter in the box from right to left" eval 'since | grep -q "^Right to left: .*c"'
press Tab Tab
type_keys 'd'
says 'Several lines: one | twod'
step
press Tab space
says 'Buttons can be pressed: not ticked'
press space
says 'Buttons can be pressed: ticked'
press Tab space
says 'Tips stay: ticked'
press space
says 'Tips stay: not ticked'
press Tab space
says 'Box at the right: ticked'
step
press Return
says 'OK: pressed'
press Escape
says 'Cancel: pressed'
step
press Tab Tab Tab space # the box that is disabled is passed over
says 'Step: pressed'
press Return
await "a second press" eval '(($(since | grep -cx "Step: pressed") == 2))'
press shift+Tab shift+Tab space
says 'OK: pressed'
step
press alt+t
says 'Tips stay: ticked'
press alt+t
says 'Tips stay: not ticked'
step
click 'Round'
says 'Round: pressed'
click 'Buttons can be pressed'
says 'Buttons can be pressed: not ticked'
click 'Step'
press Return
press alt+b
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
press alt+t
says 'Tips stay: ticked'
at Step
await "a tip again" windows 2
sleep 4
windows 2 || fail "a tip that stays has gone"
at 'Round'
await "its end by a move" windows 1

press ctrl+Tab
step
press Down
await "the next page" heard 'page Grid'
xdotool key alt+F4
await "the end" ended
wait "$program" && status=0 || status=$?
[[ $status == 0 && ! -s $work/errors ]] || cat "$work/errors" >&2
[[ $status == 0 ]] || fail "the program ended with $status"
[[ ! -s $work/errors ]] || fail "the program wrote errors"
echo "OK"
