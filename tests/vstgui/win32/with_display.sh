#!/usr/bin/env bash
# Runs a Windows program on a display of its own, with a Wine prefix for such programs: Wine's servers
# keep the display that they were started with, so that only one may run at a time.
set -eu
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
WINEPREFIX=$(cd "$here/../../.." && pwd)/build/wine-with-display
export WINEPREFIX WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES=mscoree,mshtml=
mkdir -p "$WINEPREFIX"
end_servers() {
    wineserver --kill 2>/dev/null || true
    wineserver --wait 2>/dev/null || true
}
end_servers  # of a run that was broken off
trap end_servers EXIT
# There is no window manager to wait for.
if ! grep -qs '"Managed"="N"' "$WINEPREFIX/user.reg"; then
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    wineserver --wait
fi
"$here/../x11/on_display.sh" wine "$@"
