#!/usr/bin/env bash
# start.sh QUILLMERE: what the window program answers where there is no display.
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
exit "$status"
