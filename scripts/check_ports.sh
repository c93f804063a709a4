#!/usr/bin/env bash
# Builds and tries what people get who do not compile: the Debian packages in a bare Debian 12, and the QGIS plugin with
# QGIS's own program.
#
# scripts/check_ports.sh
set -euo pipefail

cd "$(dirname "$0")/.."
start=$SECONDS
step() { printf '\n== %s (%d s)\n' "$1" $((SECONDS - start)); }

step 'Debian packages'
scripts/check_packages.sh

step 'QGIS plugin'
scripts/packages.sh qgis
tests/qgis/check_qgis.sh build/deb/apps/fenmark/fenmark "$PWD"

printf '\nAll ports checked in %d s.\n' $((SECONDS - start))
