# What both parts about Ardour need: the plug-in where the host looks for it and scanned, the host's
# surroundings, its session scripts and what they report. Read by tests/hosts/ardour*.sh.

ardour=/usr/lib/ardour7
sessions=$work/sessions results=$work/results
grep -v -e '^#' -e '^$' "$root/ardour/known_messages.txt" >"$work/ardour_messages"

# with_ardour COMMAND...: with the surroundings that Ardour's own start script gives.
with_ardour() {
    LD_LIBRARY_PATH=$ardour GTK_PATH=/etc/ardour7:$ardour VAMP_PATH=$ardour/vamp \
        ARDOUR_DATA_PATH=/usr/share/ardour7 ARDOUR_CONFIG_PATH=/etc/ardour7 \
        ARDOUR_DLL_PATH=$ardour LXVST_PATH=$work/vst2 VST3_PATH=$work/vst3 \
        timeout --kill-after=5 90 "$@" </dev/null
}

# explained LOG: a line of the host's that has no explanation is a fault.
explained() {
    local line
    line=$(tr '\r' '\n' <"$1" | grep -av -e '^report' -e '^ *$' |
        grep -avE -f "$work/ardour_messages" | grep -avE "${also_explained:-^$}" || true)
    [ -z "$line" ] || fail "$(basename "$1" .log): the host says: $line"
}

# script NAME SCRIPT ARGUMENTS...: runs a session script; what it and the host print goes to a log.
script() {
    local log=$logs/$1.log script=$2
    shift 2
    if ! with_ardour "$ardour/luasession" "$root/ardour/$script.lua" "$@" >"$log" 2>&1; then
        fail "$(basename "$log" .log): $(tail -n 3 "$log")"
        return 1
    fi
    explained "$log"
}

# reported NAME WORDS: what follows these words in the reports of a session script.
reported() { sed -n "s/^report\s\+${2// /\\s\\+}\s\+//p" "$logs/$1.log" | tr '\t' ' '; }

# reports NAME WORDS EXPECTED MEANING
reports() {
    local seen
    seen=$(reported "$1" "$2")
    if [ "$seen" = "$3" ]; then
        echo "  $4: $seen"
    else
        fail "$1: $4: '$seen' instead of '$3'" \
            "$(grep -a '^report\s*wrong' "$logs/$1.log" | head -n 4)"
    fi
}

# make NAME RATE FORMAT CHANNELS AUDIO TRACK=SETTINGS...: a saved session with the audio on its
# tracks, behind a silence in which a start's gain ramps die away.
make() {
    local name=$1 audio=$5
    local -a tracks=("${@:6}")
    script "$name-make" make_session "$sessions/$name" "$2" "$(silence "$2")" "$3" "$4" \
        "${tracks[@]}" || return 1
    "$root/ardour/place_audio.py" "$sessions/$name" "$audio" "$(silence "$2")" "${tracks[@]%%=*}" ||
        fail "$name: the audio could not be placed"
}

# check NAME SESSION STATE TRACK=SETTINGS...: loads it in a new process and looks at the values.
check() {
    local track
    script "$1" check_session "$sessions/$2" "${@:3}" || return 1
    for track in "${@:4}"; do
        [ "${track#*=}" = - ] ||
            reports "$1" "kept ${track%%=*}" "58 of 58" "${track%%=*}, values as saved"
    done
}

# scan SCANNER FILE WORDS...: the scanner must say all the words and complain of nothing.
scan() {
    local log=$logs/$1.log words
    with_ardour "$ardour/$1" -f -v "$2" >"$log" 2>&1 || fail "$1 failed"
    sed "s|$work/||g; s/^/  /" "$log"
    for words in "${@:3}"; do
        grep -qaF -- "$words" "$log" || fail "$1 does not say $words"
    done
    ! grep -aiE '\[(warning|error|fatal)\]|fail|blacklist' "$log" || fail "$1 complains"
}

if [ ! -e "$sessions" ]; then
    mkdir -p "$work"/{vst2,vst3} "$sessions" "$results"
    cp "$dist/ZKRT46.so" "$work/vst2/"
    cp -r "$dist/ZKRT46.vst3" "$work/vst3/"
    # The host takes a scan for stale that is not newer than its library.
    find "$work/vst2" "$work/vst3" -exec touch -d '1 hour ago' {} +

    say "Ardour $(dpkg-query -W -f='${Version}' ardour): its scanners"
    scan ardour-vst-scanner "$work/vst2/ZKRT46.so" 'id="1517564982" name="ZKR T46"' \
        'creator="ZKR-soundworks" category="Mastering"' 'n_inputs="2" n_outputs="2"' \
        'has_editor="1"'
    scan ardour-vst3-scanner "$work/vst3/ZKRT46.vst3" 'name="ZKR T46" vendor="ZKR-soundworks"' \
        'category="Fx|EQ|Mastering" version="1.0.1.0"' 'n_inputs="2" n_outputs="2" n_aux_inputs="0"'
fi
