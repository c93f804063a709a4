#!/usr/bin/env bash
# Makes the pictures in docs/pictures: the dialogs and the desktop program with the examples, without a display.
#
# scripts/make_pictures.sh [BUILD]   with the build folder, default build/dev, which must be configured
set -euo pipefail

cd "$(dirname "$0")/.."
build="${1:-build/dev}"
cmake --build "$build" --target fenmark_pictures >/dev/null
mkdir -p docs/pictures
"$build/apps/desk/fenmark_pictures" examples docs/pictures 2> >(grep -v 'This plugin does not support\|XDG_RUNTIME_DIR' >&2)
ls docs/pictures
