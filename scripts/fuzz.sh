#!/usr/bin/env bash
# Fuzzes what reads untrusted data: banks, presets, states of projects and files of hosts, and the
# calls of a host with the plug-in's editor open.
# Usage: fuzz.sh [--runs N | --minutes M] [bank|preset|state|dispatcher]...
#        fuzz.sh --memcheck M
#
# Without arguments: all targets, a fixed number of runs with a fixed seed. With a number of runs or
# a time, which apply to each target: a new seed, and interesting inputs are kept in
# build/fuzz/corpus. Findings go to build/fuzz/findings.
#
# With --memcheck no fuzzer runs. Instead, the tests of presets and of the built plug-in are
# repeated under valgrind for M minutes, to detect leaks and uninitialised reads.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    echo "usage: fuzz.sh [--runs N | --minutes M] [bank|preset|state|dispatcher]..." >&2
    echo "       fuzz.sh --memcheck M" >&2
    exit 2
}

limit=()
targets=()
memcheck=""
while [ $# -gt 0 ]; do
    case $1 in
    --runs | --minutes)
        [[ ${2:-} =~ ^[0-9]+$ ]] || usage
        if [ "$1" = --runs ]; then limit=("-runs=$2"); else limit=("-max_total_time=$((60 * $2))"); fi
        shift 2
        ;;
    --memcheck)
        [[ ${2:-} =~ ^[0-9]+$ ]] || usage
        memcheck=$2
        shift 2
        ;;
    bank | preset | state | dispatcher)
        targets+=("$1")
        shift
        ;;
    *) usage ;;
    esac
done
[ ${#targets[@]} -gt 0 ] || targets=(bank preset state dispatcher)
if [ -n "$memcheck" ]; then scripts/setup.sh memcheck; else scripts/setup.sh test; fi

# build_preset PRESET TARGETS...: prints the errors only on failure.
build_preset() {
    local preset=$1 log=build/$1-fuzz.log
    shift
    mkdir -p build
    echo "== $preset: build"
    if ! { cmake --preset "$preset" -DZKR_TESTS=ON &&
        cmake --build --preset "$preset" --target "$@"; } >"$log" 2>&1; then
        grep -E -A6 'error|FAILED' "$log" | head -n 80 >&2 || tail -n 40 "$log" >&2
        exit 1
    fi
}

# check NAME [ARGUMENTS]: runs one test program under valgrind.
check() {
    local program=build/release/tests/$1 log=build/memcheck.log
    shift
    if ! valgrind --quiet --leak-check=full --error-exitcode=1 "$program" "$@" >"$log" 2>&1; then
        grep -E '^==|FAILED' "$log" | head -n 60 >&2
        echo "FINDING: $program" >&2
        exit 1
    fi
    echo "$((SECONDS / 60)) min: $(basename "$program") $(grep -o '[0-9]* tests\? .*ran' "$log")"
}

if [ -n "$memcheck" ]; then
    build_preset release presets_test corruption_test store_test plugin_test renders_test
    XDG_DATA_HOME=$(mktemp -d)
    export XDG_DATA_HOME
    trap 'rm -rf "$XDG_DATA_HOME"' EXIT
    SECONDS=0
    while
        check presets/presets_test
        check presets/store_test --gtest_filter=-Store.NobodyReadsHalfAValue
        check presets/corruption_test --gtest_filter='Corruption.*Header*:*ACutOff*'
        check plugin/plugin_test
        check renders/renders_test --gtest_filter='*Library'
        [ "$SECONDS" -lt $((60 * memcheck)) ]
    do :; done
    exit
fi

out=$PWD/build/fuzz
# Short runs take the build that the tests use, long ones a quicker one.
if [ ${#limit[@]} -gt 0 ]; then preset=fuzz; else preset=asan; fi
programs=$PWD/build/$preset/tests/fuzz
build_preset $preset fuzzers
rm -rf "$out/seeds"
mkdir -p "$out"
"$programs/make_corpus" "$out/seeds"

# short TARGET: the fixed number of runs. A run of a state saves the whole bank several times; one of
# the dispatcher creates a plug-in and its editor.
short() {
    case $1 in
    state) echo 5000 ;;
    dispatcher) echo 1000 ;;
    *) echo 100000 ;;
    esac
}

# options TARGET: libFuzzer's options for it. The longest input has 50000 bytes, since a whole bank or
# state has 49 kB. Long runs of banks and presets use at most 5000: an image of few records takes less
# time, and can have every kind of record. A run of the dispatcher makes 100 calls at most; 2000 bytes
# are enough for them.
# Without entropic scheduling for the dispatcher: counting how rare each of its many features is
# takes a quarter of the time.
options() {
    case $1 in
    bank | preset) if [ ${#limit[@]} -gt 0 ]; then echo -max_len=5000; else echo -max_len=50000; fi ;;
    dispatcher) printf '%s\n' -max_len=2000 -entropic=0 ;;
    *) echo -max_len=50000 ;;
    esac
}

# field NAME: a value of libFuzzer's final statistics.
field() {
    sed -n "s/^stat::$1: *//p" "$target_log" | tail -n 1
}

failed=0
for target in "${targets[@]}"; do
    target_log=$out/$target.log
    corpus=$out/corpus/$target
    mkdir -p "$corpus" "$out/findings"
    if [ ${#limit[@]} -gt 0 ]; then
        how=("${limit[@]}" "$corpus")
    else
        # Without the corpus of earlier runs, so that every run is the same.
        how=("-runs=$(short "$target")" -seed=1)
    fi
    found=""
    mapfile -t own < <(options "$target")
    if ! "$programs/fuzz_$target" "${how[@]}" "${own[@]}" "$out/seeds/$target" \
        -artifact_prefix="$out/findings/$target-" -dict=tests/fuzz/images.dict \
        -timeout=30 -print_final_stats=1 >"$target_log" 2>&1; then
        found=" FINDING"
        failed=1
    fi
    printf '%-11s %10s executions %6s new units%s\n' "$target" "$(field number_of_executed_units)" \
        "$(field new_units_added)" "$found"
    if [ -n "$found" ]; then
        grep -E 'finding:|ERROR: |runtime error|SUMMARY|Test unit written' "$target_log" >&2 ||
            tail -n 20 "$target_log" >&2
    fi
done
exit $failed
