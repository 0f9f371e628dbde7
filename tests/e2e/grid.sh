#!/usr/bin/env bash
# grid.sh PROGRAM: drives grid_window by real clicks, drags, the wheel and keys.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
start_display

start_program "$@"
bring_to_front '^Grid$'

# is WHAT PATTERN: the last thing that the grid has said comes to match.
last_matches() { tail -n 1 "$work/log" | grep -qE -- "$1"; }
is() {
    await "$1 ($2; it is: $(tail -n 1 "$work/log"))" last_matches "$2"
}
at() { xdotool mousemove --window "$window" "$1" "$2"; }
click() {
    at "$1" "$2"
    sleep 0.6 # or this would be a double click with the last one
    xdotool click "${3:-1}"
}
# drag X Y X2 Y2 [BUTTON]: in steps, as a hand does it.
drag() {
    local i
    at "$1" "$2"
    sleep 0.2
    xdotool mousedown "${5:-1}"
    for ((i = 1; i <= 5; i++)); do
        at $(($1 + ($3 - $1) * i / 5)) $(($2 + ($4 - $2) * i / 5))
        sleep 0.05
    done
    xdotool mouseup "${5:-1}"
}

is "the grid" '^row -1 selected 0 top 0 left 0 widths 60,80,120 first r001 focus$'
click 100 50
is "a click on a row" '^row 2 selected 1 top 0'
xdotool key Down
is "a key" '^row 3 '
xdotool key End
is "the last row" '^row 100 selected 1 top 8[0-9]'
xdotool key Home
is "the first row" '^row 1 selected 1 top 0 '
at 100 100
xdotool click 5
is "the wheel" ' top 3 '
xdotool click 4
is "the wheel back" ' top 0 '
click 300 100
sleep 0.3
is "a click right of the columns" '^row 1 '

drag 100 30 100 90 2
await "what was dropped" grep -q '^dropped r001 on row 4$' "$work/log"
await "the end of the drag" grep -q '^dragged with effect 1$' "$work/log"

drag 61 8 91 20
is "a dragged edge" 'widths 90,80,120 '
at 91 8
sleep 0.3
xdotool click --repeat 2 --delay 60 1
is "a double click on an edge" 'widths [2-5][0-9],80,120 '
click 20 8
is "a sort" 'first r001'
click 20 8
is "the other way" 'first r100'

drag 392 30 392 150
is "the thumb of the bar" ' top [3-9][0-9] '
at 392 150
xdotool windowsize "$window" 200 300
is "the grid stays" 'first r100'
at 100 8
xdotool key Right Right
is "columns beside the window" ' left 20 '
xdotool key Home
is "back" '^row 1 selected 1 top 0 left 0 '

xdotool key m
click 100 50
xdotool keydown shift
click 100 122
xdotool keyup shift
is "a range of rows" '^row 6 selected 5 '
xdotool keydown ctrl
click 100 86
xdotool keyup ctrl
is "one of them less" '^row 4 selected 4 '
xdotool key l
sleep 0.3
click 100 50
is "a row of several lines" '^row [12] selected 1 '

xdotool key alt+F4
ends 0
no_errors
echo "OK"
