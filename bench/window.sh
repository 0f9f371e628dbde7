#!/usr/bin/env bash
# window.sh QUILLMERE ROUNDS LARGE DENSE: what the window costs as a whole process on a real X server, driven by real
# keys. LARGE and DENSE are folders with main.lng and trans.lng; they are copied.
#
# Each figure is the least of all rounds. A step begins with the first work that its key causes and ends when the
# program is at rest: its threads sleep and have used no more time for a while. "CPU" is what they used (user and
# system). "wall" goes to the last moment in which they used any, looked at every 5 ms, and is no more exact than that.
set -euo pipefail
# shellcheck source=tests/e2e/display.sh
source "$(dirname -- "$(readlink -f -- "$0")")/../tests/e2e/display.sh"
quillmere=$(readlink -f -- "$1") rounds=$2 large=$(readlink -f -- "$3") dense=$(readlink -f -- "$4")
[[ -r /proc/self/schedstat ]] || fail "this kernel does not tell the time that threads have used (/proc/PID/schedstat)"
start_display
export XDG_STATE_HOME=$work/state

# ---- Measuring

exec {never}<> <(:) # nothing ever comes from it: a wait without a process
pause() { read -r -t "$1" -u "$never" || true; }

# used: nanoseconds of all threads, into `ns`; `awake` tells whether one of them runs or waits for a disk.
used() {
    local task one rest state
    ns=0 awake=0
    for task in "/proc/$program/task"/*; do
        { read -r one rest <"$task/schedstat" && read -r state <"$task/stat"; } 2>/dev/null || continue
        ((ns += one)) || true
        state=${state##*) }
        [[ ${state%% *} == S ]] || awake=1
    done
}
now() { local t=${EPOCHREALTIME/[.,]/}; us=$t; }

# rest: until the program is at rest; sets `last`, the microsecond in which it last was busy.
rest() {
    local before=-1 quiet=0
    now; last=$us
    while ((quiet < 60)); do # of 5 ms
        used; now
        if ((awake || ns != before)); then quiet=0 last=$us before=$ns; else ((++quiet)); fi
        pause 0.005
    done
}

declare -A least # of each figure
keep() { [[ -n ${least[$1]-} ]] && ((least[$1] <= $2)) || least[$1]=$2; }

# measured FIGURE KEY: what the key makes the program do, from the first work that it causes.
measured() {
    local figure=$1 begin_ns begin_us i
    used; begin_ns=$ns
    xdotool key "$2" &
    for ((i = 0; ns == begin_ns; i++)); do
        ((i < 10000)) || fail "the key $2 did nothing ($figure)"
        pause 0.002
        used
    done
    now; begin_us=$us
    rest
    wait "$!"
    used
    keep "$figure cpu" $((ns - begin_ns))
    keep "$figure wall" $(((last - begin_us) * 1000))
}

memory() { # FIGURE: resident now, and the most so far
    local name kib
    while read -r name kib _; do
        case $name in
            VmRSS:) keep "$1 memory" "$kib" ;;
            VmHWM:) keep "$1 peak" "$kib" ;;
        esac
    done <"/proc/$program/status"
}

switches() { # into `count`: how often a thread has gone to sleep, and so was woken
    local n
    count=0
    while read -r _ n; do
        ((count += n)) || true
    done < <(grep -h ^voluntary_ctxt_switches "/proc/$program/task"/*/status)
}

# ---- The program

# keys KEY...: each when the program has done with the one before.
keys() {
    local key
    for key in "$@"; do xdotool key "$key"; rest; done
}
end_program() {
    kill "$program"
    wait "$program" 2>/dev/null || true
}

# started FIGURE ARGUMENT...: from the start of the process to the window at rest.
started() {
    local figure=$1 begin_us
    shift
    now; begin_us=$us
    start_program "$quillmere" "$@"
    rest
    used
    visible Quillmere || fail "no window came ($figure)"
    if visible "Please wait"; then fail "the load was not over ($figure)"; fi
    keep "$figure cpu" "$ns"
    keep "$figure wall" $(((last - begin_us) * 1000))
    memory "$figure"
}

# ---- The rounds

rows_of() { tr -d '\r' <"$1/main.lng" | grep -c '^[^;[][^=]*='; }

round() {
    local folder=$work/pair before
    started start
    end_program

    rm -rf "$folder"
    mkdir "$folder"
    cp "$large"/{main,trans}.lng "$folder"
    cp "$folder/main.lng" "$folder/same.lng"
    started large "$folder/main.lng" "$folder/trans.lng"
    keys F3
    before=$(stat -c %y%i "$folder/trans.lng")
    measured save ctrl+s
    [[ $(stat -c %y%i "$folder/trans.lng") != "$before" ]] || fail "nothing was saved"
    keys alt+t Up Up
    measured "filter on" Return
    keys alt+t Up Up
    measured "filter off" Return
    measured next F3
    keys Return
    comes Translation
    rest
    xdotool type --delay 5 Nieuw
    measured edit Return
    await "the end of the editor" gone Translation
    keys ctrl+f
    comes Find
    xdotool type --delay 5 nowhere
    measured search Return
    comes Attention
    end_program

    started same "$folder/main.lng" "$folder/same.lng"
    measured "next of none" F3
    if ((idle < 0)); then
        switches
        idle=$count
        sleep 10
        switches
        idle=$((count - idle))
    fi
    end_program

    cp "$dense"/{main,trans}.lng "$folder"
    started dense "$folder/main.lng" "$folder/trans.lng"
    end_program
}

idle=-1
for ((i = 0; i < rounds; i++)); do
    rm -rf "$XDG_CONFIG_HOME" # each round begins without settings
    round
done

# ---- The page

tenths() { local t=$((($1 + 50000) / 100000)); printf '%d.%d' $((t / 10)) $((t % 10)); } # of a millisecond
line() { # NAME FIGURE
    local memory=${least[$2 memory]-} peak=${least[$2 peak]-}
    printf '%-44s %9s %9s' "$1" "$(tenths "${least[$2 cpu]}")" "$(tenths "${least[$2 wall]}")"
    if [[ -n $memory ]]; then printf ' %8d %8d' "$((memory / 1024))" "$((peak / 1024))"; fi
    printf '\n'
}
printf 'Least of %d rounds\n' "$rounds"
printf '%-44s %9s %9s %8s %8s\n' "" "CPU" "wall" "memory" "peak" "" "ms" "ms" "MiB" "MiB"
line "start, until it is painted and at rest" start
line "large ($(rows_of "$large") rows): start, load, fill, show" large
line "  save and read again" save
line "  filter on" "filter on"
line "  filter off" "filter off"
line "  F3, next row without a translation" next
line "  an edit confirmed, with its duplicates" edit
line "  search, not found, with its box" search
line "same text everywhere: F3 over all rows" "next of none"
line "dense ($(rows_of "$dense") rows): start, load, fill, show" dense
printf '%-44s %9d\n' "idle: how often a thread woke up in 10 s" "$idle"
