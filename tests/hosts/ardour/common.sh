# Functions of both Ardour tests: installs and scans the plug-in, sets the host's environment, runs
# its session scripts and reads their reports. Sourced by tests/hosts/ardour*.sh.

ardour=/usr/lib/ardour7
sessions=$work/sessions results=$work/results
grep -v -e '^#' -e '^$' "$root/ardour/known_messages.txt" >"$work/ardour_messages"

# with_ardour COMMAND...: with the environment that Ardour's own start script sets.
with_ardour() {
    LD_LIBRARY_PATH=$ardour GTK_PATH=/etc/ardour7:$ardour VAMP_PATH=$ardour/vamp \
        ARDOUR_DATA_PATH=/usr/share/ardour7 ARDOUR_CONFIG_PATH=/etc/ardour7 \
        ARDOUR_DLL_PATH=$ardour LXVST_PATH=$work/vst2 VST3_PATH=$work/vst3 \
        timeout --kill-after=5 90 "$@" </dev/null
}

# explained LOG: fails on lines of the host that known_messages.txt does not list.
explained() {
    local line
    line=$(tr '\r' '\n' <"$1" | grep -av -e '^report' -e '^ *$' |
        grep -avE -f "$work/ardour_messages" | grep -avE "${also_explained:-^$}" || true)
    [ -z "$line" ] || fail "$(basename "$1" .log): the host prints: $line"
}

# script NAME SCRIPT ARGUMENTS...: runs a session script with its output in a log.
script() {
    local log=$logs/$1.log script=$2
    shift 2
    if ! with_ardour "$ardour/luasession" "$root/ardour/$script.lua" "$@" >"$log" 2>&1; then
        fail "$(basename "$log" .log): $(tail -n 3 "$log")"
        return 1
    fi
    explained "$log"
}

# reported NAME WORDS: the text after these words in the reports of a session script.
reported() { sed -n "s/^report\s\+${2// /\\s\\+}\s\+//p" "$logs/$1.log" | tr '\t' ' '; }

# reports NAME WORDS EXPECTED MEANING
reports() {
    local text
    text=$(reported "$1" "$2")
    if [ "$text" = "$3" ]; then
        seen "$4" "$text"
    else
        fail "$1: $4: '$text' instead of '$3'" \
            "$(grep -a '^report\s*wrong' "$logs/$1.log" | head -n 4)"
    fi
}

# make NAME RATE FORMAT CHANNELS AUDIO TRACK=SETTINGS...: saves a session with the audio on its
# tracks, after a silence in which the gain ramps of the start end.
make() {
    local name=$1 audio=$5
    local -a tracks=("${@:6}")
    script "$name-make" make_session "$sessions/$name" "$2" "$(silence "$2")" "$3" "$4" \
        "${tracks[@]}" || return 1
    "$root/ardour/place_audio.py" "$sessions/$name" "$audio" "$(silence "$2")" "${tracks[@]%%=*}" ||
        fail "$name: the audio could not be placed"
}

# check NAME SESSION STATE TRACK=SETTINGS...: loads it in a new process and checks the values.
check() {
    local track
    script "$1" check_session "$sessions/$2" "${@:3}" || return 1
    for track in "${@:4}"; do
        [ "${track#*=}" = - ] ||
            reports "$1" "kept ${track%%=*}" "58 of 58" "values as saved"
    done
}

# scan SCANNER FILE WORDS...: the scanner must print all the words and no warning or error.
scan() {
    local log=$logs/$1.log words
    with_ardour "$ardour/$1" -f -v "$2" >"$log" 2>&1 || fail "$1 failed"
    sed "s|$work/||g; s/^/  /" "$log"
    for words in "${@:3}"; do
        grep -qaF -- "$words" "$log" || fail "$1 does not print $words"
    done
    ! grep -aiE '\[(warning|error|fatal)\]|fail|blacklist' "$log" || fail "$1 prints warnings or errors"
    seen "the scanner's listing"
}

if [ ! -e "$sessions" ]; then
    mkdir -p "$work"/{vst2,vst3} "$sessions" "$results"
    cp "$dist/ZKRT46.so" "$work/vst2/"
    cp -r "$dist/ZKRT46.vst3" "$work/vst3/"
    # The host considers a scan out of date if it is not newer than the library.
    find "$work/vst2" "$work/vst3" -exec touch -d '1 hour ago' {} +

    say Ardour "VST 2" "its scanner"
    scan ardour-vst-scanner "$work/vst2/ZKRT46.so" 'id="1517564982" name="ZKR T46"' \
        'creator="ZKR-soundworks" category="Mastering"' 'n_inputs="2" n_outputs="2"' \
        'has_editor="1"'
    say Ardour "VST 3" "its scanner"
    scan ardour-vst3-scanner "$work/vst3/ZKRT46.vst3" 'name="ZKR T46" vendor="ZKR-soundworks"' \
        'category="Fx|EQ|Mastering" version="1.0.1.0"' 'n_inputs="2" n_outputs="2" n_aux_inputs="0"'
fi
