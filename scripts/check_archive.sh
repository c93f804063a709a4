#!/usr/bin/env bash
# Tries examples/archive with Dask and a PostGIS server of its own, which nobody else reaches and nothing is left of.
#
# scripts/check_archive.sh [FENMARK]   the program; without it one that was built here, or a new build
set -euo pipefail

cd "$(dirname "$0")/.."
scripts/packages.sh archive

program=${1:-}
for built in build/deb build/dev build/demo; do
    [ -n "$program" ] || { [ -x $built/apps/fenmark/fenmark ] && program=$built/apps/fenmark/fenmark; } || true
done
if [ -z "$program" ]; then
    scripts/packages.sh build
    cmake --preset demo >/dev/null
    cmake --build --preset demo --target fenmark
    program=build/demo/apps/fenmark/fenmark
fi

# A server refuses to run as root.
as_server=()
server_user=$(id -un)
if [ "$(id -u)" -eq 0 ]; then
    as_server=(runuser -u postgres --)
    server_user=postgres
fi
bin=$(ls -d /usr/lib/postgresql/*/bin | sort -V | tail -n 1)
cluster=$(cd / && "${as_server[@]}" mktemp -d /tmp/fenmark-pg.XXXXXX) # short: it holds the socket
cleanup() {
    (cd / && "${as_server[@]}" "$bin/pg_ctl" -D "$cluster/data" -m immediate -w stop >/dev/null 2>&1) || true
    rm -rf "$cluster"
}
trap cleanup EXIT

(
    cd /
    "${as_server[@]}" "$bin/initdb" -D "$cluster/data" -A trust -E UTF8 --locale=C -N >/dev/null
    # No network, a socket in a folder of its own; durability is of no use to rows that are thrown away.
    "${as_server[@]}" "$bin/pg_ctl" -D "$cluster/data" -w -l "$cluster/log" \
        -o "-c listen_addresses= -c unix_socket_directories=$cluster -c fsync=off -c max_connections=40" start >/dev/null
) || { cat "$cluster/log" >&2; exit 1; }

# The modules are those of the system's own Python.
timeout 500 /usr/bin/python3 -B tests/archive/test_archive.py "$program" "$PWD" "host=$cluster user=$server_user"
