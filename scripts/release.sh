#!/usr/bin/env bash
# Makes everything that a release consists of into dist/, with checksums: the sources, the Debian packages, fenmark.html, the
# plugin for QGIS, and what is for Windows. All times are those of the commit, so that it gives the same bytes again.
#
# scripts/release.sh            from a working tree without changes
set -euo pipefail

cd "$(dirname "$0")/.."
here=$PWD
if [ -n "$(git status --porcelain)" ]; then
    echo 'release.sh: the working tree has changes; commit them first' >&2
    exit 1
fi
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C.UTF-8
umask 022
version=$(sed -n 's/^project(Fenmark VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)

scripts/packages.sh build windows package web qgis
rm -rf dist
mkdir dist

echo "-- sources of $version, commit $(git rev-parse --short HEAD)"
git archive --format=tar --prefix="fenmark-$version/" HEAD | gzip -9n >"dist/fenmark-$version.tar.gz"

echo '-- Debian packages'
cmake --preset deb >/dev/null
cmake --build --preset deb
cpack --preset deb -D CPACK_OUTPUT_FILE_PREFIX="$here/dist" >/dev/null

echo '-- fenmark.html'
cmake --preset web >/dev/null
cmake --build --preset web
cp build/web/fenmark.html dist/fenmark.html

echo '-- plugin for QGIS'
plugin=$(mktemp -d)
trap 'rm -rf "$plugin"' EXIT
git archive --format=tar HEAD qgis/fenmark | tar -x -C "$plugin"
find "$plugin" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
(cd "$plugin/qgis" && find fenmark -type f | sort | zip -q -9 -X "$here/dist/fenmark-qgis-$version.zip" -@)

# For Windows, where this tree knows how to build for it.
if [ -x scripts/windows_zip.sh ]; then
    echo '-- Windows'
    scripts/packages.sh mingw build
    cmake --preset windows >/dev/null
    cmake --build --preset windows
    scripts/windows_zip.sh "$here/dist"
fi

(cd dist && find . -type f ! -name SHA256SUMS -printf '%P\n' | sort | xargs sha256sum >SHA256SUMS && cat SHA256SUMS)
