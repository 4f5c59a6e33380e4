#!/usr/bin/env bash
# Opens a session in Ardour's window on the current display, where the plug-in's editor opens with
# it, and writes a picture of the editor to FOLDER/before.png. With "edit" it clicks on QB11, turns
# up the left drive, and writes another one to FOLDER/after.png. Saves and quits.
# Usage: drive_window.sh FOLDER LOG look|edit
set -euo pipefail
folder=$1 log=$2 what=$3
document=$folder/$(basename "$folder").ardour

# The editor is the lower part of the plug-in's window: 505 high, below the host's row of buttons.
editor_height=505 host_row=34

give_up() {
    echo "drive_window: $*" >&2
    import -window root "$folder/given-up.png"
    kill "$host" 2>/dev/null || true
    exit 1
}

# wait_for SECONDS WORDS COMMAND...
wait_for() {
    local ticks=$((10 * $1)) words=$2
    shift 2
    until "$@"; do
        ticks=$((ticks - 1))
        [ $ticks -gt 0 ] || give_up "timeout while waiting for $words"
        sleep 0.1
    done
}

# window_is WIDTH: whether the plug-in's window has this width; sets geometry (WxH+X+Y), left, top.
window_is() {
    geometry=$(xwininfo -root -tree 2>/dev/null | grep 'ZKR T46 (by ZKR-soundworks)' |
        sed -n 's/.*) *\([0-9]*x[0-9]*\)+[0-9-]*+[0-9-]* *+\([0-9]*\)+\([0-9]*\)$/\1+\2+\3/p')
    IFS=+ read -r _ left top <<<"$geometry"
    [[ $geometry == "$1"x* ]]
}

# picture WIDTH FILE
picture() {
    xdotool mousemove 1020 760  # away from the controls, which have hover pictures
    sleep 1.5
    import -window root -crop "$1x$editor_height+$left+$((top + host_row))" +repage "$2"
}

# at X Y: a point of the editor in coordinates of the display.
at() { echo $((left + $1)) $((top + host_row + $2)); }

saved() { [ "$document" -nt "$folder/asked" ]; }
ended() { ! kill -0 "$host" 2>/dev/null; }

/usr/lib/ardour7/ardour-7.* --no-announcements --no-splash "$document" >"$log" 2>&1 &
host=$!
wait_for 40 "the editor" window_is "$(cat "$folder/width")"
echo "report window $geometry"
picture "${geometry%%x*}" "$folder/before.png"

if [ "$what" = edit ]; then
    # shellcheck disable=SC2046
    xdotool mousemove $(at 582 96) sleep 0.3 click 1  # QB11
    wait_for 10 "the editor to widen" window_is $((${geometry%%x*} + 250))
    echo "report window $geometry"
    # shellcheck disable=SC2046
    xdotool mousemove $(at 105 91) sleep 0.3 mousedown 1  # the left drive
    for _ in 1 2 3 4 5 6 7 8; do
        xdotool mousemove_relative -- 0 -5 sleep 0.05
    done
    xdotool mouseup 1
    picture "${geometry%%x*}" "$folder/after.png"
fi

main=$(xdotool search --name "$(basename "$folder") - Ardour" | tail -n 1)
touch "$folder/asked"
sleep 1
xdotool key --window "$main" ctrl+s
[ "$what" = look ] || wait_for 15 "the session to be saved" saved
xdotool key --window "$main" ctrl+q
wait_for 30 "the host to quit" ended
wait "$host" || give_up "the host ended with exit code $?"
