#!/usr/bin/env bash
# Builds the Linux and the Windows product and collects them in dist/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh build

# build_preset PRESET TARGETS...: prints the log only on failure.
build_preset() {
    local preset=$1 log
    shift
    log=build/$preset.log
    mkdir -p build
    echo "Building $preset"
    if ! { cmake --preset "$preset" -DZKR_TESTS=OFF &&
        cmake --build --preset "$preset" --target "$@"; } >"$log" 2>&1; then
        cat "$log" >&2
        exit 1
    fi
}

# place FILE TARGET: copies a file under a new name first, since a host may have the old one open.
# Programs and libraries lose their symbols.
place() {
    mkdir -p "$(dirname "$2")"
    cp "$1" "$2.new"
    case $2 in
    *.so | *.exe | */zkrt46) strip --strip-all --remove-section=.comment "$2.new" ;;
    esac
    mv "$2.new" "$2"
}

# gather BUILD SYSTEM FILES...: copies the files of a build and its VST 3 bundle to dist/SYSTEM, and
# removes files of an older bundle.
gather() {
    local build=$1 target=dist/$2 file
    for file in "${@:3}"; do
        place "$build/$file" "$target/$(basename "$file")"
    done
    (cd "$build" && find ZKRT46.vst3 -type f) | while read -r file; do
        place "$build/$file" "$target/$file"
    done
    (cd "$target" && find ZKRT46.vst3 -type f) | while read -r file; do
        [ -e "$build/$file" ] || rm "$target/$file"
    done
}

build_preset release ZKRT46 ZKRT46Vst3 zkrt46
build_preset win64 ZKRT46 ZKRT46Vst3 zkrt46-bridge

gather build/release linux shell/ZKRT46.so tools/zkrt46
gather build/win64 windows shell/ZKRT46.dll tools/bridge/zkrt46-bridge.exe

# The picture that hosts show in their lists of plug-ins, for both bundles.
mkdir -p dist/{linux,windows}/ZKRT46.vst3/Contents/Resources/Snapshots
snapshot=$(sed -n 's/.*"Path": "\(.*\)"/\1/p' dist/linux/ZKRT46.vst3/Contents/Resources/moduleinfo.json)
dist/linux/zkrt46 screenshot --preset "Mastering loudness" -o "dist/linux/ZKRT46.vst3/$snapshot" >/dev/null
cp "dist/linux/ZKRT46.vst3/$snapshot" "dist/windows/ZKRT46.vst3/$snapshot"
echo "Built: $(echo dist/linux/* dist/windows/*)"
