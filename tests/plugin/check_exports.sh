#!/usr/bin/env bash
# Checks that a built library exports exactly these names, depends only on system libraries and
# needs no C library newer than 2.35. Usage: check_exports.sh LIBRARY NAME...
set -euo pipefail
library=$1
wanted=$(printf '%s\n' "${@:2}" | LC_ALL=C sort)

case $library in
*.dll | *.vst3)
    table=$(x86_64-w64-mingw32-objdump -p "$library")
    exports=$(sed -n '/Ordinal\/Name Pointer/,/^$/s/^\t\[ *[0-9]*\] *//p' <<<"$table" | LC_ALL=C sort)
    needed=$(sed -n 's/^\tDLL Name: //p' <<<"$table")
    allowed='^(KERNEL32|msvcrt|ole32|OLEAUT32|USER32|ADVAPI32|SHELL32|GDI32|gdiplus|COMCTL32|COMDLG32|SHLWAPI)\.dll$'
    ;;
*)
    exports=$(nm -D --defined-only "$library" | awk '{print $3}' | LC_ALL=C sort)
    needed=$(objdump -p "$library" | awk '$1 == "NEEDED" {print $2}')
    allowed='^(libc|libm|libX11|libcairo|libfontconfig|ld-linux-x86-64)\.so\.[0-9]+$'
    newer=$(objdump -T "$library" | awk 'match($0, /GLIBC_2\.[0-9]+/) {
        if (substr($0, RSTART + 8, RLENGTH - 8) + 0 > 35) print $NF }')
    ;;
esac

if [ "$exports" != "$wanted" ]; then
    printf '%s exports\n%s\ninstead of\n%s\n' "$library" "$exports" "$wanted" >&2
    exit 1
fi
if foreign=$(grep -viE "$allowed" <<<"$needed"); then
    printf '%s needs %s, which is not part of the system\n' "$library" "$foreign" >&2
    exit 1
fi
if [ -n "${newer:-}" ]; then
    printf '%s needs symbols of a newer C library: %s\n' "$library" "$newer" >&2
    exit 1
fi
echo "$library: $(($# - 1)) exports; needs $(tr '\n' ' ' <<<"$needed")"
