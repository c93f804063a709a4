#!/usr/bin/env bash
# C++ tests are named x_test.cpp and benchmarks x_bench.cpp: none is called test_x.cpp, bench_x.cpp or x_benchmark.cpp,
# and a file with test cases or measurements has the ending.
set -euo pipefail

wrong=$(git ls-files 'tests/**.cpp' 'benchmarks/**.cpp' | grep -E '/(test|bench)_[^/]*$|_benchmark\.cpp$' || true)
wrong+=$(git grep -lE '^(TEST|TEST_F|TEST_P)\(' -- 'tests/*.cpp' | grep -v '_test\.cpp$' || true)
wrong+=$(git grep -lE '^ *BENCHMARK\(' -- 'benchmarks/*.cpp' | grep -v '_bench\.cpp$' || true)
if [ -n "$wrong" ]; then
    printf 'not named x_test.cpp or x_bench.cpp:\n%s\n' "$wrong" >&2
    exit 1
fi
