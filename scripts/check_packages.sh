#!/usr/bin/env bash
# Builds the Debian packages, lets lintian judge them, and installs, runs and removes them in a bare Debian 12 of their own.
#
# scripts/check_packages.sh
set -euo pipefail

cd "$(dirname "$0")/.."
scripts/packages.sh build windows package
cmake --preset deb >/dev/null
cmake --build --preset deb
rm -rf dist
cpack --preset deb >/dev/null
lintian --fail-on error,warning --suppress-tags-from-file packaging/debian/lintian-explained dist/*.deb

root=$(mktemp -d)
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
trap '"${as_root[@]}" rm -rf "$root"' EXIT
mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' | grep -m 1 -v security)
"${as_root[@]}" debootstrap --variant=minbase bookworm "$root" "$mirror" >"$root.log" || { tail "$root.log" >&2; exit 1; }
rm -f "$root.log"
"${as_root[@]}" cp dist/*.deb examples/road.sim "$root/srv"
"${as_root[@]}" cp /etc/apt/sources.list "$root/etc/apt" 2>/dev/null || true
"${as_root[@]}" cp -r /etc/apt/sources.list.d /etc/apt/apt.conf.d "$root/etc/apt" 2>/dev/null || true
"${as_root[@]}" cp /etc/resolv.conf "$root/etc" 2>/dev/null || true
"${as_root[@]}" chroot "$root" /bin/bash -euo pipefail -c '
    export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends /srv/*.deb >/dev/null
    cd /srv
    fenmark import road.sim >result.txt
    test -s road.gpkg
    fenmark export road.gpkg road.dxf
    QT_QPA_PLATFORM=offscreen fenmark-desk --screenshot road.png road.gpkg 2>/dev/null
    test -s road.png
    python3 -c "import fenmark_alignment"
    apt-get purge -y -qq fenmark fenmark-desk libfenmark-alignment1 libfenmark-alignment-dev python3-fenmark-alignment >/dev/null
    left=$(find /usr -path "*fenmark*" | head -3)
    test -z "$left" || { echo "left behind: $left" >&2; exit 1; }
'
ls dist
echo 'packages built, judged, installed, run and removed'
