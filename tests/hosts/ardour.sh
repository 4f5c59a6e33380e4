# Ardour without a window: sessions are created and saved, loaded by another process and exported by
# a third, and the results compared with our own renderer. Sourced by scripts/hosts.sh.

. "$root/ardour/common.sh"

# export_to NAME SESSION RATE: runs the host's own exporter. Sometimes it writes an empty file or
# crashes (double free, invalid read), also in sessions without a plug-in; then it is run again.
export_to() {
    local log=$logs/$1-export.log result=$results/$1.wav code try
    for try in 1 2 3 4 5; do
        rm -f "$result"
        code=0
        with_ardour "$ardour/utils/ardour7-export" -b float -s "$3" -o "$result" \
            "$sessions/$2" "$2" >"$log" 2>&1 || code=$?
        case $code in
        0) ;;
        134 | 139) continue ;;
        *) break ;;
        esac
        if [ "$(stat -c %s "$result")" -gt 1000 ]; then
            explained "$log"
            return 0
        fi
    done
    fail "$1: the export failed at attempt $try, exit code $code: $(tail -n 2 "$log")"
    return 1
}

# same WORDS NAME SESSION RATE EXPECTED... [OPTIONS...]: exports and compares.
same() {
    local words=$1 name=$2 rate=$4
    export_to "$name" "$3" "$rate" || return 0
    passes "$words" -- compare_audio --skip "$(silence "$rate")" --result "$results/$name.wav" \
        --expected "${@:5}"
}

music=/usr/share/sonic-pi/samples/guit_em9.flac
sets=(equaliser driven mid-side side-heard)
mixed=$audio/mixed-48000.wav mixed192=$audio/mixed-192000.wav
mono=$audio/mono-48000.wav doubled=$audio/doubled-48000.wav
"$root/make_audio.py" "$mixed" 48000 11 stereo
"$root/make_audio.py" "$mixed192" 192000 1 stereo
"$root/make_audio.py" "$mono" 48000 3 mono
"$root/make_audio.py" "$doubled" 48000 3 doubled
for set in "${sets[@]}"; do
    expect "$set" "$music" "$audio/$set-music.wav"
    expect "$set" "$mixed" "$audio/$set.wav"
done
expect moving "$mixed" "$audio/moving.wav"
expect equaliser "$mixed192" "$audio/equaliser-192.wav"
expect driven "$doubled" "$audio/driven-doubled.wav"
mapfile -t changes < <(awk '/^[^#]/ && $4 { print $4 }' "$settings/moving.txt" | uniq)

# music_in FORMAT WORDS: recorded music in several settings.
music_in() {
    local format=$1 set name
    for set in "${sets[@]}"; do
        say Ardour "$2" "$(basename "$music"), $set"
        name=$format-$set
        make "$name" 44100 "$format" 2 "$music" "music=$settings/$set.txt" &&
            check "$name" "$name" as-saved "music=$settings/$set.txt" || continue
        reports "$name" "latency music" 96 "latency in samples, by the host"
        same "exported" "$name" "$name" 44100 "$audio/$set-music.wav"
    done
}

# uses_in FORMAT WORDS: the host's presets, automation, bypass, 192 kHz and mono tracks.
uses_in() {
    local format=$1 name track set
    say Ardour "$2" "the same again, the host's own presets, automation"
    name=$format-equaliser
    same "exported again" "$name-again" "$name" 44100 "$audio/equaliser-music.wav"
    if script "$name-presets" presets "$sessions/$name" music; then
        reports "$name-presets" changed 58 "values changed after a preset was stored"
        reports "$name-presets" still-changed 0 "values still changed after it was loaded"
    fi
    name=$format-moving
    if make "$name" 48000 "$format" 2 "$mixed" "music=$settings/moving.txt" &&
        check "$name" "$name" as-saved "music=$settings/moving.txt"; then
        same "automated" "$name" "$name" 48000 "$audio/moving.wav" --changes "${changes[@]}"
    fi

    say Ardour "$2" "bypassed by the host, at 192 kHz, on a mono track"
    name=$format-driven-48
    if make "$name" 48000 "$format" 2 "$mixed" "music=$settings/driven.txt"; then
        check "$name" "$name" bypassed "music=$settings/driven.txt" &&
            same "bypassed, against the input" "$name-off" "$name" 48000 "$mixed"
        check "$name" "$name" enabled "music=$settings/driven.txt" &&
            same "enabled again" "$name-on" "$name" 48000 "$audio/driven.wav"
    fi
    name=$format-192
    if make "$name" 192000 "$format" 2 "$mixed192" "music=$settings/equaliser.txt" &&
        check "$name" "$name" as-saved "music=$settings/equaliser.txt"; then
        reports "$name" "latency music" 0 "latency in samples at 192 kHz, by the host"
        same "at 192 kHz" "$name" "$name" 192000 "$audio/equaliser-192.wav"
    fi
    name=$format-mono
    if make "$name" 48000 "$format" 1 "$mono" "music=$settings/driven.txt" &&
        check "$name" "$name" as-saved "music=$settings/driven.txt"; then
        reports "$name" "streams music" "1 to 2 instances 1" "channels on a mono track"
        same "mono, which the host doubles" "$name" "$name" 48000 "$audio/driven-doubled.wav"
    fi
}

# eight_in FORMAT WORDS: eight instances with different settings, summed.
eight_in() {
    local name=$1-eight track
    local -a tracks=() parts=()
    say Ardour "$2" "eight instances in one session"
    for track in 1 2 3 4 5 6 7 8; do
        tracks+=("t$track=$settings/${sets[track % 4]}.txt")
        parts+=("$audio/${sets[track % 4]}.wav")
    done
    # The sum reaches about 7, where a float's step is 5e-7.
    make "$name" 48000 "$1" 2 "$mixed" "${tracks[@]}" &&
        check "$name" "$name" as-saved "${tracks[@]}" &&
        same "sum of eight instances" "$name" "$name" 48000 "${parts[@]}" --tolerance 2e-6
}

# listed_presets: the factory presets in files for VST 3, where a user keeps them.
listed_presets() {
    local folder="$HOME/.vst3/presets/ZKR-soundworks/ZKR T46" values=$work/preset-values number name
    say Ardour "VST 3" "the factory presets in files"
    mkdir -p "$folder"
    for number in {0..23}; do
        name=$(printf 'No. %02d' "$number")
        "$dist/zkrt46" preset export "$number" -o "$folder/$name.vstpreset"
        "$dist/zkrt46" preset show "$number" --all |
            awk -v name="$name" -v OFS='\t' 'NR > 2 { print name, $1, $NF }'
    done >"$values"
    script VST3-listed listed_presets "$sessions/VST3-equaliser" music "$values" || return 0
    reports VST3-listed listed 24 "presets listed and loaded"
    reports VST3-listed right 24 "presets with all values right"
}

# spoilt_in FORMAT WORDS: the plug-in's state in the session is damaged; the host then uses the
# single values that it stores beside it.
spoilt_in() {
    local whole=$1-driven-48 how name
    local also_explained='^\[ERROR\]: VST3<ZKR T46>: failed to load chunk-data$'
    say Ardour "$2" "sessions with a damaged state of the plug-in"
    for how in half empty noise torn; do
        name=$1-$how
        cp -r "$sessions/$whole" "$sessions/$name"
        mv "$sessions/$name/$whole.ardour" "$sessions/$name/$name.ardour"
        mv "$sessions/$name/interchange/$whole" "$sessions/$name/interchange/$name"
        "$root/ardour/edit_session.py" "$sessions/$name" $how || fail "$name: the state was not damaged"
        check "$name" "$name" as-saved "music=$settings/driven.txt" &&
            same "damaged state: $how" "$name" "$name" 48000 "$audio/driven.wav"
    done
}

for part in music_in uses_in eight_in spoilt_in; do
    $part LXVST "VST 2"
    $part VST3 "VST 3"
done
listed_presets
