#!/usr/bin/env bash
# Runs many instances of the built plug-in together as in a host, with editors opening and closing,
# and checks their output, state, memory and timing.
# Usage: soak.sh [--minutes M] [--instances N] [--windows] [OPTIONS OF zkrt46-soak]
#
# Ctrl+C ends it early, with its report. The exit code is 1 if there are findings. With --windows
# the Windows library is tested under Wine. Without a display one is started. The plug-in's settings
# go to build/soak.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    sed -n 's/^# \(Usage: .*\)/\1/p' "${BASH_SOURCE[0]}" >&2
    exit 2
}

windows=""
options=(--editor)
while [ $# -gt 0 ]; do
    case $1 in
    --windows)
        windows=yes
        shift
        ;;
    --minutes | --instances | --seed | --blocks | --threads | --growth | --hang)
        [ $# -ge 2 ] || usage
        options+=("$1" "$2")
        shift 2
        ;;
    *) usage ;;
    esac
done

scripts/setup.sh soak
scripts/build.sh

preset=release
[ -z "$windows" ] || preset=win64
echo "Building the soak"
if ! cmake --build --preset "$preset" --target zkrt46-soak >"build/$preset-soak.log" 2>&1; then
    cat "build/$preset-soak.log" >&2
    exit 1
fi

own=$PWD/build/soak
mkdir -p "$own/settings" "$own/wine"
export XDG_DATA_HOME=$own/settings
export WINEPREFIX=$own/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=

children=()
end_all() {
    [ -z "$windows" ] || wineserver --kill 2>/dev/null || true
    for child in "${children[@]}"; do kill "$child" 2>/dev/null || true; done
}
trap end_all EXIT

if [ -z "${DISPLAY:-}" ]; then
    rm -f "$own"/display-*
    mkfifo "$own/display-$$"
    # Its own process group: Ctrl+C is for the soak, which closes its editors first.
    setsid Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset \
        3>"$own/display-$$" 2>"$own/xvfb.log" >/dev/null &
    children+=($!)
    read -r number <"$own/display-$$" || { cat "$own/xvfb.log" >&2; exit 1; }
    rm "$own/display-$$"
    export DISPLAY=:$number
fi

# The program handles Ctrl+C; this script waits for its report.
trap : INT
result=0
if [ -z "$windows" ]; then
    build/release/tests/soak/zkrt46-soak dist/linux/ZKRT46.so "${options[@]}" || result=$?
else
    # Wine's servers keep the display that they were started with. There is no window manager, so
    # Wine must not wait for one.
    wineserver --kill 2>/dev/null || true
    if ! grep -qs '"Managed"="N"' "$WINEPREFIX/user.reg"; then
        wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
        wineserver --wait
    fi
    scripts/wine.sh build/win64/tests/soak/zkrt46-soak.exe dist/windows/ZKRT46.dll \
        "${options[@]}" || result=$?
fi
exit "$result"
