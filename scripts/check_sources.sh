#!/usr/bin/env bash
# Checks what the compiler does not: formatting, Python, and which folder includes which.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
failed=0

complain() {
    echo "check_sources: $1" >&2
    sed 's/^/    /' >&2 <<<"$2"
    failed=1
}

mapfile -t sources < <(find bench dsp editor params platform presets sdk shell tests tools vstgui \
    -name '*.h' -o -name '*.cpp' 2>/dev/null | sort)

if unformatted=$(clang-format-14 --dry-run --Werror "${sources[@]}" 2>&1 | grep 'error:'); then
    complain "these lines need clang-format" "$unformatted"
fi
if seen=$(! flake8); then
    complain "flake8 objects to these lines of Python" "$seen"
fi
if seen=$(! scripts/check_includes.py); then
    complain "these includes run against the order of the folders" "$seen"
fi
if seen=$(grep -nE '#include <(windows|unistd)\.h' -r dsp params presets editor \
    --include='*.h' --include='*.cpp' --exclude-dir=win32); then
    complain "only a system's own folders include its headers" "$seen"
fi
# CMake chooses the files for each system; only shell/Export.h needs a condition.
if seen=$(grep -nE '^ *# *if.*(_WIN32|__linux__|__ELF__|SMTG_OS_)' -r dsp params shell \
    --include='*.h' --include='*.cpp' | grep -v '^shell/Export\.h:'); then
    complain "CMake picks the system's file; no #ifdef in code" "$seen"
fi
exit $failed
