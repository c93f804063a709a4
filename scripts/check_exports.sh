#!/usr/bin/env bash
# Compares the symbols that a shared library exports with the list kept in the repository.
#
# scripts/check_exports.sh LIBRARY LIST
set -euo pipefail

exported=$(nm -D --defined-only "$1" | awk '$2 ~ /[TDBR]/ { print $3 }' | sort)
listed=$(grep -v '^#' "$2" | sed '/^$/d' | sort)
if ! diff <(printf '%s\n' "$listed") <(printf '%s\n' "$exported"); then
    echo "check_exports: $1 exports (>) other symbols than $2 lists (<)" >&2
    exit 1
fi
echo "$(printf '%s\n' "$exported" | wc -l) symbols, as listed"
