#!/usr/bin/env bash
# Coverage by lines and branches of the core's folders: builds the preset, runs its tests, and prints one line a folder.
# Branches that the compiler adds for exceptions are not counted.
#
# scripts/coverage.sh            the table
# scripts/coverage.sh --missing  also the lines that no test reaches, below it
set -euo pipefail

cd "$(dirname "$0")/.."
cmake --preset coverage >/dev/null
cmake --build build/coverage
find build/coverage -name '*.gcda' -delete
# A program that a full disk stops would complain about its counters too.
GCOV_ERROR_FILE=/dev/null QT_QPA_PLATFORM=offscreen ctest --preset coverage --quiet
python3 scripts/coverage_table.py build/coverage "$@"
