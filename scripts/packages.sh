#!/usr/bin/env bash
# Installs the Debian packages that are missing, and nothing when none is.
#
# scripts/packages.sh SET...   with the sets: build (the importer), windows (Qt), package
# (Debian packages), web (fenmark.html and its test), qgis (the plugin's check), archive (Dask and
# PostGIS), mingw (fenmark.exe and its check), check (tests, format, validators)
set -euo pipefail

build=(g++ cmake ninja-build pkg-config libsqlite3-dev libcli11-dev libpugixml-dev nlohmann-json3-dev
       libgeographiclib-dev librsvg2-dev)
picture=(librsvg2-bin fonts-ipafont-gothic)
windows=(qt6-base-dev qt6-l10n-tools qt6-translations-l10n python3 libgl-dev fonts-ipafont-gothic)
check=(clang clang-format clang-tidy libclang-rt-14-dev ccache libgtest-dev libbenchmark-dev python3 python3-gdal gdal-bin
       zsh fish xvfb xauth xdotool matchbox-window-manager libxml2-utils python3-ezdxf python3-numpy
       python3-matplotlib python3-geopandas mypy)
web=(emscripten chromium firefox-esr nodejs tcl apt dpkg-dev python3)
packaging=(lintian debootstrap dpkg-dev file ccache)
qgis=(qgis python3-qgis zip unzip)
archive=(python3-distributed python3-psycopg2 postgresql postgresql-15-postgis-3 parallel gdal-bin)
mingw=(g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix wine64 nsis locales tcl apt dpkg-dev python3 ccache)

wanted=()
for name in "$@"; do
    case "$name" in
        build) wanted+=("${build[@]}") ;;
        picture) wanted+=("${picture[@]}") ;;
        windows) wanted+=("${windows[@]}") ;;
        web) wanted+=("${web[@]}" "${build[@]}") ;;
        package) wanted+=("${packaging[@]}") ;;
        qgis) wanted+=("${qgis[@]}") ;;
        archive) wanted+=("${archive[@]}") ;;
        mingw) wanted+=("${mingw[@]}") ;;
        check) wanted+=("${check[@]}") ;;
        *) echo "packages.sh: no set named $name (build, picture, windows, web, package, qgis, archive, mingw, check)" >&2; exit 2 ;;
    esac
done

# Debian's nodejs leaves npm to a package of its own; others bring it along, and refuse that package.
[[ " $* " == *" web "* ]] && ! command -v npm >/dev/null && wanted+=(npm)

missing=()
for package in "${wanted[@]}"; do
    [ "$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null)" = "install ok installed" ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

run=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "packages.sh: needs root or sudo to install: ${missing[*]}" >&2; exit 1; }
    run=(sudo)
fi
echo "Installing ${missing[*]}" >&2
export DEBIAN_FRONTEND=noninteractive
"${run[@]}" apt-get update -qq
"${run[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
