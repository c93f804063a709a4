#!/bin/sh
# Fetches the sources of the libraries that the browser and Windows builds compile, from Debian's source packages, into
# build/library-sources. What is there already is left alone; nothing of it comes into the repository.
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
target=$root/build/library-sources
mirror=${FENMARK_DEBIAN_MIRROR:-http://deb.debian.org}
stamp=$target/complete-1
[ -e "$stamp" ] && exit 0

rm -rf "$target"
mkdir -p "$target/apt/lists/partial" "$target/apt/cache/archives/partial"
cd "$target"
# A list of sources of its own, so that the machine's lists stay as they are and root is not needed.
key=signed-by=/usr/share/keyrings/debian-archive-keyring.gpg
cat > apt/sources.list <<LIST
deb-src [$key] $mirror/debian bookworm main
deb-src [$key] $mirror/debian bookworm-updates main
deb-src [$key] $mirror/debian-security bookworm-security main
LIST
from_debian() {
  apt-get -qq -o Dir::Etc::sourcelist="$target/apt/sources.list" -o Dir::Etc::sourceparts=- -o Dir::State::lists="$target/apt/lists" \
    -o Dir::Cache="$target/apt/cache" -o APT::Sandbox::User=root "$@"
}
from_debian update
# The description of each source package is pinned here, and holds the checksums of all its files, which apt compares.
while read -r sum package version; do
  from_debian source --download-only "$package=$version"
  echo "$sum  ${package}_$version.dsc" | sha256sum --check --quiet -
  mkdir "$package"
  tar -x -C "$package" --strip-components=1 -f "$(echo "${package}_${version%-*}".orig.tar.*)"
done <<PINS
ee3459ae9d00939741c7708fc1b8ce1bde12d8c3fb1dfa005bbbc8651d884e23 sqlite3 3.40.1-2+deb12u2
5df8982f909c9549a1ce6dee279ddef24890247f5a9268d9646584c9652a161f geographiclib 2.1.2-1
b1f8bf054b5c99b57a6b5320d49ffdc749ecc3c61cbbc1efc8daa0341bb6a884 double-conversion 3.2.1-1
PINS

# SQLite is compiled as one file, which its own build puts together.
mkdir sqlite3-build
cd sqlite3-build
../sqlite3/configure --disable-tcl --disable-readline > configure.log 2>&1
make sqlite3.c > make.log 2>&1
touch "$stamp"
