#!/usr/bin/env bash
# Builds fenmark.exe, fenmark-alignment.dll, the zip and the installer for Windows, and tries them under Wine beside the
# native program.
#
# scripts/check_windows.sh [FENMARK]   with a native program that is built already; without one it builds it.
set -euo pipefail

cd "$(dirname "$0")/.."
start=$SECONDS
step() { printf '\n-- %s (%d s)\n' "$1" $((SECONDS - start)); }

step 'packages'
scripts/packages.sh mingw build
export CCACHE_NOHASHDIR=1 CCACHE_BASEDIR="$PWD" CCACHE_SLOPPINESS=pch_defines,time_macros

step 'build'
if [ $# -ge 1 ]; then
    native=$(realpath "$1")
else
    cmake --preset demo >/dev/null
    cmake --build --preset demo --target fenmark
    native=$PWD/build/demo/apps/fenmark/fenmark
fi
env -u CC -u CXX cmake --preset windows >/dev/null
cmake --build --preset windows
dll=build/windows/src/alignment/fenmark-alignment.dll
exe=build/windows/apps/fenmark/fenmark.exe

step 'symbols of the DLL, and what both need of the system'
objdump=x86_64-w64-mingw32-objdump
exported=$("$objdump" -p "$dll" | sed -n '/Ordinal\/Name Pointer/,/^$/s/^\t*\[ *[0-9]*\] //p' | sort)
diff <(grep -v '^#' docs/exports.txt | sed '/^$/d' | sort) <(printf '%s\n' "$exported") ||
    { echo "check_windows: $dll exports (>) other symbols than docs/exports.txt lists (<)" >&2; exit 1; }
echo "$(printf '%s\n' "$exported" | wc -l) symbols, as listed"
if "$objdump" -p "$exe" | grep -q 'Ordinal/Name Pointer'; then
    echo "check_windows: $exe exports symbols" >&2
    exit 1
fi
for file in "$exe" "$dll"; do
    needed=$("$objdump" -p "$file" | sed -n 's/^\tDLL Name: //p' | sort -u)
    echo "$(basename "$file") needs:" $needed
    if strange=$(printf '%s\n' "$needed" | grep -viE '^(kernel32|msvcrt|shell32|advapi32|user32)\.dll$'); then
        echo "check_windows: $file needs more than the system:" $strange >&2
        exit 1
    fi
done

step 'zip and installer'
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct) scripts/windows_zip.sh build/windows-dist
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct) scripts/windows_zip.sh build/windows-dist/again >/dev/null
for file in build/windows-dist/fenmark-*; do
    cmp "$file" "build/windows-dist/again/$(basename "$file")"
done
rm -rf build/windows-dist/again

step 'a Japanese Windows under Wine'
trial=$PWD/build/windows-wine
mkdir -p "$trial/locale"
[ -d "$trial/locale/ja_JP.UTF-8" ] || localedef -i ja_JP -f UTF-8 "$trial/locale/ja_JP.UTF-8"
# Wine takes the code page from the locale's characters: 932. The messages stay English, as the tests read them.
export FENMARK_WINE=${FENMARK_WINE:-/usr/lib/wine/wine64}
unset LC_ALL
export LOCPATH=$trial/locale LC_CTYPE=ja_JP.UTF-8 LC_MESSAGES=C WINEPREFIX=$trial/prefix WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml='
trap '/usr/lib/wine/wineserver64 -k || true' EXIT
[ -e "$WINEPREFIX/system.reg" ] || timeout 300 "$FENMARK_WINE" wineboot -i
cp "$exe" "$dll" "$trial/"
x86_64-w64-mingw32-gcc-posix -municode -O1 -Wall -Wextra -Werror -static -o "$trial/hold.exe" tests/windows/hold.c

step 'fenmark.exe'
python3 -B tests/windows/test_windows.py "$trial" "$native" "$PWD"

step 'fenmark-alignment.dll, from its CMake package, and the installer'
python3 -B tests/windows/test_products.py build/windows-dist "$native" "$PWD"

printf '\nWindows checked in %d s.\n' $((SECONDS - start))
