#!/usr/bin/env bash
# Puts what people with Windows get into FOLDER: fenmark-VERSION-windows.zip and fenmark-VERSION-setup.exe. The same
# sources give the same bytes. fenmark.html and the QGIS plugin go in where they are built: build/web/fenmark.html, and
# an archive build/qgis/fenmark.zip or dist/*qgis*.zip.
#
# scripts/windows_zip.sh [FOLDER]   [dist]; cmake --build --preset windows comes before it
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
out=$(mkdir -p "${1:-$root/dist}" && cd "${1:-$root/dist}" && pwd)
built=$root/build/windows
version=$(sed -n 's/^project(Fenmark VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
# The time of the files: that of the commit, whenever they are made.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$root" log -1 --format=%ct)}
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C.UTF-8

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
stage=$work/fenmark-$version
mkdir -p "$stage/examples" "$work/helpers"
# Texts for Windows: its line ends, and a mark by which its older editors know UTF-8.
python3 - "$root/windows/はじめに.txt" "$stage/はじめに.txt" "$root/windows/fenmark-import.cmd" "$stage/fenmark-import.cmd" "$root/LICENSE" "$stage/LICENSE.txt" <<'PYTHON'
import sys
for source, target in zip(sys.argv[1::2], sys.argv[2::2]):
    with open(source, encoding="utf-8", newline="") as text:
        content = text.read().replace("\n", "\r\n").encode()
    with open(target, "wb") as file:
        file.write((b"" if content.isascii() else b"\xef\xbb\xbf") + content)
PYTHON
cp "$built/apps/fenmark/fenmark.exe" "$stage/"
cp "$root"/examples/*.sim "$stage/examples/"
cmake --install "$built" --prefix "$stage/alignment" --component alignment >/dev/null
cmake --install "$built" --prefix "$stage/alignment" --component alignment-dev >/dev/null
[ -e "$root/build/web/fenmark.html" ] && cp "$root/build/web/fenmark.html" "$stage/"
for plugin in "$root"/build/qgis/fenmark.zip "$root"/dist/*qgis*.zip; do
    if [ -e "$plugin" ]; then
        mkdir -p "$stage/qgis" && cp "$plugin" "$stage/qgis/"
        break
    fi
done
find "$stage" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +

rm -f "$out/fenmark-$version-windows.zip"
python3 - "$stage" "$out/fenmark-$version-windows.zip" <<'PYTHON'
import os, pathlib, sys, time, zipfile
stage, archive = pathlib.Path(sys.argv[1]), sys.argv[2]
moment = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as out:
    for path in sorted(p for p in stage.rglob("*") if p.is_file()):
        entry = zipfile.ZipInfo(path.relative_to(stage.parent).as_posix(), moment)
        entry.compress_type, entry.external_attr, entry.create_system = zipfile.ZIP_DEFLATED, 0o644 << 16, 3
        out.writestr(entry, path.read_bytes())
PYTHON

# The installer takes away what it brought, file by file.
x86_64-w64-mingw32-gcc-posix -municode -O2 -Wall -Wextra -Werror -s -static -Wl,--no-insert-timestamp \
    -o "$work/helpers/path_entry.exe" "$root/windows/path_entry.c"
{
    cd "$stage"
    find . -type f -printf '%P\n' | sort | tr / '\\' | sed 's/.*/Delete "$INSTDIR\\&"/'
    find . -mindepth 1 -type d -printf '%P\n' | sort -r | tr / '\\' | sed 's/.*/RMDir "$INSTDIR\\&"/'
} > "$work/removals.nsh"
makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DSTAGE="$stage" -DHELPERS="$work/helpers" -DREMOVALS="$work/removals.nsh" \
    -DOUT="$out/fenmark-$version-setup.exe" "$root/windows/fenmark.nsi"
ls -l "$out/fenmark-$version-windows.zip" "$out/fenmark-$version-setup.exe"
