#!/usr/bin/env bash
# bad_input.sh QUILLMERE QUILLMERE_CLI: what goes wrong while a translator works: files that are none, that change or go
# while they are open, that cannot be saved; a display that goes. Each time the program says so and stays usable, the
# translated file is as it was or complete, and what was typed is kept.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "$0")")
quillmere=$1 cli=$2 pictures=
# Rights bind everybody but root.
other=(env -u TMPDIR setpriv --reuid=65534 --regid=65534 --clear-groups)
if ((EUID == 0)) && "${other[@]}" test -x "$quillmere" -a -x "$cli" -a -x "$here/bad_input.sh"; then
    exec "${other[@]}" "$here/bad_input.sh" "$@"
fi
# shellcheck source=tests/e2e/display.sh
source "$here/display.sh"
# shellcheck source=tests/e2e/translator.sh
source "$here/translator.sh"
start_display
export XDG_STATE_HOME=$work/state
mkdir -p "$work/files" "$work/expected" "$XDG_CONFIG_HOME/Quillmere"
cd "$work/files"
printf '%s\r\n' Fresh=New '[Menu]' Open=Open Close=Close Quit=Leave >main.lng

# box KEY...: answers the boxes that come one after the other, each by its key.
box() { for answer in "$@"; do question "$answer"; done; }
# start_pair MAIN TRANSLATED: keys that come while a pair loads are lost.
start_pair() {
    start "$@"
    back
}
# refused ARGUMENT...: the program starts with a message; sets `program` and `main`.
refused() {
    "$quillmere" "$@" 2>>"$work/errors" &
    program=$!
    started+=("$program")
    box Return
    visible Quillmere || fail "the window went with its message"
    main=$found
    back
}
close() {
    key alt+F4
    ends 0
}
# same A B [WHAT]: byte for byte.
same() { cmp "$1" "$2" >&2 || fail "${3-$1} is not as it should be"; }
# edited FILE TEXT: FILE with this translation of the first row, as the command line program makes it.
edited() {
    cp -- "$1" "$work/expected/file"
    printf '{"section":"","key":"Fresh","translation":"%s"}\n' "$2" | "$cli" apply main.lng "$work/expected/file" -
}
# kept FILE EDITS...: the edits that were kept instead of saved give FILE the translation that `edited` gives it.
kept() {
    [[ -e $2 && $# == 2 ]] || fail "there is no file, or more than one, of what was typed"
    "$cli" apply main.lng "./$1" "$2"
    same "$1" "$work/expected/file" "what was kept and applied"
    rm "$2"
}

# ---- Files that are hardly any: the first settings are no better.
printf '\xff\xfe[[\0nonsense\n[SSettings]\nKColTransWidth=-9e9\nKColDefaultWidth=9999999999\nKEmptyTrans=x\n' \
    >"$XDG_CONFIG_HOME/Quillmere/settings.ini"
while read -r verdict bytes; do
    if [[ $bytes == 0\** ]]; then
        head -c "${bytes#0\*}" /dev/zero >bad.lng
    else
        # shellcheck disable=SC2059  # that is what they are
        printf "$bytes" >bad.lng
    fi
    case $verdict in
    refused)
        cp bad.lng before
        refused main.lng bad.lng
        key ctrl+s # there is nothing to save
        close
        same bad.lng before
        refused bad.lng main.lng
        close
        ;;
    loads)
        edited bad.lng Nieuw
        start_pair main.lng bad.lng
        key F3
        edit Nieuw
        save bad.lng
        close
        same bad.lng "$work/expected/file" "the file that began as $bytes"
        ;;
    esac
done <<'TABLE'
loads
loads \xff\xfe
loads \xff\xfeO\0p\0e\0n\0=\0A\0B
loads \xff\xfe[\0M\0e\0n\0u\0]\0\r\0\n\0O\0p\0e\0n\0=\0\x00\xd8x\0
loads \xef\xbb\xbf[Menu]\r\nOpen=a\xc3\x28b\xe2\x82\r\nClose=\xff\xf8\x80
loads [Menu]\r\nOpen=\0\r\n\0=x\r\n[Me\0nu]\r\nClose=\0c
loads [Menu]\r\nopen=1\r\nOPEN=2\r\n[menu]\r\nClose=c\td\r\n[Menu]\r\nClose=e
refused \xef\xbb
refused 0*5242881
TABLE
printf '[Menu]\r\nOpen=Openen\r\nExtra=x\r\n' >dutch.lng
cp dutch.lng original
refused main.lng main.lng # one file twice
key ctrl+s
close
mkfifo pipe
refused main.lng pipe
close

# ---- What happens to the files while they are open. Settings cannot be kept any more.
rm -r "$XDG_CONFIG_HOME"
: >"$XDG_CONFIG_HOME"
mkdir folder
cp dutch.lng folder
edited dutch.lng Nieuw
start_pair main.lng folder/dutch.lng
key F3
edit Nieuw
cannot_save() {
    key ctrl+s
    box Return
    back
}
chmod 444 folder/dutch.lng
cannot_save
same folder/dutch.lng original
chmod 644 folder/dutch.lng
head -c 5242881 /dev/zero >folder/dutch.lng
cannot_save
[[ $(stat -c %s folder/dutch.lng) == 5242881 ]] || fail "a file that cannot be read was written over"
rm folder/dutch.lng
mkdir folder/dutch.lng
cannot_save
rmdir folder/dutch.lng
ln -s /dev/full folder/dutch.lng
cannot_save
rm folder/dutch.lng
cp original folder/dutch.lng
if ((EUID)); then
    chmod 000 folder/dutch.lng
    cannot_save
    chmod 644 folder/dutch.lng
    same folder/dutch.lng original
    chmod 000 folder
    cannot_save
    chmod 755 folder
    same folder/dutch.lng original
fi
: >"$XDG_STATE_HOME" # nor is there a place for what was typed
chmod 444 folder/dutch.lng
key alt+F4
box alt+y Return Return
back
rm "$XDG_STATE_HOME"
key alt+F4
box alt+y Return Return
ends 0
chmod 644 folder/dutch.lng
same folder/dutch.lng original
kept folder/dutch.lng "$XDG_STATE_HOME"/quillmere/*

start_pair main.lng dutch.lng
key F3
edit Nieuw
mv main.lng gone.lng
before=$(stat -c %y%s%i dutch.lng)
xdotool keydown ctrl key --delay 0 s s keyup ctrl
box Return # it is saved, but the pair cannot be loaded again
is_saved dutch.lng "$before" || fail "the file was not saved"
mv gone.lng main.lng
same dutch.lng "$work/expected/file"
rm dutch.lng
key alt+F4
box alt+n
ends 0

# ---- A name that is anything but plain.
name=$'\u4e2d\u6587 \u0639 "q" %20%s\\\n\xff.lng'
cp original "$name"
start_pair main.lng "$name"
key F3
edit Nieuw
save "$name"
edit Anders
edited original Anders
chmod 444 "$name"
key alt+F4
box alt+y Return Return
ends 0
chmod 644 "$name"
kept "$name" "$XDG_STATE_HOME"/quillmere/*

# ---- The window is asked to close while its job runs: it does, behind the job.
stop_at_waiting_window
key alt+F4
kill -CONT "$program"
ends 0
[[ ! -s empty.lng ]] || fail "a load has written"

# ---- The program is ended, and loses its display, with a text in the editor.
no_errors
for how in signal display; do
    cp original dutch.lng
    start_pair main.lng dutch.lng
    key F3 Return
    comes Translation
    rest
    type_text Anders
    rest
    if [[ $how == signal ]]; then
        kill -TERM "$program"
        ends $((128 + 15))
    else
        kill "${started[0]}"
        ends 1
    fi
    same dutch.lng original
    grep -q "kept in $XDG_STATE_HOME/quillmere/dutch-" "$work/errors" || fail "nothing told where the edits are"
    kept dutch.lng "$XDG_STATE_HOME"/quillmere/*
done
echo "OK"
