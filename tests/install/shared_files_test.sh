#!/usr/bin/env bash
# Installs what the programs bring beside themselves: manual pages that the formatter takes without a word, an entry for
# the menus, a type for SIMA files that the desktop knows after it, an icon, and completion for bash, zsh and fish.
#
# shared_files_test.sh CMAKE BUILD_TREE WORK_FOLDER
set -euo pipefail

cmake=$1 build=$2 work=$3

fail() { echo "shared files test: $1" >&2; exit 1; }

rm -rf "$work"
for component in fenmark desk; do
    "$cmake" --install "$build" --component "$component" --prefix "$work" >/dev/null
done
share="$work/share"

for page in man1/fenmark man1/fenmark-desk ja/man1/fenmark; do
    file="$share/man/$page.1" name=${page##*/}
    [ -f "$file" ] || fail "no manual page $page"
    grep -q "^\.TH ${name^^} 1" "$file" || fail "$page: no heading"
    if command -v groff >/dev/null; then
        said=$(groff -man -Tutf8 -Kutf8 -ww -z "$file" 2>&1) || fail "$page: $said"
        [ -z "$said" ] || fail "$page: $said"
    fi
done

desktop="$share/applications/fenmark-desk.desktop"
[ -f "$desktop" ] || fail 'no entry for the menus'
grep -qx 'Exec=fenmark-desk %f' "$desktop" || fail 'the entry does not start the program with a file'
type=$(sed -n 's/.*<mime-type type="\([^"]*\)".*/\1/p' "$share/mime/packages/fenmark-desk.xml")
grep -q "^MimeType=.*$type;" "$desktop" || fail "the entry does not take $type"
if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$desktop" || fail 'the entry is not valid'
fi
if command -v update-mime-database >/dev/null; then
    update-mime-database "$share/mime"
    grep -q "^[0-9]*:$type:\*\.sim$" "$share/mime/globs2" || fail "*.sim is not of the type $type"
fi
icon=$(sed -n 's/^Icon=//p' "$desktop")
[ -f "$share/icons/hicolor/scalable/apps/$icon.svg" ] || fail "no icon $icon"
for script in bash-completion/completions/fenmark zsh/site-functions/_fenmark fish/vendor_completions.d/fenmark.fish; do
    [ -f "$share/$script" ] || fail "no completion $script"
done

rm -rf "$work"
echo 'manual pages, menu entry, file type, icon and completion are installed'
