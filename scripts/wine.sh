#!/usr/bin/env bash
# Runs a Windows program quietly under Wine, with a prefix of its own inside the build folder.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$root/build/wine}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}
mkdir -p "$WINEPREFIX"
exec wine "$@"
