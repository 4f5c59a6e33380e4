#!/usr/bin/env bash
# Checks that a Windows library has no aligned moves between wide registers and memory. The stack
# there is aligned to 16 bytes only, so an aligned move of 32 or 64 bytes would crash the host.
# Usage: check_vector_moves.sh LIBRARY
set -euo pipefail
code=$(x86_64-w64-mingw32-objdump -d --no-show-raw-insn "$1")

# A register operand is %ymmN or %zmmN, a memory operand has parentheses.
aligned=$(grep -E '\bv(movap[ds]|movdqa(32|64)?|movntp[ds]|movntdqa?) .*%[yz]mm' <<<"$code" |
    grep -F '(' || true)
if [ -n "$aligned" ]; then
    printf '%s has aligned moves of wide registers:\n%s\n' "$1" "$aligned" >&2
    exit 1
fi
for register in ymm zmm; do
    if ! grep -qE "\bvmovup[ds] .*%$register" <<<"$code"; then
        printf '%s does not use %s: there is nothing to check\n' "$1" "$register" >&2
        exit 1
    fi
done
echo "$1: $(grep -cE '\bvmov(up[ds]|dqu(8|16|32|64)?) .*%[yz]mm' <<<"$code") wide moves, none aligned"
