#!/usr/bin/env bash
# Runs clang-tidy over the core with the settings of .clang-tidy.
#
# scripts/check_tidy.sh BUILD_FOLDER
set -euo pipefail

git ls-files -z 'src/alignment/*.cpp' 'src/sima/*.cpp' 'src/output/*.cpp' 'src/command/*.cpp' 'src/host/boundary/*.cpp' \
        'src/host/adapter/*.cpp' |
    xargs -0 -r -n 4 -P "$(nproc)" clang-tidy --quiet -p "$1" 2>/dev/null
