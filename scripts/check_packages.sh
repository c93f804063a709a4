#!/usr/bin/env bash
# Builds the Debian packages, lets lintian judge them, and installs, runs and removes them in a bare Debian 12 of their own.
#
# scripts/check_packages.sh
#
# The bare Debian needs root or sudo, and leave to make a device and to change the root folder. Where a machine refuses that,
# the packages are unpacked into a folder and run from there, which leaves dependencies and scripts untried; the last line
# says which of the two was done. With FENMARK_BARE_DEBIAN=required that is a failure.
set -euo pipefail

cd "$(dirname "$0")/.."
here=$PWD
start=$SECONDS
step() { printf -- '-- %s (%d s)\n' "$1" $((SECONDS - start)); }

step 'what the build needs'
scripts/packages.sh build windows package
export CCACHE_NOHASHDIR=1 CCACHE_BASEDIR="$PWD" CCACHE_SLOPPINESS=pch_defines,time_macros
step 'build'
cmake --preset deb >/dev/null
cmake --build --preset deb
packages=$here/build/packages
rm -rf "$packages"
cpack --preset deb -D CPACK_OUTPUT_FILE_PREFIX="$packages" >/dev/null
ls "$packages"
step 'lintian'
lintian --allow-root --fail-on error,warning --suppress-tags-from-file packaging/debian/lintian-explained "$packages"/*.deb

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
work=$(mktemp -d)
root=$work/root
trap '"${as_root[@]}" rm -rf --one-file-system "$work"' EXIT

# What a user does with the programs, from the folder where the example lies.
cat >"$work/try.sh" <<'TRY'
set -eu
fenmark import road.sim >result.txt
test -s road.gpkg
fenmark export road.gpkg road.dxf
fenmark report road.gpkg road.html
test -s road.dxf && test -s road.html
QT_QPA_PLATFORM=offscreen fenmark-desk --screenshot road.png road.gpkg 2>screenshot.txt || { cat screenshot.txt >&2; exit 1; }
test -s road.png
python3 -c 'import fenmark_alignment; print("python module", fenmark_alignment.__file__)'
TRY

# Whether a root folder of its own can be had here: a device in it, and the change into it.
may_have_root() {
    "${as_root[@]}" mkdir -p "$root/dev" && "${as_root[@]}" mknod -m 666 "$root/dev/null" c 1 3 2>/dev/null &&
        "${as_root[@]}" sh -c "echo >'$root/dev/null'" 2>/dev/null && "${as_root[@]}" chroot / true 2>/dev/null
}

if may_have_root; then
    "${as_root[@]}" rm -rf "$root"
    # Debian's own places alone: other vendors' lists need keys that a bare system does not have.
    places=$(apt-get indextargets --format 'deb $(SITE) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' | sort -u)
    mirror=$(awk '$3 == "bookworm" { print $2; exit }' <<<"$places")
    step 'a bare Debian 12'
    "${as_root[@]}" debootstrap --variant=minbase bookworm "$root" "$mirror" >"$work/log" || { tail "$work/log" >&2; exit 1; }
    "${as_root[@]}" tee "$root/etc/apt/sources.list" >/dev/null <<<"$places"
    apt-config dump | grep -i '^Acquire::.*Proxy' | "${as_root[@]}" tee "$root/etc/apt/apt.conf.d/90proxy" >/dev/null || true
    "${as_root[@]}" cp -L /etc/resolv.conf /etc/hosts "$root/etc" 2>/dev/null || true
    "${as_root[@]}" cp "$packages"/*.deb examples/road.sim "$work/try.sh" "$root/srv"
    step 'installed, run and removed there'
    "${as_root[@]}" chroot "$root" /bin/bash -euo pipefail -c '
        export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
        apt-get update -qq
        apt-get install -y -qq --no-install-recommends /srv/*.deb >/dev/null 2>/srv/install.txt || { cat /srv/install.txt >&2; exit 1; }
        cd /srv
        sh try.sh
        ldconfig -p | grep -q libfenmark-alignment.so.1
        dpkg --audit
        apt-get purge -y -qq fenmark fenmark-desk libfenmark-alignment1 libfenmark-alignment-dev python3-fenmark-alignment >/dev/null
        left=$(find /usr /etc /var/lib -path "*fenmark*" ! -path "/var/lib/dpkg/*" ! -path "/var/lib/apt/*")
        test -z "$left" || { echo "left behind: $left" >&2; exit 1; }
    '
    echo 'packages built, judged by lintian, installed, run and removed in a bare Debian 12'
else
    [ "${FENMARK_BARE_DEBIAN:-}" != required ] || { echo 'check_packages: no bare Debian can be made here' >&2; exit 1; }
    step 'unpacked into a folder'
    unpacked=$work/unpacked
    for package in "$packages"/*.deb; do
        dpkg-deb -x "$package" "$unpacked"
    done
    cp examples/road.sim "$work/try.sh" "$work"
    library=$(dirname "$(find "$unpacked/usr/lib" -name 'libfenmark-alignment.so.1' | head -n 1)")
    (cd "$work" && PATH="$unpacked/usr/bin:$PATH" LD_LIBRARY_PATH="$library" \
        PYTHONPATH="$unpacked/usr/lib/python3/dist-packages" sh try.sh)
    echo 'packages built, judged by lintian and run from a folder; NOT installed: this machine lets no bare Debian be made'
fi
