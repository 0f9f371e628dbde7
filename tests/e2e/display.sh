# shellcheck shell=bash
# A private X server with a window manager, for the tests beside this file: source it, then call
# start_display. Everything that was started ends with the test.

fail() {
    echo "FAILED: $*" >&2
    [[ -z ${work-} ]] || window_manager_is_there || tail -n 5 "$work"/{Xvfb,openbox}.log >&2
    exit 1
}

# start_display: sets DISPLAY and `work`, a folder that goes with the test.
start_display() {
    local tool
    for tool in Xvfb openbox xdotool import; do
        command -v "$tool" >/dev/null ||
            fail "$tool is missing (Debian packages xvfb, openbox, xdotool, imagemagick; ./dev setup" \
                "installs them, and -DQUILLMERE_E2E=OFF leaves these tests out)"
    done
    work=$(mktemp -d)
    started=()
    trap end_display EXIT
    # The server chooses a free number and writes it once it listens. A key that is held does not repeat. Nobody is
    # thrown out when the last other client leaves: that may be a look for the window manager while that one comes.
    Xvfb -displayfd 3 -r -noreset -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" >"$work/Xvfb.log" 2>&1 &
    started+=($!)
    await "the X server" test -s "$work/display"
    DISPLAY=:$(<"$work/display")
    export DISPLAY HOME=$work XDG_CONFIG_HOME=$work/config XDG_CACHE_HOME=$work/cache
    export XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=xcb QT_QPA_PLATFORMTHEME='' LC_ALL=C.UTF-8
    unset WAYLAND_DISPLAY SESSION_MANAGER DBUS_SESSION_BUS_ADDRESS
    openbox >"$work/openbox.log" 2>&1 &
    started+=($!)
    await "the window manager" window_manager_is_there
}

window_manager_is_there() { xdotool get_num_desktops >/dev/null 2>&1; }

end_display() {
    local pid i
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        pid=${started[i]}
        kill "$pid" 2>/dev/null || continue
        kill -CONT "$pid" 2>/dev/null || true # it may have been stopped
        wait "$pid" 2>/dev/null || true  # its status is that of the signal
    done
    rm -rf -- "$work"
}

# await WHAT COMMAND...: until the command succeeds, at most 60 seconds.
await() {
    local what=$1 i
    shift
    for ((i = 0; i < 1200; i++)); do
        "$@" && return
        sleep 0.05
    done
    fail "$what did not come"
}

# start_program PROGRAM ARGUMENT...: what it says goes into $work/log; sets `program`.
start_program() {
    : >"$work/log"
    "$@" >>"$work/log" 2>"$work/errors" &
    program=$!
    started+=("$program")
}
ended() { ! kill -0 "$program" 2>/dev/null; }
# ends STATUS: waits for the end of the program, with that status.
ends() {
    local status=0
    await "the end of the program" ended
    wait "$program" || status=$?
    ((status == $1)) || { cat "$work/errors" >&2; fail "the program ended with $status"; }
}
no_errors() { [[ ! -s $work/errors ]] || { cat "$work/errors" >&2; fail "the program wrote errors"; }; }

# bring_to_front TITLE: waits for the window with a title that matches; sets `window`.
bring_to_front() {
    window=$(xdotool search --sync --onlyvisible --name "$1" | head -n 1)
    xdotool windowactivate --sync "$window"
}
# visible TITLE: sets `found` to the window with exactly that title, when there is one.
visible() { found=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1) && [[ -n $found ]]; }
gone() { ! visible "$1"; }
# windows COUNT: so many windows of the program show, the main one included.
windows() { [[ $(xdotool search --onlyvisible --pid "$program" 2>/dev/null | wc -l) == "$1" ]]; }
closed() { ! xdotool search --onlyvisible --name . 2>/dev/null | grep -qx "$1"; }  # by its id
# comes TITLE: waits for a window and its focus; sets `found`.
comes() {
    await "the window \"$1\"" visible "$1"
    await "the focus of \"$1\"" has_focus "$found"
}
has_focus() { [[ $(xdotool getwindowfocus 2>/dev/null) == "$1" && $(xdotool getactivewindow 2>/dev/null) == "$1" ]]; }

# From each step on, what the program has said since the step before.
said=0
step() { said=$(wc -l <"$work/log"); }
since() { tail -n +$((said + 1)) "$work/log"; }
heard() { since | grep -qxF -- "$1"; }

# place NAME: sets x and y to where the program says that it is.
place() {
    local line
    line=$(grep "^at [0-9]*,[0-9]* $1\$" "$work/log" | tail -n 1) || fail "no place of $1 was told"
    [[ $line =~ ^at\ ([0-9]+),([0-9]+) ]]
    # shellcheck disable=SC2034  # for who calls
    x=${BASH_REMATCH[1]} y=${BASH_REMATCH[2]}
}
key() { xdotool key --delay 30 "$@"; }
type_text() { xdotool type --delay 15 -- "$1"; }
# keys_for TEXT...: a key for each character of the texts that no key of the keyboard has. Without it they would be
# typed by keys that change their meaning on the way.
keys_for() {
    local -A seen=()
    local text=$* character symbols='' code=208 pair=()
    for ((i = 0; i < ${#text}; i++)); do
        character=${text:i:1}
        [[ $character > '~' && -z ${seen[$character]-} ]] || continue
        seen[$character]=1
        pair+=("$(printf 'U%04X' "'$character")")
        ((${#pair[@]} == 2)) || continue
        symbols+="key <I$((code++))> { [ ${pair[0]}, ${pair[1]} ] }; "
        pair=()
    done
    symbols+="key <I$((code++))> { [ ${pair[0]-NoSymbol}, NoSymbol ] };"
    ((code <= 256)) || fail "the keyboard has too few keys for these texts"
    setxkbmap -print | sed "/xkb_symbols/ s/};/$symbols };/" | xkbcomp -w 0 - "$DISPLAY" 2>/dev/null
    sleep 0.5 # until all programs have heard of it
}
# color X Y: the colour on the screen at a point of the window, as #RRGGBB.
color() {
    import -silent -window "$window" -crop "1x1+$1+$2" -depth 8 txt:- | grep -o '#[0-9A-F]\{6\}'
}
has_color() { [[ $(color "$1" "$2") == "$3" ]]; }
