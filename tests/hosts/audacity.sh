# Audacity with its window: the effect is opened, edited with the mouse, applied and exported, and
# another process of the host opens it again with the settings that the host kept. Debian builds this
# host without VST 3. Sourced by scripts/hosts.sh.

say Audacity "VST 2" "its effect window"

folder=$work/audacity config=$XDG_CONFIG_HOME/audacity
module=/usr/lib/audacity/modules/mod-script-pipe.so
mkdir -p "$folder" "$config" "$HOME/.vst"
cp "$dist/ZKRT46.so" "$HOME/.vst/"
# No questions at the start, the scripting module, files of 32-bit float without dither.
cat >"$config/audacity.cfg" <<END
PrefsVersion=1.1.1r1
[GUI]
ShowSplashScreen=0
[Version]
Major=3
Minor=2
Micro=4
[Module]
mod-script-pipe=1
[ModulePath]
mod-script-pipe=$module
[ModuleDateTime]
mod-script-pipe=$(date -r "$module" +%FT%T)
[Directories]
TempDir=$folder/temp
[FileFormats]
ExportFormat_SF1=65542
[FileFormats/ExportFormat_SF1_Type]
WAV_10000=6
[Quality]
HQDitherAlgorithmChoice=None
END

# driven NAME WIDTH look|edit
driven() {
    if ! VST_PATH=$HOME/.vst "$root/../vstgui/x11/on_display.sh" "$root/audacity/drive_window.sh" "$folder" "$@" \
        "Effect_VST_ZKR-soundworks_ZKR T46_$HOME/.vst/ZKRT46.so;0" >"$logs/audacity-$1.log" 2>&1; then
        fail "$1: $(tail -n 2 "$logs/audacity-$1.log")"
        return 1
    fi
    echo "  window: $(sed -n 's/^report window //p' "$logs/audacity-$1.log" | tr '\n' ' ')"
}

in_audacity() {
    "$root/make_audio.py" "$folder/sound.wav" 48000 6 stereo
    "$root/make_audio.py" "$folder/input.wav" 48000 6 stereo "$(silence 48000)"
    driven first 394 edit || return 0
    drawn "$folder/expected-opened.png"
    alike "of the editor when it opens" "$folder/first-opened.png" "$folder/expected-opened.png"
    "$root/audacity/saved_bank.py" "$config/pluginsettings.cfg" "$folder/kept.fxb"
    "$dist/zkrt46" preset show --bank "$folder/kept.fxb" 0 | sed -n 's/^\(QB11\|Drive.\) /  kept: &/p'
    drawn "$folder/expected-edited.png" --bank "$folder/kept.fxb"
    alike "after a click and a drag" "$folder/first-edited.png" "$folder/expected-edited.png"
    "$dist/zkrt46" render --plugin "$dist/ZKRT46.so" --bits 32f --bank "$folder/kept.fxb" \
        --pre-roll "$(awk "BEGIN { print $(silence 48000) / 48000 }")" \
        "$folder/sound.wav" "$folder/expected.wav"
    passes "applied and exported" -- compare_audio --skip "$(silence 48000)" \
        --result "$folder/first.wav" --expected "$folder/expected.wav"

    driven second 644 look || return 0
    alike "in another process" "$folder/second-opened.png" "$folder/expected-edited.png"
    passes "applied with the kept settings" -- compare_audio --skip "$(silence 48000)" \
        --result "$folder/second.wav" --expected "$folder/expected.wav"
}

in_audacity
