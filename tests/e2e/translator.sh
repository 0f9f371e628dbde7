# shellcheck shell=bash disable=SC2154,SC2034  # names that the other side sets or reads
# What a translator does in the program's window, by real keys, for the tests beside this file: source it behind
# display.sh, and set `quillmere` to the program and `pictures` to a folder for photographs, or to nothing.

picture() { [[ -z $pictures ]] || import -silent -window "$1" "$pictures/$2.png"; }
# start ARGUMENT...: sets `program` and `main`, its window.
start() {
    "$quillmere" "$@" 2>>"$work/errors" &
    program=$!
    started+=("$program")
    comes Quillmere
    main=$found
}
# rest: until the program waits for what comes: it sleeps, and has not worked for a while.
rest() { await "a rest of the program" rests; }
rests() {
    local before after
    before=$(cut -d ' ' -f 3,14,15 "/proc/$program/stat")
    sleep 0.2
    after=$(cut -d ' ' -f 3,14,15 "/proc/$program/stat")
    [[ $before == 'S '* && $before == "$after" ]]
}
# back: in the main window. It has the focus ahead of the end of the command that had opened another one, and what comes
# in between may be lost: a menu that opens is closed again.
back() {
    await "the main window's focus" has_focus "$main"
    rest
}
# open_file NAME: in the dialog that is coming up.
open_file() {
    comes "Open File"
    picture "$found" open-file
    type_text "$1"
    key Return
    await "the end of the dialog" gone "Open File"
    back
}
# edit TEXT: of the current row, by the keyboard alone.
edit() {
    key Return
    comes Translation
    rest # until its text is selected
    type_text "$1"
    key Return
    await "the end of the editor" gone Translation
    back
}
over_main() { found=$(xdotool getwindowfocus 2>/dev/null) && [[ $found != "$main" ]] && is_active "$found"; }
is_active() { [[ $(xdotool getactivewindow 2>/dev/null) == "$1" ]]; }
# answer_box TEXT: types into the box that asks for a line, whose title is that of the main window.
answer_box() {
    await "the box that asks" over_main
    picture "$found" ask
    rest
    type_text "$1"
    key Return
    back
}
go_to() {
    key ctrl+g
    answer_box "$1"
}
# question KEY: answers the box with the title "Attention"; another one of that title may follow.
question() {
    comes Attention
    key "$1"
    await "the end of the box" closed "$found"
}
is_saved() { [[ $(stat -c %y%s%i "$1") != "$2" ]]; }
# save FILE: by the key, to the end of the work: a file that has begun to change need not be whole yet.
save() {
    local before
    before=$(stat -c %y%s%i "$1")
    key ctrl+s
    await "the save" is_saved "$1" "$before"
    back # the pair has been loaded again
}
# has_words WINDOW: white, and more than that.
has_words() {
    import -silent -window "$1" "$work/window.png" 2>/dev/null || return
    convert "$work/window.png" -crop 5x5+3+3 +repage -unique-colors txt:- | grep -q '#FFFFFF' || return
    (($(convert "$work/window.png" -unique-colors -format %w info:) > 2))
}
# stop_at_waiting_window: a large pair, large.lng and empty.lng, is loaded, and the program held as soon as its waiting
# window is up and has its words; sets `program`, and `found` to the window.
stop_at_waiting_window() {
    local attempt i
    awk 'BEGIN { for (i = 0; i < 450000; i++) printf "%x=a\r\n", i }' >large.lng
    : >empty.lng
    for ((attempt = 0; attempt < 12; attempt++)); do
        "$quillmere" large.lng empty.lng 2>>"$work/errors" &
        program=$!
        started+=("$program")
        for ((i = 0; i < 400; i++)); do
            visible 'Please wait' || continue
            while kill -STOP "$program" && visible 'Please wait'; do
                ! has_words "$found" || return 0
                kill -CONT "$program" # it was too early
                sleep 0.005
            done
            break # it was too late
        done
        kill -KILL "$program"
        wait "$program" 2>/dev/null || true
    done
    fail "the waiting window was never seen with its words"
}
