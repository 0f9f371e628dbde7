#!/usr/bin/env bash
# messages.sh PROGRAM: drives message_window by real keys and clicks and compares what it says.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/display.sh"
start_display

start_program "$@"
await "the window" grep -q '^ready$' "$work/log"
bring_to_front '^Messages'
await "the focus" grep -q '^child: WM_SETFOCUS' "$work/log"

# says WHAT LINE...: what the program has said since the last time, these lines exactly.
said=$(wc -l <"$work/log")
says() {
    local what=$1 expected got i
    shift
    expected=$(printf '%s\n' "$@")
    for ((i = 0; i < 600; i++)); do
        got=$(tail -n +$((said + 1)) "$work/log")
        if [[ $got == "$expected" ]]; then
            said=$(wc -l <"$work/log")
            return
        fi
        sleep 0.05
    done
    diff -u --label expected --label said <(printf '%s\n' "$expected") <(printf '%s\n' "$got") >&2 || true
    cat "$work/errors" >&2
    fail "$what"
}
at() { xdotool mousemove --window "$window" "$1" "$2"; }

await "the picture of the window" has_color 5 5 '#C8E6C8'
await "the picture of the child" has_color 30 30 '#0000FF'

at 30 32
xdotool click 1
says "a click" 'child: WM_LBUTTONDOWN 1 10,12' 'child: WM_LBUTTONUP 0 10,12'
xdotool click 3
says "the right button" 'child: WM_RBUTTONDOWN 2 10,12' 'child: WM_RBUTTONUP 0 10,12' \
    'child: WM_CONTEXTMENU child' 'main: WM_CONTEXTMENU child'
sleep 0.6 # or the next press would be a double click with an earlier one
xdotool click --repeat 2 --delay 30 1
says "a double click" 'child: WM_LBUTTONDOWN 1 10,12' 'child: WM_LBUTTONUP 0 10,12' \
    'child: WM_LBUTTONDBLCLK 1 10,12' 'child: WM_LBUTTONUP 0 10,12'
at 200 150
at 30 32
xdotool mousedown 2
at 220 170
xdotool mouseup 2
says "a button held over the edge" 'child: WM_MBUTTONDOWN 16 10,12' 'child: WM_MBUTTONUP 0 200,150'
at 30 32
xdotool click 5
read -r x y < <(xdotool getmouselocation --shell | sed -n 's/^[XY]=//p' | paste -sd ' ')
says "the wheel" "child: WM_MOUSEWHEEL -120 0 $x,$y" "main: WM_MOUSEWHEEL -120 0 $x,$y"

xdotool key a
says "a letter" 'child: WM_KEYDOWN 65' 'child: WM_CHAR 97' 'child: WM_KEYUP 65'
xdotool key Down F3 Return Tab
says "other keys" 'child: WM_KEYDOWN 40' 'child: WM_KEYUP 40' 'child: WM_KEYDOWN 114' \
    'child: WM_KEYUP 114' 'child: WM_KEYDOWN 13' 'child: WM_CHAR 13' 'child: WM_KEYUP 13' \
    'child: WM_KEYDOWN 9' 'child: WM_CHAR 9' 'child: WM_KEYUP 9'
xdotool key ctrl+s
says "a shortcut" 'child: WM_KEYDOWN 17' 'child: WM_KEYDOWN 83' 'child: WM_CHAR 19' \
    'child: WM_KEYUP 17' 'child: WM_KEYUP 83'
xdotool key alt+h
says "an access key" 'child: WM_SYSKEYDOWN 18' 'child: WM_SYSKEYDOWN 72' 'child: WM_SYSCHAR 104' \
    'child: WM_SYSKEYUP 18' 'child: WM_KEYUP 72'
xdotool keydown shift click 1 keyup shift
says "a click with Shift" 'child: WM_KEYDOWN 16' 'child: WM_LBUTTONDOWN 5 10,12' \
    'child: WM_LBUTTONUP 4 10,12' 'child: WM_KEYUP 16'

# A job that reads no messages sees the key go down; the key's own messages come afterwards.
xdotool key j
says "the start of a job" 'child: WM_KEYDOWN 74' 'child: WM_CHAR 106' 'job begins'
xdotool keydown shift
says "the live state of a key" 'job saw Shift' 'child: WM_KEYUP 74' 'child: WM_KEYDOWN 16'
xdotool keyup shift
says "the key afterwards" 'child: WM_KEYUP 16'

xdotool key w
says "the start of a job under a waiting window" 'child: WM_KEYDOWN 87' 'child: WM_CHAR 119' \
    'waiting window is painted' 'job begins'
import -silent -window root -crop 1x1+320+210 -depth 8 txt:- | grep -q '#FF0000' ||
    fail "the waiting window is not to be seen"
xdotool keydown shift
says "the end of that job" 'job saw Shift' 'child: WM_KEYUP 87' 'child: WM_KEYDOWN 16'
xdotool keyup shift
says "the focus stayed" 'child: WM_KEYUP 16'

# A key that moves the focus comes up only when the focus is there, or its release would go nowhere.
xdotool keydown m
says "a modal dialog" 'child: WM_KEYDOWN 77' 'child: WM_CHAR 109' 'dialog opens' \
    'child: WM_KILLFOCUS dialog' 'dialog: WM_SETFOCUS child'
xdotool keyup m
says "the key that opened it" 'dialog: WM_KEYUP 77'
at 200 150
xdotool click 1
xdotool key --clearmodifiers x
says "no input for the window behind it" 'dialog: WM_KEYDOWN 88' 'dialog: WM_CHAR 120' \
    'dialog: WM_KEYUP 88'
xdotool keydown Escape
says "the end of the dialog" 'dialog: WM_KEYDOWN 27' 'dialog: WM_CHAR 27' \
    'dialog: WM_KILLFOCUS 0' 'dialog closed' 'child: WM_SETFOCUS dialog'
xdotool keyup Escape
says "the key that closed it" 'child: WM_KEYUP 27'

xdotool windowsize "$window" 400 250
says "another size" 'main: WM_SIZE 0 400,250'
await "the picture in that size" has_color 395 245 '#C8E6C8'
xdotool key alt+F4
ends 3 # the code of PostQuitMessage
grep -q '^main: WM_CLOSE$' "$work/log" || fail "the close box said nothing"
no_errors
echo "OK"
