#!/usr/bin/env bash
# Installs missing packages, builds, and demonstrates the equaliser: renders recorded music with the
# Linux library and, under Wine, with the Windows one, in three settings; each input lies beside its
# result, and beside the result at the input's loudness. Then measures and draws the responses and
# harmonics of these settings.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh demo
scripts/build.sh

export WINEPREFIX=$PWD/build/wine
tool=dist/linux/zkrt46
linux=dist/linux/ZKRT46.so
windows=dist/windows/ZKRT46.dll
samples=/usr/share/sonic-pi/samples
out=build/demo
rm -rf "$out"
mkdir -p "$out"

# The settings, as NAME: TITLE=VALUE ... (values as the plug-in shows them).
warm="Warm and open: LShelf=On LFreq=82 LGain=2 HShelf=On HFreq=12000 HGain=2.5"
clear="Clear the mud: LFreq=300 LGain=-3 MFreq=3000 MGain=2 HFreq=17500 HGain=3"
driven="Driven: QB11=On Drive=10 Hpf=30 28k=On Output=-4 LFreq=63 LGain=2"

say() { printf '\n\033[1m%s\033[0m\n' "$1"; }

say "The measured delay, compared with the reported latency"
"$tool" latency --plugin "$linux"

# render NAME FILE CURVE: renders with both libraries and compares the results.
render() {
    local name=$1 input=$2 curve=$3 word
    local -a settings=()
    for word in ${curve#*: }; do settings+=(--set "$word"); done
    say "${curve%%:*}: $(basename "$input")"
    "$tool" render --verbose --plugin "$linux" "${settings[@]}" "$input" "$out/$name.wav"
    "$tool" render --verbose --plugin "$windows" "${settings[@]}" "$input" "$out/$name-windows.wav"
    if cmp -s "$out/$name.wav" "$out/$name-windows.wav"; then
        echo "  The files of both libraries are identical."
    else
        echo "  The two files differ."
    fi
    # For listening: the input, and the result as loud as the input.
    cp "$input" "$out/$name-input.flac"
    "$tool" render --plugin "$linux" "${settings[@]}" --match --bits 32f \
        "$input" "$out/$name-matched.wav"
}
render warm "$samples/guit_em9.flac" "$warm"
render clear "$samples/loop_garzul.flac" "$clear"
render driven "$samples/loop_amen_full.flac" "$driven"

say "Drawing the responses and the harmonics"
"$tool" response --plugin "$windows" --points 120 --title "Three settings" \
    --curve "$warm" --curve "$clear" --curve "$driven" -o "$out/response.png"
word_settings=()
for word in ${driven#*: }; do word_settings+=(--set "$word"); done
"$tool" harmonics --plugin "$linux" "${word_settings[@]}" --freq 50 --sweep -40:0:2 \
    -o "$out/harmonics.png"

say "A preset of the factory bank, and the editor with it"
"$tool" preset show "Mastering loudness" --plugin "$windows"
"$tool" screenshot --preset "Mastering loudness" -o "$out/editor.png"

say "Results in $out"
ls -l "$out" | awk 'NR > 1 {printf "  %9d  %s\n", $5, $9}'
