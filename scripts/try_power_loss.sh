#!/usr/bin/env bash
# Cuts an import off at every one of its calls, by a kill and by a loss of power, and at 200 random moments. Takes a
# while; ./check tries a sample.
#
# scripts/try_power_loss.sh [--seed=N]
set -euo pipefail

cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
cmake --build --preset dev --target fenmark disk_trace
python3 tests/faults/power_loss_test.py build/dev/apps/fenmark/fenmark build/dev/tests/libdisk_trace.so --all "$@"
