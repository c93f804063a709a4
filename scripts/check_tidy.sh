#!/usr/bin/env bash
# Runs clang-tidy with the settings of .clang-tidy: everything over the core, names and braces over the rest of what is
# compiled without windows.
#
# scripts/check_tidy.sh BUILD_FOLDER
set -euo pipefail

# The analyzer takes some 5 s of processor time a file, names and braces 1 s.
core=('src/alignment/*.cpp' 'src/sima/*.cpp' 'src/output/*.cpp' 'src/command/*.cpp' 'src/host/boundary/*.cpp'
      'src/host/adapter/*.cpp')
rest=('src/curve/*.cpp' 'src/drawing/*.cpp' 'src/exchange/*.cpp' 'src/values/*.cpp' 'src/platform/files_posix.cpp'
      'src/host/embedded/*.cpp' 'src/host/recording/*.cpp')

tidy() { xargs -0 -r -n 4 -P "$(nproc)" clang-tidy --quiet "$@" 2>/dev/null; }

git ls-files -z "${core[@]}" | tidy -p "$1"
git ls-files -z "${rest[@]}" |
    tidy -p "$1" --checks='-*,readability-braces-around-statements,readability-identifier-naming'
