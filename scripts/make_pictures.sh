#!/usr/bin/env bash
# Makes the pictures in docs/pictures: the dialogs, the desktop program and its views on a small screen (desk/), and the
# plan of the road example, without a display.
#
# scripts/make_pictures.sh [BUILD]   with the build folder, default build/dev, which must be configured
set -euo pipefail

cd "$(dirname "$0")/.."
build="${1:-build/dev}"
cmake --build "$build" --target fenmark_pictures >/dev/null
mkdir -p docs/pictures
for views in "" desk desk2; do
    "$build/apps/desk/fenmark_pictures" examples docs/pictures $views \
        2> >(grep -v 'This plugin does not support\|XDG_RUNTIME_DIR' >&2)
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp examples/road.sim "$work"
cmake --build "$build" --target fenmark >/dev/null
"$build/apps/fenmark/fenmark" import --quiet "$work/road.sim" >/dev/null
"$build/apps/fenmark/fenmark" plot --quiet "$work/road.gpkg" "$work/road.svg"
rsvg-convert -w 1600 "$work/road.svg" -o docs/pictures/road.png
ls docs/pictures
