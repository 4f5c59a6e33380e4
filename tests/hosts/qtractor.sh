# Qtractor's scanner, which loads the library in a process without a window and prints its
# properties. Debian builds this host without VST 3. Sourced by scripts/hosts.sh.

say "Qtractor, its scanner" "VST 2" "the library's properties"
# Name, audio inputs and outputs, MIDI inputs and outputs, input and output parameters; editor, own
# state, real-time capable; file, index in it, id.
qtractor_expects="VST|ZKR T46|2:2|0:0|58:0|GUI,EXT,RT|$dist/ZKRT46.so|0|0x5a743436"
qtractor_says=$(echo "VST2:$dist/ZKRT46.so" | QT_QPA_PLATFORM=offscreen timeout --kill-after=5 60 \
    /usr/lib/*/qtractor/qtractor_plugin_scan 2>&1) || fail "the scanner failed"
echo "$qtractor_says" >"$logs/qtractor.log"
if [ "$qtractor_says" = "$qtractor_expects" ]; then
    seen "name, channels, parameters, editor, id" "${qtractor_says/"$work/"/}"
else
    fail "the scanner prints $qtractor_says"
fi
