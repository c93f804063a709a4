#!/usr/bin/env bash
# Runs clang-tidy with the settings of .clang-tidy: everything over the core, names and braces over the rest of what is
# compiled without windows. It reads how each file is compiled from the preset asan, and builds nothing.
set -euo pipefail

cd "$(dirname "$0")/.."
start=$SECONDS
scripts/packages.sh build check
CXX=clang++ CC=clang cmake --preset asan >/dev/null

core=('src/alignment/*.cpp' 'src/sima/*.cpp' 'src/output/*.cpp' 'src/command/*.cpp' 'src/host/boundary/*.cpp'
      'src/host/adapter/*.cpp')
rest=('src/curve/*.cpp' 'src/drawing/*.cpp' 'src/exchange/*.cpp' 'src/values/*.cpp' 'src/platform/files_posix.cpp'
      'src/platform/folder_turn_posix.cpp' 'src/host/embedded/*.cpp' 'src/host/recording/*.cpp')

tidy() { xargs -0 -r -n 4 -P "$(nproc)" clang-tidy --quiet -p build/asan "$@" 2>/dev/null; }

git ls-files -z "${core[@]}" | tidy
git ls-files -z "${rest[@]}" |
    tidy --checks='-*,readability-braces-around-statements,readability-identifier-naming'
printf '\nclang-tidy passed in %d s.\n' $((SECONDS - start))
