# A private X server with a window manager, for the tests beside this file: source it, then call
# start_display. Everything that was started ends with the test.

fail() {
    echo "FAILED: $*" >&2
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
    # The server chooses a free number and writes it once it listens. A key that is held does not repeat.
    Xvfb -displayfd 3 -r -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" >"$work/Xvfb.log" 2>&1 &
    started+=($!)
    await "the X server" test -s "$work/display"
    DISPLAY=:$(<"$work/display")
    export DISPLAY HOME=$work XDG_CONFIG_HOME=$work/config XDG_CACHE_HOME=$work/cache
    export XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=xcb QT_QPA_PLATFORMTHEME= LC_ALL=C.UTF-8
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
