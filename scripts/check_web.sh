#!/usr/bin/env bash
# Builds fenmark.html and tests it in a headless Chromium and a headless Firefox against the native program.
#
# scripts/check_web.sh [FENMARK]   with a native program that is built already; without one it builds it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/packages.sh web

if [ $# -ge 1 ]; then
    native=$(realpath "$1")
else
    cmake --preset demo
    cmake --build --preset demo --target fenmark
    native=$PWD/build/demo/apps/fenmark/fenmark
fi

cmake --preset web
cmake --build --preset web

# The conversions of reals that the browser build uses give the characters of the standard library.
conversion=build/library-sources/double-conversion
"${CXX:-g++}" -std=c++20 -O1 -DFENMARK_DOUBLE_CONVERSION -w -Isrc -isystem "$conversion" \
    tests/web/real_text_check.cpp src/values/real_text.cpp "$conversion"/double-conversion/*.cc -o build/web/real_text_check
build/web/real_text_check

# The driver of the browser comes from the npm registry and stays in build/.
driver=build/web-driver
if [ ! -d "$driver/node_modules/puppeteer-core" ]; then
    mkdir -p "$driver"
    npm install --prefix "$driver" --no-save --no-audit --no-fund --silent puppeteer-core@24.9.0
fi
export FENMARK_DRIVER=$PWD/$driver
# Pictures of the page go to the folder FENMARK_PICTURES where one is named, such as docs/pictures.
node tests/web/test_page.mjs "$native" "$PWD/build/web/fenmark.html" "$PWD" ${FENMARK_PICTURES:+"$FENMARK_PICTURES"}
FENMARK_BROWSER=firefox node tests/web/test_page.mjs "$native" "$PWD/build/web/fenmark.html" "$PWD"
