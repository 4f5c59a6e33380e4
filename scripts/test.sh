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

# build PRESET TARGET...: configures, and builds with warnings as errors.
build() {
    local preset=$1 log=build/$1-build.log
    shift
    mkdir -p build
    echo "== $preset: build"
    if ! { cmake --preset "$preset" -DZKR_TESTS=ON -DZKR_WARNINGS_AS_ERRORS=ON &&
        cmake --build --preset "$preset" --target "$@"; } >"$log" 2>&1; then
        grep -E -A6 'error|FAILED' "$log" | head -n 80 >&2 || tail -n 40 "$log" >&2
        exit 1
    fi
}

# start NAME COMMAND...: runs it beside what follows; tests wait more than they compute.
declare -A started
start() {
    local name=$1
    shift
    "$@" >"build/$name.log" 2>&1 &
    started[$name]=$!
}
trap 'kill ${started[*]} 2>/dev/null || true' EXIT

# finish NAME: waits for it, shows its output, and ends here if it failed.
finish() {
    local name=$1 result=0
    wait "${started[$name]}" || result=$?
    unset "started[$name]"
    echo "== $name"
    cat "build/$name.log"
    [ $result -eq 0 ] || exit $result
}

packages() {
    scripts/package.sh
    tests/package/linux_packages_test.sh
    tests/package/installer_test.sh
}

# Windows first: tests of the Linux build compare the two libraries.
scripts/wine.sh wineboot --init >/dev/null 2>&1
build win64 all
start win64-test ctest --preset win64 --parallel 2
build release all
finish win64-test
start release-test ctest --preset release --parallel 2
build asan all
finish release-test
start asan-test ctest --preset asan --parallel 2
build tsan sdk_test presets_test threads_test vst3_view_test vstgui_x11_test
finish asan-test
# These build in the folders of win64 and release, whose tests have ended.
start packages packages
echo "== tsan: test"
ctest --preset tsan --label-regex threads
scripts/fuzz.sh
finish packages
WINEPREFIX=$WINEPREFIX wineserver --kill 2>/dev/null || true
echo "All tests passed."
