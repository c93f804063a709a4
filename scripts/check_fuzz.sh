#!/usr/bin/env bash
# Runs every fuzz target for a while, from its seeds and with a fixed seed of its own. A finding is kept below
# build/fuzz/findings and ends the script with an error.
#
# scripts/check_fuzz.sh [SECONDS] [TARGET...]   default: 10 seconds each; 1200 is the long run, with all targets
# FENMARK_FUZZ_BUILD names a folder in which the targets are built already; FENMARK_FUZZ_CORPUS one in which the inputs
# that the runs find are kept and taken up again.
set -euo pipefail

cd "$(dirname "$0")/.."
seconds=${1:-10}
shift || true
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(alignment curve import options package reader rows text)
fi
# Whole paths: a target that works in a folder of its own goes there.
build=$(realpath -m "${FENMARK_FUZZ_BUILD:-build/fuzz}")
if [ -z "${FENMARK_FUZZ_BUILD:-}" ]; then
    cmake --preset fuzz >/dev/null
    cmake --build "$build" --target "${targets[@]/#/fuzz_}"
fi
findings=$PWD/build/fuzz/findings
corpus=$(realpath -m "${FENMARK_FUZZ_CORPUS:-$(mktemp -d)}")
[ -n "${FENMARK_FUZZ_CORPUS:-}" ] || trap 'rm -rf "$corpus"' EXIT
mkdir -p "$findings"

longest_input() {
    case $1 in
        import | reader) echo 4096 ;;
        text) echo 256 ;;
        *) echo 512 ;;
    esac
}

# One target; its output is shown where it found something.
fuzz_one() {
    local target=$1 log=$findings/$1.log
    local seeds=$PWD/fuzz/seeds/$target
    [ -d "$seeds" ] || seeds=$PWD/fuzz/seeds/import
    mkdir -p "$corpus/$target"
    local dictionary=()
    [ ! -f "fuzz/$target.dict" ] || dictionary=("-dict=$PWD/fuzz/$target.dict")
    if "$build/fuzz/fuzz_$target" -seed=1 -max_total_time="$seconds" -max_len="$(longest_input "$target")" \
        -timeout=30 -rss_limit_mb=4096 -print_final_stats=1 -verbosity=1 "${dictionary[@]}" \
        -artifact_prefix="$findings/$target-" "$corpus/$target" "$seeds" >"$log" 2>&1; then
        printf '%-10s %s inputs in %s s, no finding\n' "$target" \
            "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" "$seconds"
    else
        tail -n 60 "$log"
        echo "fuzz_$target: a finding, kept in $findings; run it alone with that file as argument" >&2
        return 1
    fi
}

# Two at a time: a leak check needs a process that nothing else looks at.
export -f fuzz_one longest_input
export build findings corpus seconds
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1
export LSAN_OPTIONS=suppressions=$PWD/tests/leaks.txt:print_suppressions=0
printf '%s\n' "${targets[@]}" | xargs -P 2 -I{} bash -c 'fuzz_one {}'
