# Functions for a host's window on the current display: waiting, the place of the plug-in's window,
# pictures of the editor. Sourced by the drivers of the hosts, which set: host (the process), folder
# (for pictures), title (the plug-in's window, a regular expression) and host_row (the height of the
# host's row of buttons above the editor).

editor_height=505

give_up() {
    echo "$(basename "$0"): $*" >&2
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
    geometry=$(xwininfo -root -tree 2>/dev/null | grep -E "$title" |
        sed -n 's/.*) *\([0-9]*x[0-9]*\)+[0-9-]*+[0-9-]* *+\([0-9]*\)+\([0-9]*\)$/\1+\2+\3/p')
    IFS=+ read -r _ left top <<<"$geometry"
    [[ $geometry == "$1"x* ]]
}

# picture FILE: the editor, without the mouse on its controls, which have hover pictures.
picture() {
    xdotool mousemove 1020 760
    sleep 1.5
    import -window root -crop "${geometry%%x*}x$editor_height+$left+$((top + host_row))" +repage "$1"
}

# at X Y: a point of the editor in coordinates of the display.
at() { echo $((left + $1)) $((top + host_row + $2)); }

# edit WIDTH: clicks on QB11, at the right edge of the editor, which widens, and turns up the left
# drive.
edit() {
    # shellcheck disable=SC2046
    xdotool mousemove $(at $(($1 - 62)) 96) sleep 0.3 click 1
    wait_for 10 "the editor to widen" window_is $(($1 + 250))
    echo "report window $geometry"
    # shellcheck disable=SC2046
    xdotool mousemove $(at 105 91) sleep 0.3 mousedown 1  # the left drive
    for _ in 1 2 3 4 5 6 7 8; do
        xdotool mousemove_relative -- 0 -5 sleep 0.05
    done
    xdotool mouseup 1
}

ended() { ! kill -0 "$host" 2>/dev/null; }
