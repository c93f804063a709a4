#!/usr/bin/env bash
# Compares the works that code and pages cite with docs/literature.md: each cited key has its row, and each row is cited.
set -euo pipefail

cd "$(dirname "$0")/.."
key='\[[A-Z][A-Za-z]+ [12][0-9]{3}\]'
cited=$(git grep -hoE "$key" -- src include apps python docs tests benchmarks ':!docs/literature.md' | sort -u)
listed=$(grep -oE "^\| $key" docs/literature.md | sed 's/^| //' | sort -u)
if ! diff <(echo "$cited") <(echo "$listed") >/dev/null; then
    diff <(echo "$cited") <(echo "$listed") |
        sed -n 's/^< \(.*\)/\1 is cited and has no row in docs\/literature.md/p; s/^> \(.*\)/\1 has a row and nothing cites it/p' >&2
    exit 1
fi
echo "$(echo "$listed" | wc -l) works, each cited"
