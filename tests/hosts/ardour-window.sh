# Ardour with its window, on a display of its own: the editor opens with the session, gets mouse
# input, and the session keeps the edits. Sourced by scripts/hosts.sh.

. "$root/ardour/common.sh"

mkdir -p "$XDG_CONFIG_HOME/ardour7"
cp "$root/ardour/dummy_engine.config" "$XDG_CONFIG_HOME/ardour7/config"
touch "$XDG_CONFIG_HOME/ardour7/.a7"  # not the first start
"$root/make_audio.py" "$audio/window.wav" 48000 2 stereo

# shown NAME WIDTH look|edit: opens the session's window through drive_window.sh.
shown() {
    echo "$2" >"$sessions/$1/width"
    if ! with_ardour "$root/../vstgui/x11/on_display.sh" "$root/ardour/drive_window.sh" \
        "$sessions/$1" "$logs/$1-$3.log" "$3" >"$logs/$1-$3-drive.log" 2>&1; then
        fail "$1: $(tail -n 2 "$logs/$1-$3-drive.log")"
        return 1
    fi
    explained "$logs/$1-$3.log"
    echo "  window: $(reported "$1-$3-drive" window | tr '\n' ' ')"
}

# kept_value NAME TITLE: a parameter's value in the saved session.
kept_value() {
    sed -n "s/.*<Controllable name=\"$2\".* value=\"\([^\"]*\)\".*/\1/p" \
        "$sessions/$1/$1.ardour"
}

# in_window FORMAT WORDS
in_window() {
    local name=$1-window drive
    local -a options=()
    say "Ardour, its window" "$2" "the editor"
    make "$name" 48000 "$1" 2 "$audio/window.wav" "music=$settings/equaliser.txt" || return 0
    "$root/ardour/edit_session.py" "$sessions/$name" window
    shown "$name" 644 edit || return 0

    mapfile -t options < <(shown_values equaliser)
    drawn "$results/$name-before.png" "${options[@]}"
    alike "of the editor when it opens" "$sessions/$name/before.png" "$results/$name-before.png"
    drive=$(kept_value "$name" DriveL)
    options+=(--set QB11=On --set "DriveL=${drive}n")
    drawn "$results/$name-after.png" "${options[@]}"
    alike "after a click and a drag" "$sessions/$name/after.png" "$results/$name-after.png"
    if [ "$(kept_value "$name" QB11)" = 1 ] && [ "$(kept_value "$name" DriveR)" = 0.5 ] &&
        awk "BEGIN { exit !($drive > 0.55) }"; then
        seen "the session keeps the edits" "QB11 on, left drive at $drive"
    else
        fail "$name: the session has QB11 $(kept_value "$name" QB11), DriveL $drive," \
            "DriveR $(kept_value "$name" DriveR)"
    fi

    shown "$name" 894 look || return 0
    alike "in another process" "$sessions/$name/before.png" "$results/$name-after.png"
}

in_window LXVST "VST 2"
in_window VST3 "VST 3"
