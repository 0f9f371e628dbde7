#!/usr/bin/env bash
# start.sh QUILLMERE: what the window program answers where there is no display, and that it starts on one of its own.
set -uo pipefail
quillmere=$1
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM QUILLMERE_CODE_PAGE
status=0

# answers STATUS PATTERN ARGUMENT...
answers() {
    local expected=$1 pattern=$2 answer code
    shift 2
    answer=$("$quillmere" "$@" 2>&1)
    code=$?
    if ((code == expected)) && grep -Eq "$pattern" <<<"$answer"; then return; fi
    echo "FAILED: quillmere $* ended with $code (not $expected) and said: $answer" >&2
    status=1
}

answers 0 '^quillmere \[MAIN \[TRANSLATED\]\]$' --help
answers 0 '^quillmere [0-9]+\.[0-9]+\.[0-9]+$' main.lng --version
answers 69 '^quillmere: There is no display .*neither DISPLAY nor WAYLAND_DISPLAY' main.lng
DISPLAY=:9999 answers 69 '^quillmere: The display :9999 cannot be used'
for page in 1251 01252 ''; do
    QUILLMERE_CODE_PAGE=$page answers 69 '^quillmere: There is no display'
done
for page in 9 1251x utf-8; do
    QUILLMERE_CODE_PAGE=$page answers 64 "^quillmere: QUILLMERE_CODE_PAGE: '$page' is no known code page$"
    QUILLMERE_CODE_PAGE=$page answers 0 '^quillmere \[MAIN' --help
done

# ---- A server that nobody else uses starts over, or ends as this one does, when its last client leaves: the look for a
# display must not be one.
work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
Xvfb -displayfd 3 -terminate -screen 0 800x600x24 -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
server=$!
until [[ -s $work/display ]]; do sleep 0.05; done
DISPLAY=:$(<"$work/display") HOME=$work XDG_CONFIG_HOME=$work XDG_RUNTIME_DIR=$work timeout 5 "$quillmere" >"$work/said" 2>&1
code=$?
((code == 124)) || { echo "FAILED: alone on a display the program ended with $code: $(<"$work/said")" >&2; status=1; }
kill "$server" 2>/dev/null
wait "$server" 2>/dev/null
exit "$status"
