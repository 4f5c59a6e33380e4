#!/usr/bin/env bash
# Opens a session in Ardour's window on the current display, where the plug-in's editor opens with
# it, and writes a picture of the editor to FOLDER/before.png. With "edit" it clicks on QB11, turns
# up the left drive, and writes another one to FOLDER/after.png. Saves and quits.
# Usage: drive_window.sh FOLDER LOG look|edit
set -euo pipefail
folder=$1 log=$2 what=$3
document=$folder/$(basename "$folder").ardour

title='ZKR T46 \(by ZKR-soundworks\)' host_row=34
. "$(dirname "$0")/../window.sh"

saved() { [ "$document" -nt "$folder/asked" ]; }

/usr/lib/ardour7/ardour-7.* --no-announcements --no-splash "$document" >"$log" 2>&1 &
host=$!
wait_for 40 "the editor" window_is "$(cat "$folder/width")"
echo "report window $geometry"
picture "$folder/before.png"

if [ "$what" = edit ]; then
    edit "${geometry%%x*}"
    picture "$folder/after.png"
fi

main=$(xdotool search --name "$(basename "$folder") - Ardour" | tail -n 1)
touch "$folder/asked"
sleep 1
xdotool key --window "$main" ctrl+s
[ "$what" = look ] || wait_for 15 "the session to be saved" saved
xdotool key --window "$main" ctrl+q
wait_for 30 "the host to quit" ended
wait "$host" || give_up "the host ended with exit code $?"
