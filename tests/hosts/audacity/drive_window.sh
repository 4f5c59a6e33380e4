#!/usr/bin/env bash
# Starts Audacity on the current display, imports FOLDER/input.wav, opens the plug-in's window with
# all of it selected, and writes a picture of the editor to FOLDER/NAME-opened.png. With "edit" it
# clicks on QB11, turns up the left drive, and writes FOLDER/NAME-edited.png. Then it applies the
# effect and exports FOLDER/NAME.wav.
# Usage: drive_window.sh FOLDER NAME WIDTH look|edit COMMAND       COMMAND opens the plug-in's window
set -euo pipefail
folder=$1 name=$2 width=$3 what=$4 command=$5
title='"ZKR T46": ' host_row=44
root=$(dirname "$0")
. "$root/../window.sh"

tell() { timeout --kill-after=5 60 "$root/tell.py" "$@"; }
listens() { [ -p "/tmp/audacity_script_pipe.to.$(id -u)" ]; }
scanned() { grep -qs 'Symbol=ZKR T46' "$registry"; }
shows() { xwininfo -root -tree | grep -q '": ("audacity" "Audacity") *1[0-9][0-9][0-9]x'; }

# started LOG: starts the host, which answers commands some time after its window is there.
started() {
    rm -f /tmp/audacity_script_pipe.*."$(id -u)"
    audacity >"$1" 2>&1 &
    host=$!
    wait_for 60 "the host's scripting module" listens
    wait_for 60 "the host's window" shows
    sleep 4
}
stopped() {
    kill "$host" 2>/dev/null || true
    wait_for 10 "the host to quit" ended
    wait "$host" 2>/dev/null || true
}

# In a process that has just scanned, the host answers no commands.
registry=$XDG_CONFIG_HOME/audacity/pluginregistry.cfg
if ! scanned; then
    started "$folder/scan.log"
    wait_for 60 "the host's scan" scanned
    stopped
fi
started "$folder/$name.log"
tell "Import2: Filename=$folder/input.wav" "SelectAll:" || give_up "the input was not imported"
tell "$command:" &
window=$!
wait_for 30 "the editor" window_is "$width"
echo "report window $geometry"
picture "$folder/$name-opened.png"
if [ "$what" = edit ]; then
    edit "$width"
    picture "$folder/$name-edited.png"
fi
xdotool mousemove $((left + ${geometry%%x*} - 50)) $((top + 21)) sleep 0.3 click 1  # Apply
wait "$window" || give_up "the effect was not applied"
tell "Export2: Filename=$folder/$name.wav NumChannels=2" || give_up "the export failed"
stopped
