#!/usr/bin/env bash
# Builds the Linux and the Windows product and gathers them under dist/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh build

# build_preset PRESET TARGETS...: quiet unless it fails.
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

build_preset release ZKRT46 zkrt46
build_preset win64 ZKRT46 zkrt46-bridge

mkdir -p dist/linux dist/windows
install build/release/shell/ZKRT46.so build/release/tools/zkrt46 dist/linux/
install build/win64/shell/ZKRT46.dll build/win64/tools/bridge/zkrt46-bridge.exe dist/windows/
echo "Built: $(echo dist/*/*)"
