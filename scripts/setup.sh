#!/usr/bin/env bash
# Installs missing Debian packages for a purpose.
# Usage: setup.sh build|demo|manual|package|hosts|soak|cluster|test|memcheck|tidy
set -euo pipefail

build=(g++ cmake ninja-build pkg-config juce-modules-source-data
       g++-mingw-w64-x86-64-posix libcairo2-dev libx11-dev libdbus-1-dev libsndfile1-dev
       libcli11-dev nlohmann-json3-dev libxsimd-dev libebur128-dev)
demo=(wine wine64 gnuplot-nox sonic-pi-samples fonts-liberation)
manual=(gnuplot-nox pandoc weasyprint fonts-liberation)
package=("${manual[@]}" nsis dpkg-dev lintian appstream)
hosts=(ardour audacity qtractor xvfb xdotool x11-utils imagemagick python3-numpy sonic-pi-samples)
soak=(wine wine64 xvfb libxtst-dev)
cluster=(slurm-wlm munge python3)
tests=("${package[@]}" wine wine64 googletest clang-format-14 flake8 clang-14 libclang-rt-14-dev
       libstb-dev libxtst-dev xvfb xdotool python3-numpy python3-pil parallel dbus
       xdg-desktop-portal xdg-desktop-portal-gtk zenity kdialog xclip x11-utils uim-xim
       fonts-dejavu-core fonts-droid-fallback)

case ${1:-} in
build) wanted=("${build[@]}") ;;
demo) wanted=("${build[@]}" "${demo[@]}") ;;
manual) wanted=("${build[@]}" "${manual[@]}") ;;
package) wanted=("${build[@]}" "${package[@]}") ;;
hosts) wanted=("${build[@]}" "${hosts[@]}") ;;
soak) wanted=("${build[@]}" "${soak[@]}") ;;
cluster) wanted=("${build[@]}" "${cluster[@]}") ;;
test) wanted=("${build[@]}" "${tests[@]}") ;;
memcheck) wanted=("${build[@]}" "${tests[@]}" valgrind) ;;
tidy) wanted=("${build[@]}" googletest libstb-dev libxtst-dev clang-tidy-14) ;;
*)
    echo "usage: setup.sh build|demo|manual|package|hosts|soak|cluster|test|memcheck|tidy" >&2
    exit 2
    ;;
esac

missing=()
for package in "${wanted[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed' ||
        missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "setup: run as root (or install sudo) to install: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" apt-get update &&
    "${as_root[@]}" apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "setup: the packages could not be installed" >&2
    exit 1
fi
