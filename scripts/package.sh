#!/usr/bin/env bash
# Packages the product into dist/packages: an installer and an archive for Windows, an archive and a
# Debian package for Linux.
# Usage: package.sh [FOLDER]
#
# Without a folder it builds everything first. With one, it packages the folder's contents, which
# have the layout of dist/, into FOLDER/packages.
set -euo pipefail
[ $# -le 1 ] || { echo "usage: package.sh [FOLDER]" >&2; exit 2; }
[ $# -eq 0 ] || products=$(realpath -e "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh package

if [ $# -eq 0 ]; then
    scripts/build.sh
    scripts/manual.sh
    products=$PWD/dist
fi

# Reproducible packages: every date in them is this one.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date +%s)}
export SOURCE_DATE_EPOCH

work=build/packages-$(sha256sum <<<"$products" | head -c 8)
log=$work.log
echo "Packaging $products"
rm -rf "$work"
mkdir -p build
if ! { cmake -S packaging -B "$work" -DZKR_PRODUCTS="$products" &&
    cpack --config "$work/CPackConfig.cmake" -B "$work/made"; } >"$log" 2>&1; then
    tail -n 40 "$log" >&2
    tail -n 20 "$work"/made/_CPack_Packages/*/NSIS/NSISOutput.log >&2 2>/dev/null || true
    echo "package: see $log" >&2
    exit 1
fi
if grep -iE 'warning' "$log" >&2; then
    echo "package: warnings in $log" >&2
    exit 1
fi

packages=$products/packages
rm -rf "$packages"
mkdir -p "$packages"
mv "$work"/made/*.* "$packages/"
rm -rf "$work/made"
(cd "$packages" && sha256sum -- * >SHA256SUMS)
ls -l "$packages" | awk 'NR > 1 {printf "  %9d  %s\n", $5, $9}'
