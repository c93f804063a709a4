#!/usr/bin/env bash
# Exports a drawing by fenmark and by ogr2ogr, one after the other, and prints the processor time of each in seconds.
#
# beside_ogr2ogr.sh FENMARK DRAWING.gpkg
#
# The points alone, since ogr2ogr writes one layer to a file; and all of it by fenmark.
set -euo pipefail

fenmark=$(realpath "$1")
drawing=$(realpath "$2")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
TIMEFORMAT='%U %S'

seconds() {
    local times
    times=$({ time "$@" >/dev/null 2>&1; } 2>&1)
    awk '{ printf "%.2f", $1 + $2 }' <<<"$times"
}

printf '%-8s %10s %10s %10s\n' format all points ogr2ogr
for format in dxf:DXF geojson:GeoJSON csv:CSV kml:KML sim:; do
    extension=${format%%:*}
    all=$(seconds "$fenmark" export -q "$drawing" "$folder/all.$extension")
    points=$(seconds "$fenmark" export -q --only points "$drawing" "$folder/points.$extension")
    other=-
    case ${format##*:} in
        "") ;;
        GeoJSON) other=$(seconds ogr2ogr -f GeoJSON -lco RFC7946=YES "$folder/other.geojson" "$drawing" points) ;;
        *) other=$(seconds ogr2ogr -f "${format##*:}" "$folder/other.$extension" "$drawing" points) ;;
    esac
    printf '%-8s %10s %10s %10s\n' "$extension" "$all" "$points" "$other"
done
