#!/usr/bin/env bash
# Installs the plugin's zip into a profile of its own and runs every algorithm with QGIS's own program, without a display.
#
# check_qgis.sh FENMARK SOURCE_FOLDER
set -euo pipefail

program=$(realpath "$1") source=$(realpath "$2")
fail() { echo "check_qgis: $1" >&2; exit 1; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$source/qgis" && find fenmark -name '*.py' -o -name metadata.txt | sort | zip -q -X "$work/fenmark.zip" -@)
mkdir "$work/plugins" "$work/home"
unzip -q "$work/fenmark.zip" -d "$work/plugins"

export HOME="$work/home" QGIS_PLUGINPATH="$work/plugins" QT_QPA_PLATFORM=offscreen FENMARK_PROGRAM="$program" LC_ALL=C.UTF-8
process() { qgis_process.bin "$@" 2>"$work/stderr" || { cat "$work/stderr" >&2; return 1; }; }

process plugins enable fenmark >/dev/null || fail 'the plugin cannot be enabled'
listed=$(process list)
for algorithm in import stakes locate export report; do
    grep -q "fenmark:$algorithm" <<<"$listed" || fail "no algorithm fenmark:$algorithm"
done

cp "$source/examples/road.sim" "$work"
process run fenmark:import -- INPUT="$work/road.sim" ZONE=9 OUTPUT="$work/road.gpkg" >"$work/import.txt" || fail 'import'
grep -q 'ERRORS:.*0' "$work/import.txt" || fail 'the import tells no count of errors'
[ -s "$work/road.gpkg" ] || fail 'no drawing'
alignment=$("$program" info --json "$work/road.gpkg" | python3 -c 'import json,sys; print(json.load(sys.stdin)["sites"][0]["alignments"][0]["name"])')

process run fenmark:stakes -- DRAWING="$work/road.gpkg" ALIGNMENT="$alignment" EVERY=20 OFFSETS=-5,0,5 \
    OUTPUT="$work/stakes.gpkg" >/dev/null || fail 'stakes'
process run fenmark:locate -- DRAWING="$work/road.gpkg" ALIGNMENT="$alignment" INPUT="$work/stakes.gpkg" \
    OUTPUT="$work/placed.geojson" >/dev/null || fail 'locate'
process run fenmark:export -- DRAWING="$work/road.gpkg" OUTPUT="$work/road.dxf" >/dev/null || fail 'export'
process run fenmark:report -- DRAWING="$work/road.gpkg" OUTPUT="$work/road.html" >/dev/null || fail 'report'
grep -q '<html' "$work/road.html" || fail 'the report is no page'
grep -q 'ENTITIES' "$work/road.dxf" || fail 'the export is no DXF file'

# A stake that is located again has its own station and offset.
python3 - "$work/placed.geojson" <<'PYTHON' || fail 'stakes do not come back'
import json, sys
features = json.load(open(sys.argv[1], encoding="utf-8"))["features"]
assert len(features) > 50, len(features)
kTolerance = 1e-4  # metres: tangents at a joint differ by some microradians, and a stake there has two feet
far = [f["properties"] for f in features
       if abs(f["properties"]["station"] - f["properties"]["station_1"]) > kTolerance
       or abs(f["properties"]["offset"] - f["properties"]["offset_1"]) > kTolerance]
assert not far, far[:3]
PYTHON

# What fenmark refuses, QGIS reports with its message.
if qgis_process.bin run fenmark:import -- INPUT="$work/nothing.sim" OUTPUT="$work/none.gpkg" >"$work/refused.txt" 2>&1; then
    fail 'an import of a file that is not there is reported as done'
fi
grep -q 'nothing.sim' "$work/refused.txt" || fail 'the refusal does not name the file'
echo 'plugin installed from its zip, five algorithms run, stakes come back where they were'
