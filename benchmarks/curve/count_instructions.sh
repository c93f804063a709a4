#!/bin/sh
# Instructions a call of one line of bench_curve, counted by callgrind, so that other programs on the machine do not matter.
# Usage: benchmarks/curve/count_instructions.sh CALLS "WORDS OF THE LINE" ["MORE" ...]
# CALLS is 4096 for the lines of single curves, 65536 for those of chains and 262144 for "chain sorted".
set -e
program=${BENCH_CURVE:-build/release/benchmarks/bench_curve}
calls=$1
shift
count() {
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$program" "$1" 2>&1 | sed -n 's/.*Collected : //p'
}
# What the program does before any line runs. Chains are made only for words that begin so.
for words in "$@"; do
    case $words in
    chain*) before=$(count "chain none") ;;
    *) before=$(count "none") ;;
    esac
    printf '%-60s %8d\n' "$words" $((($(count "$words") - before) / calls))
done
