#!/usr/bin/env bash
# Installs what the tests need, builds everything and runs every test: on Linux, on Windows through
# Wine, and under the address, undefined-behaviour and thread sanitizers; fuzzes briefly; then
# packages the product and tests the packages.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh test

export WINEPREFIX=$PWD/build/wine
export ZKR_EXPECT_WINDOWS=1  # tests that reach the Windows build must find it

echo "== Source rules"
scripts/check_sources.sh

# run PRESET TARGETS [CTEST ARGUMENTS]: configures, builds with warnings as errors, tests.
run() {
    local preset=$1 log
    local -a targets
    read -ra targets <<<"$2"
    shift 2
    log=build/$preset-test.log
    mkdir -p build
    echo "== $preset: build"
    if ! { cmake --preset "$preset" -DZKR_TESTS=ON -DZKR_WARNINGS_AS_ERRORS=ON &&
        cmake --build --preset "$preset" --target "${targets[@]}"; } >"$log" 2>&1; then
        grep -E -A6 'error|FAILED' "$log" | head -n 80 >&2 || tail -n 40 "$log" >&2
        exit 1
    fi
    echo "== $preset: test"
    ctest --preset "$preset" "$@"
}

# Windows first: tests of the Linux build compare the two libraries.
scripts/wine.sh wineboot --init >/dev/null 2>&1
run win64 all --parallel 2
run release all --parallel 2
run asan all --parallel 2
run tsan "sdk_test presets_test threads_test vst3_view_test vstgui_x11_test" \
    --label-regex threads
scripts/fuzz.sh

echo "== Packages"
scripts/package.sh
tests/package/linux_packages_test.sh
tests/package/installer_test.sh
WINEPREFIX=$WINEPREFIX wineserver --kill 2>/dev/null || true
echo "All tests passed."
