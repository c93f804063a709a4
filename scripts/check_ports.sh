#!/usr/bin/env bash
# Builds and tries what people get who do not compile: the Debian packages in a bare Debian 12, the page for browsers in a
# headless one, the QGIS plugin with QGIS's own program, and what else has a check of its own.
#
# scripts/check_ports.sh [PART...]   with the parts: packages qgis web windows archive; all of them without
set -euo pipefail

cd "$(dirname "$0")/.."
start=$SECONDS
step() { printf '\n== %s (%d s)\n' "$1" $((SECONDS - start)); }

parts=("$@")
[ ${#parts[@]} -gt 0 ] || parts=(packages qgis web windows archive)
native=build/deb/apps/fenmark/fenmark

# The program that the other parts compare with, where the packages were not asked for.
need_native() {
    [ -x "$native" ] && return
    scripts/packages.sh build windows package
    cmake --preset deb >/dev/null
    cmake --build --preset deb --target fenmark
}

for part in "${parts[@]}"; do
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
        *) echo "check_ports.sh: no part named $part (packages, qgis, web, windows, archive)" >&2; exit 2 ;;
    esac
done

printf '\nAll ports checked in %d s.\n' $((SECONDS - start))
