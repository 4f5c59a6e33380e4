#!/usr/bin/env bash
# Runs the built plug-in unattended in third-party hosts and checks the results.
# Usage: hosts.sh [--record] [audacity|ardour|ardour-window|qtractor]...          (default: all)
#
# With --record, the results also replace those hosts' rows in docs/compatibility.md.
#
# Builds dist/linux first, or uses another folder with the same layout, named in ZKR_DIST. The hosts
# get their own home folder under build/hosts; sessions, results and logs stay there until the next
# run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

record=""
if [ "${1:-}" = --record ]; then
    record=1
    shift
fi
sections=("$@")
[ ${#sections[@]} -gt 0 ] || sections=(qtractor audacity ardour ardour-window)
for section in "${sections[@]}"; do
    case $section in
    audacity | ardour | ardour-window | qtractor) ;;
    *)
        echo "usage: hosts.sh [--record] [audacity|ardour|ardour-window|qtractor]..." >&2
        exit 2
        ;;
    esac
done
scripts/setup.sh hosts
[ -n "${ZKR_DIST:-}" ] || scripts/build.sh

root=$PWD/tests/hosts
settings=$root/settings
work=$PWD/build/hosts logs=$PWD/build/hosts/logs audio=$PWD/build/hosts/audio
rm -rf "$work"
mkdir -p "$work/home" "$logs" "$audio"
cp -r "${ZKR_DIST:-dist/linux}" "$work/dist"
dist=$work/dist
export HOME=$work/home XDG_CONFIG_HOME=$work/home/config XDG_CACHE_HOME=$work/home/cache \
    XDG_DATA_HOME=$work/home/data
export PYTHONDONTWRITEBYTECODE=1  # no cache files among the sources
unset VST_PATH LXVST_PATH VST3_PATH LV2_PATH DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS

# What each host was seen to do: host, version, format, "seen" or "fault", words, figures; separated
# by tabs.
results_file=$work/results.tsv
: >"$results_file"

# noted RESULT WORDS [FIGURES]
noted() {
    local fields=("$host_name" "$host_version" "$host_format" "$1" "$2" "${3:-}")
    (IFS=$'\t' && echo "${fields[*]//[$'\n\t']/ }") >>"$results_file"
}

# say HOST FORMAT TOPIC: begins a part. The host's first word is its package's name.
say() {
    host_name=$1 host_format=$2
    host_version=$(dpkg-query -W -f='${Version}' "$(tr '[:upper:]' '[:lower:]' <<<"${1%%[, ]*}")" |
        sed 's/^[0-9]*://; s/[-+].*//')
    printf '\n== %s %s%s, %s: %s\n' "${1%%,*}" "$host_version" "${1#"${1%%,*}"}" "$2" "$3"
}

# seen WORDS [FIGURES]: a check that passed.
seen() {
    echo "  $1${2:+: $2}"
    noted seen "$@"
}

faults=0
fail() {
    echo "  FAULT: $*"
    noted fault "$*"
    faults=$((faults + 1))
}

# passes WORDS -- COMMAND...: runs a check and prints its output.
passes() {
    local words=$1 figures
    if figures=$("${@:3}" 2>&1); then
        seen "$words" "$figures"
    else
        fail "$words: $(tail -n 3 <<<"$figures")"
    fi
}

compare_audio() { "$root/compare_audio.py" "$@"; }

# silence RATE: samples of silence (some seconds), in which the gain ramps of the start end.
silence() { echo $(($1 > 96000 ? 1024000 : 256000)); }

# shown_values SET: a file's settings without its automation, as options of our tool, one a line.
shown_values() { awk '/^[^#]/ && !$4 { print "--set"; print $1 "=" $2 }' "$settings/$1.txt"; }

# expect SET INPUT OUTPUT: renders with our own tool and the values of a settings file, as the
# plug-in shows them. Lines with a sample number become automation.
expect() {
    local input=$2 output=$3 rate
    local -a options
    rate=$("$root/audio.py" "$input")
    mapfile -t options < <(shown_values "$1")
    awk -v rate="$rate" '/^[^#]/ && $4 { printf "%.9f %s %s\n", $4 / rate, $1, $2 }' \
        "$settings/$1.txt" >"$output.automation"
    [ ! -s "$output.automation" ] || options+=(--automate "$output.automation")
    "$dist/zkrt46" render --plugin "$dist/ZKRT46.so" --bits 32f "${options[@]}" \
        --pre-roll "$(awk "BEGIN { print $(silence "$rate") / $rate }")" "$input" "$output"
}

# drawn FILE OPTIONS...: a picture of the editor by our own tool.
drawn() { "$dist/zkrt46" screenshot --output "$1" "${@:2}" >/dev/null; }

# alike WORDS FILE EXPECTED: two pictures must be equal. The words tell what the picture is of, or
# when it was taken.
alike() {
    local differing
    differing=$(compare -metric AE "$2" "$3" "${2%.png}-difference.png" 2>&1) || true
    if [ "$differing" = 0 ]; then
        seen "picture $1" "equals our own tool's picture"
    else
        fail "$1: $differing pixels differ between $2 and $3"
    fi
}

for section in "${sections[@]}"; do
    . "$root/$section.sh"
done

[ -z "$record" ] || "$root/record.py" "$results_file" docs/compatibility.md
echo
if [ $faults -gt 0 ]; then
    echo "$faults faults; the hosts' logs are in build/hosts/logs." >&2
    exit 1
fi
echo "No faults."
