#!/bin/sh
# Runs a program on an X server of its own: on_display.sh PROGRAM ARGUMENTS...
# Fails if the server or the input tool is missing.
set -u
for tool in Xvfb xdotool; do
    command -v "$tool" >/dev/null || { echo "on_display.sh: $tool is not installed" >&2; exit 1; }
done
folder=$(mktemp -d)
mkfifo "$folder/number"
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset \
    3>"$folder/number" 2>"$folder/log" >/dev/null &
server=$!
trap 'kill $server 2>/dev/null; wait $server 2>/dev/null; rm -r "$folder"' EXIT
read -r number <"$folder/number" || { cat "$folder/log" >&2; exit 1; }
# Without the desktop of whoever runs the tests.
unset DBUS_SESSION_BUS_ADDRESS XDG_RUNTIME_DIR
DISPLAY=:$number "$@"
