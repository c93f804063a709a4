#!/usr/bin/env bash
# Fails every system call and every allocation of an import in turn, into a new drawing and into one that is there.
# Takes a while; ./check tries a sample of the same places.
set -euo pipefail

cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
cmake --build --preset dev --target fenmark fault_shim
python3 tests/faults/test_faults.py build/dev/apps/fenmark/fenmark build/dev/tests/libfault_shim.so --all
