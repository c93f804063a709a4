#!/usr/bin/env bash
# Builds and tries what people get who do not compile, in these parts:
#
#   packages   the Debian packages, judged by lintian, installed and run in a bare Debian 12
#   qgis       the QGIS plugin, with QGIS's own program
#   web        fenmark.html, in a headless browser
#   windows    fenmark.exe, fenmark-alignment.dll, the zip and the installer, under Wine
#   archive    examples/archive, with Dask and a PostGIS server
#
# scripts/check_ports.sh [PART...]   all of them where none is named; the last lines say how long each took
set -euo pipefail

cd "$(dirname "$0")/.."
start=$SECONDS
step() { printf '\n== %s (%d s)\n' "$1" $((SECONDS - start)); }

all=(packages qgis web windows archive)
parts=("$@")
[ ${#parts[@]} -gt 0 ] || parts=("${all[@]}")
for part in "${parts[@]}"; do
    [[ " ${all[*]} " == *" $part "* ]] || { echo "check_ports.sh: no part named $part (${all[*]})" >&2; exit 2; }
done
export CCACHE_NOHASHDIR=1 CCACHE_BASEDIR="$PWD" CCACHE_SLOPPINESS=pch_defines,time_macros

# The program that the other parts compare with: that of the packages where these are asked for.
preset=demo needs=(build)
[[ " ${parts[*]} " != *" packages "* ]] || preset=deb needs=(build windows package)
native=build/$preset/apps/fenmark/fenmark
need_native() {
    scripts/packages.sh "${needs[@]}"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target fenmark
}

times=()
for part in "${parts[@]}"; do
    begun=$SECONDS
    case "$part" in
        packages)
            step 'Debian packages'
            scripts/check_packages.sh ;;
        qgis)
            step 'QGIS plugin'
            need_native
            scripts/packages.sh qgis
            tests/qgis/check_qgis.sh "$native" "$PWD" ;;
        web)
            step 'fenmark.html'
            need_native
            scripts/check_web.sh "$native" ;;
        windows | archive)
            step "$part"
            need_native
            "scripts/check_$part.sh" "$native" ;;
    esac
    times+=("$(printf '%-9s %5d s' "$part" $((SECONDS - begun)))")
done

printf '\n'
printf '%s\n' "${times[@]}"
printf '\nAll ports checked in %d s.\n' $((SECONDS - start))
