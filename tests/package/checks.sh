# shellcheck shell=bash disable=SC2034  # variables for those who source this
# Functions of the package tests; sourced by each with its argument, the folder of the products.
set -eEuo pipefail
export LC_ALL=C.UTF-8
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
top=$(cd "$here/../.." && pwd)
products=$(realpath -e "${1:-$top/dist}")
packages=$products/packages
version=$(sed -n 's/^project(ZKRT46 VERSION \([0-9.]*\).*/\1/p' "$top/CMakeLists.txt")
test_name=$(basename "$0" .sh)
work=$top/build/package-test/$test_name
rm -rf "$work"
mkdir -p "$work"

step() {
    echo "$test_name, $SECONDS s: $*"
}

fail() {
    echo "$test_name: FAILED: $*" >&2
    exit 1
}
trap 'fail "line $LINENO: $BASH_COMMAND"' ERR

# expect WHAT EXPECTED FOUND: two texts that must be equal.
expect() {
    [ "$2" = "$3" ] || fail "$1$(printf '\n  expected: %s\n  found:    %s' "$2" "$3")"
}

# code EXPECTED COMMAND...: the exit code of a command.
code() {
    local expected=$1 found=0
    shift
    "$@" || found=$?
    expect "exit code of: $*" "$expected" "$found"
}

# same FILE FILE: equal bytes.
same() {
    cmp "$1" "$2" >&2 || fail "$2 is not the same as $1"
}

# same_text FILE FILE: equal except for the line ends, which must be CRLF in the second.
same_text() {
    [ -s "$2" ] || fail "$2 is missing"
    [ "$(grep -c $'\r$' "$2")" = "$(wc -l <"$2")" ] || fail "$2 has line ends other than CRLF"
    tr -d '\r' <"$2" | cmp - "$1" >&2 || fail "the text of $2 differs from $1"
}

# same_tree FOLDER FOLDER: equal names and contents.
same_tree() {
    diff -r "$1" "$2" >&2 || fail "$2 is not the same as $1"
}

# listing FOLDER: the paths of everything below it, relative to it.
listing() {
    (cd "$1" && find . -mindepth 1 \( -type d -printf '%P/\n' -o -printf '%P\n' \) | sort)
}

# bundle_listing FOLDER: the listing of the VST 3 bundle in it, with the bundle's name.
bundle_listing() {
    echo ZKRT46.vst3/
    listing "$1/ZKRT46.vst3" | sed 's|^|ZKRT46.vst3/|'
}

# expect_files WHAT EXPECTED FOUND: two sorted lists of names.
expect_files() {
    diff <(echo "$2") <(echo "$3") >&2 || fail "$1: the files differ (< expected, > found)"
}

# unpack_presets: the presets of the Linux archive into $presets, the folder of maker and plug-in.
unpack_presets() {
    local archive=ZKRT46-$version-linux-x86_64
    tar -xzf "$packages/$archive.tar.gz" -C "$work" "$archive/presets"
    presets=$work/presets
    mv "$work/$archive/presets" "$presets"
    rmdir "$work/$archive"
}

# noise FILE: two seconds of stereo noise, the same each time.
noise() {
    python3 - "$1" <<'END'
import random, struct, sys, wave
random.seed(46)
with wave.open(sys.argv[1], "wb") as out:
    out.setparams((2, 2, 44100, 0, "NONE", ""))
    out.writeframes(struct.pack("<176400h", *(random.randint(-8000, 8000) for _ in range(176400))))
END
}
