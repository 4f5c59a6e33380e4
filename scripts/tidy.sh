#!/usr/bin/env bash
# Runs clang-tidy, with the rules of .clang-tidy, over the files named, or over all of the Linux
# build. All of them take the better part of an hour on two processors.
# Usage: tidy.sh [FILE...]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh tidy

mkdir -p build
cmake --preset debug >build/debug.log || { cat build/debug.log >&2; exit 1; }
files=("$@")
if [ $# -eq 0 ]; then
    mapfile -t files < <(sed -n "s|^ *\"file\": \"$PWD/\([^\"]*\)\".*|\1|p" \
        build/debug/compile_commands.json | grep '\.cpp$' | grep -v '^build/' | sort -u)
fi
printf '%s\0' "${files[@]}" | xargs -0 -n 4 -P "$(nproc)" \
    clang-tidy-14 -p build/debug --quiet --warnings-as-errors='*' 2>build/tidy.log || {
    grep -E 'error:' build/tidy.log >&2 || true
    echo "tidy: clang-tidy objects to the lines above" >&2
    exit 1
}
