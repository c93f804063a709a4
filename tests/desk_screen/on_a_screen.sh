#!/usr/bin/env bash
# Runs a program on a screen of its own, as large as a small laptop's, with a window manager.
#
# on_a_screen.sh PROGRAM [ARGUMENT...]   exit code 77 where a tool is missing
set -euo pipefail

for tool in xvfb-run xdotool matchbox-window-manager; do
    command -v "$tool" >/dev/null || { echo "on_a_screen.sh: no $tool" >&2; exit 77; }
done
export QT_QPA_PLATFORM=xcb
# shellcheck disable=SC2016
exec xvfb-run -a -s '-screen 0 1024x768x24' bash -c '
    matchbox-window-manager >/dev/null 2>&1 &
    manager=$!
    trap "kill $manager" EXIT
    "$@"' screen "$@"
