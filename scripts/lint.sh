#!/usr/bin/env bash
# lint.sh JOBS [--all]: builds each header alone, then clang-tidy on the sources that changed
# since main parted (on main itself: in the last ten commits), or on all.
set -euo pipefail
jobs=$1 scope=${2-}

cmake --build build/release -j "$jobs" --target all_verify_interface_header_sets >&2

# The names of changed sources; all of them where git cannot tell.
changed() {
    local base
    if [[ $scope != --all ]] && command -v git >/dev/null && git rev-parse -q --verify HEAD >/dev/null 2>&1; then
        base=$(git merge-base HEAD origin/main 2>/dev/null || git merge-base HEAD main 2>/dev/null || true)
        if [[ -z $base || $base == "$(git rev-parse HEAD)" ]]; then
            # A young or shallow history may be shorter than that: then all that it tells.
            base=$(git rev-list --max-count=11 --first-parent HEAD | tail -n 1)
        fi
        if [[ -n $base ]]; then
            git diff --name-only --diff-filter=d "$base" -- src tests bench
            git ls-files --others --exclude-standard -- src tests bench
            return
        fi
    fi
    find src tests bench -type f 2>/dev/null || true
}

# What clang-tidy is to be started on: sources by themselves, changed headers by the file that builds
# each alone.
units=()
while IFS= read -r file; do
    case $file in
        *.cpp)
            grep -qF "/$file\"" build/release/compile_commands.json && units+=("$file") ;;
        *.h)
            [[ $scope != --all ]] || continue  # the sources show them
            unit=$(find build/release -path "*_verify_interface_header_sets/${file#*/}.cxx" | head -n 1)
            [[ -z $unit ]] || units+=("$unit") ;;
    esac
done < <(changed | sort -u)

if ((${#units[@]} == 0)); then
    echo "lint: no changed sources for clang-tidy"
    exit 0
fi
echo "lint: clang-tidy on ${#units[@]} files"
# Test code runs under the sanitizers and need not be fast: the path analyzer would only take minutes
# to get through its macros. The compile commands are those of g++: clang-tidy does not know all of its warnings.
check_one() {
    local checks=()
    case $1 in *_test.cpp | *_fuzz.cpp | *_bench.cpp | tests/*) checks=('--checks=-clang-analyzer-*,-performance-*') ;; esac
    clang-tidy --quiet -p build/release --warnings-as-errors='*' \
        --extra-arg=-Wno-unknown-warning-option "${checks[@]}" "$1" \
        2> >(grep -vE '^[0-9]+ warnings? .*generated|^$' >&2)
}
export -f check_one
# shellcheck disable=SC2016  # $1 is for the shell that xargs starts
printf '%s\0' "${units[@]}" | xargs -0 -n 1 -P "$jobs" bash -c 'check_one "$1"' -
echo "lint: clean"
