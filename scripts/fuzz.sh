#!/usr/bin/env bash
# fuzz.sh JOBS [SECONDS] [NAME]: runs the built fuzz targets, JOBS at a time, and sums up.
#
# build/fuzz/corpus/TARGET grows from run to run; X_seeds/ and X.dict beside X_fuzz.cpp start it.
# A finding lies in build/fuzz/findings/ with the command that shows it again.
set -euo pipefail
jobs=$1 seconds=${2:-60} name=${3-}
[[ $seconds =~ ^[0-9]+$ ]] || { echo "fuzz: '$seconds' is no number of seconds" >&2; exit 2; }

export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}

targets=()
while IFS= read -r source; do
    target=$(basename "$source" .cpp)
    [[ $target == *"$name"* ]] && targets+=("$source")
done < <(find src -name '*_fuzz.cpp' | sort)
if ((${#targets[@]} == 0)); then
    echo "fuzz: no target${name:+ matches $name}"
    exit "$([[ -z $name ]]; echo $?)"
fi

fuzz_one() {
    local source=$1 target log start=${1%_fuzz.cpp}
    target=$(basename "$source" .cpp)
    log=build/fuzz/$target.log
    mkdir -p "build/fuzz/corpus/$target" build/fuzz/findings
    local extra=()
    [[ -d ${start}_seeds ]] && extra+=("${start}_seeds")
    [[ -f $start.dict ]] && extra+=("-dict=$start.dict")
    "build/fuzz/bin/$target" -max_total_time="$seconds" -timeout=25 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="build/fuzz/findings/$target-" \
        "build/fuzz/corpus/$target" "${extra[@]}" >"$log" 2>&1
}

echo "fuzz: ${#targets[@]} targets, $seconds s each"
failed=0
pids=()
# Waits for the oldest run and tells how it went.
finish_one() {
    local source=${targets[finished]} target status=0
    target=$(basename "$source" .cpp)
    wait "${pids[finished]}" || status=$?
    finished=$((finished + 1))
    if ((status == 0)); then
        awk -v target="$target" '
            /^stat::number_of_executed_units/ { runs = $2 }
            /^stat::average_exec_per_sec/ { speed = $2 }
            /^stat::peak_rss_mb/ { memory = $2 }
            match($0, /cov: [0-9]+/) { edges = substr($0, RSTART + 5, RLENGTH - 5) }
            END { printf "  %-32s ok: %d inputs, %d a second, %d edges, %d MiB\n", target, runs, speed, edges, memory }
        ' "build/fuzz/$target.log"
    else
        failed=$((failed + 1))
        printf '  %-32s FAILED (exit %d)\n' "$target" "$status"
        tail -n 60 "build/fuzz/$target.log"
        sed -n 's/^artifact_prefix.*Test unit written to \(.*\)/show it again: build\/fuzz\/bin\/'"$target"' \1/p' \
            "build/fuzz/$target.log"
    fi
}

finished=0
for source in "${targets[@]}"; do
    ((${#pids[@]} - finished < jobs)) || finish_one
    fuzz_one "$source" &
    pids+=($!)
done
while ((finished < ${#pids[@]})); do finish_one; done
((failed == 0))
