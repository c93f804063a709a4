#!/usr/bin/env bash
# Installs the alignment library into a folder of the build tree, moves that folder, and builds programs against it as a
# stranger would: with find_package and with pkg-config, in C99 and in C++. Then runs them and looks at the soname.
#
# install_test.sh CMAKE BUILD_TREE SOURCE_TREE WORK_FOLDER C_COMPILER CXX_COMPILER
set -euo pipefail

cmake=$1 build=$2 source=$3 work=$4 cc=$5 cxx=$6

fail() { echo "install test: $1" >&2; exit 1; }
expect() { [ "$2" = "$3" ] || fail "$1: expected \"$3\", got \"$2\""; }

rm -rf "$work"
mkdir -p "$work"
for component in alignment alignment-dev python; do
    "$cmake" --install "$build" --component "$component" --prefix "$work/staged" >/dev/null
done
# What was installed must work wherever it comes to lie.
prefix="$work/moved here"
mv "$work/staged" "$prefix"

library=$(find "$prefix" -name libfenmark-alignment.so)
[ -L "$library" ] || fail 'libfenmark-alignment.so is no link'
folder=$(dirname "$library")
version=$(sed -n 's/^Version: //p' "$folder/pkgconfig/fenmark-alignment.pc")
soname="libfenmark-alignment.so.${version%%.*}"
expect 'soname' "$(readelf -d "$library" | sed -n 's/.*(SONAME).*\[\(.*\)\].*/\1/p')" "$soname"
[ -e "$folder/$soname" ] || fail "no $soname beside the library"
expect 'real name' "$(basename "$(readlink -f "$library")")" "libfenmark-alignment.so.$version"

# The headers stand alone: every one is there, and nothing else of the project is.
expect 'headers' "$(cd "$prefix/include" && find . -name '*.h' | sort)" \
    "$(cd "$source/include" && find . \( -path './fenmark/alignment*' -o -path './fenmark/curve*' \) -name '*.h' | sort)"

configure() { "$cmake" -G Ninja -S "$1" -B "$2" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_BUILD_TYPE=Release >"$2.log" 2>&1 || { cat "$2.log" >&2; fail "configuring $1"; }; }
compile() { "$cmake" --build "$1" >>"$1.log" 2>&1 || { cat "$1.log" >&2; fail "building $1"; }; }

c_result='C 0.0000'
cxx_result='C++ success 25.0000'
configure "$source/tests/install/consumer" "$work/consumer"
compile "$work/consumer"
expect 'C program with find_package' "$("$work/consumer/consumer_C")" "$c_result"
expect 'C++ program with find_package' "$("$work/consumer/consumer_CXX")" "$cxx_result"

configure "$source/examples/alignment" "$work/example"
compile "$work/example"
"$work/example/stake_curve" >"$work/stakes.txt"
expect 'stakes of the example' "$(grep -c '^No\.' "$work/stakes.txt")" 30

# pkg-config escapes the blank in the folder's name, so its words are read by the shell once more.
export PKG_CONFIG_PATH="$folder/pkgconfig" LD_LIBRARY_PATH="$folder"
expect 'version by pkg-config' "$(pkg-config --modversion fenmark-alignment)" "$version"
flags=$(pkg-config --cflags --libs fenmark-alignment)
eval "$cc -std=c99 -Wall -Wextra -Wpedantic -Werror '$source/tests/install/consumer/main.c' -o '$work/pkg_c' $flags"
eval "$cxx -std=c++17 -Wall -Wextra -Wpedantic -Werror '$source/tests/install/consumer/main.cpp' -o '$work/pkg_cxx' $flags"
expect 'C program with pkg-config' "$("$work/pkg_c")" "$c_result"
expect 'C++ program with pkg-config' "$("$work/pkg_cxx")" "$cxx_result"
expect 'needed library' "$(readelf -d "$work/pkg_c" | sed -n 's/.*(NEEDED).*\[\(libfenmark.*\)\].*/\1/p')" "$soname"

# The Python module finds the library that was installed with it.
if command -v python3 >/dev/null; then
    unset FENMARK_ALIGNMENT_LIBRARY
    expect 'Python module' "$(env -u LD_LIBRARY_PATH PYTHONDONTWRITEBYTECODE=1 PYTHONPATH="$prefix/lib/python3/dist-packages" \
        python3 -c 'import fenmark_alignment as f; print(round(f.Chain.from_ips([(0, 0), (100, 0)]).length, 6))')" '100.0'
    [ -e "$prefix/lib/python3/dist-packages/fenmark_alignment/py.typed" ] || fail 'no py.typed'
fi

rm -rf "$work"
echo 'installed, moved, found with CMake and pkg-config, built and run'
