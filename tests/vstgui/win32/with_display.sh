#!/usr/bin/env bash
# Runs a Windows program on a display of its own and in a Wine prefix for such programs: Wine's
# servers keep the display that they were started with, so only one such program may run at a time.
set -eu
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
WINEPREFIX=$(cd "$here/../../.." && pwd)/build/wine-with-display
export WINEPREFIX WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=mscoree,mshtml=
mkdir -p "$WINEPREFIX"
end_servers() {
    wineserver --kill 2>/dev/null || true
    wineserver --wait 2>/dev/null || true
}
end_servers  # of an interrupted run
trap end_servers EXIT
# There is no window manager, so Wine must not wait for one. At 192 dots an inch, whatever is scaled
# with them differs from the pictures.
if ! grep -qs '"LogPixels"=dword:000000c0' "$WINEPREFIX/user.reg"; then
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d 192 /f >/dev/null 2>&1
    wineserver --wait
fi
"$here/../x11/on_display.sh" wine "$@"
