#!/usr/bin/env bash
# Installs, upgrades and removes the product under Wine, in a prefix of its own: checks every file
# and registry value, uses the installed library, and checks that removal leaves only what belongs
# to the user and to others. Also checks the contents of the Windows archive.
# Usage: installer_test.sh [FOLDER]   FOLDER holds the products and packages/; default: dist
# The variable ZKR_VST3_TEST names the program that tests the VST 3 library; default: the one that
# scripts/test.sh builds. It may be missing unless ZKR_EXPECT_WINDOWS is set.
# shellcheck source=checks.sh
source "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

export WINEPREFIX=$work/wine WINEDEBUG=-all,err+all
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
unset DISPLAY
installer=$packages/ZKRT46-$version-windows-x64.exe
vst3_test=${ZKR_VST3_TEST:-$top/build/win64/tests/vst3/vst3_test.exe}
drive=$WINEPREFIX/drive_c
home="$drive/Program Files/ZKR-soundworks/ZKR T46"
vst2="$drive/Program Files/VSTPlugins"
vst3="$drive/Program Files/Common Files/VST3"
presets_home="$drive/ProgramData/VST3 Presets"
manual_link="$drive/ProgramData/Microsoft/Windows/Start Menu/Programs/ZKR T46 manual.lnk"
settings='HKCU\SOFTWARE\ZKR-soundworks\ZKRT46'
entry='HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\ZKRT46'

stop_wine() {
    touch "$work/release"
    timeout 30 wineserver --kill 2>/dev/null || true
}
trap stop_wine EXIT

# win PROGRAM ARGUMENTS...: runs a Windows program, for at most two minutes.
win() {
    timeout 120 wine "$@" >"$work/stdout" 2>"$work/stderr"
}

# windows PATH: the path as a Windows program sees it.
windows() {
    echo "Z:${1//\//\\}"
}

# typed LINE: runs a command line as typed, with its own quotes.
typed() {
    printf '@%s\r\n@exit %%errorlevel%%\r\n' "start /wait \"\" $1" >"$work/typed.bat"
    win cmd /c "$(windows "$work/typed.bat")"
}

install_silently() {
    win "$installer" /S "$@"
}

# uninstall_silently [FOLDER]: the uninstaller continues as a copy of itself; this waits until that
# copy has removed the entry in Windows' list of programs.
uninstall_silently() {
    local folder=${1:-$home} patience=100
    code 0 win "$folder/uninstall.exe" /S
    while [ -e "$folder/uninstall.exe" ] || ask query "$entry"; do
        [ $((patience--)) -gt 0 ] || fail "the uninstaller or its entry is still there after 10 s"
        sleep 0.1
    done
}

# ask VERB KEY ARGUMENTS...: queries the registry; the answer is in $work/stdout. False only if reg
# reports that the key does not exist; any other error is a failure.
ask() {
    local found=0
    win reg "$@" || found=$?
    [ $found != 0 ] || return 0
    grep -q "^reg: Unable to find the specified registry key" "$work/stdout" ||
        fail "exit code $found of: reg $*
$(cat "$work/stdout" "$work/stderr")"
    return 1
}

# read_key KEY: writes the exported key to $work/key and its values to the table "value"; both are
# empty if the key does not exist.
declare -A value
read_key() {
    local line text
    value=()
    : >"$work/key"
    rm -f "$work/export.reg"
    ask export "$1" "$(windows "$work/export.reg")" /y || return 0
    iconv -f UTF-16 -t UTF-8 "$work/export.reg" | tr -d '\r' >"$work/key" || fail "no export of $1"
    while IFS= read -r line; do
        [[ $line =~ ^\"([^\"]+)\"=(.*)$ ]] || continue
        text=${BASH_REMATCH[2]}
        if [[ $text == \"*\" ]]; then
            text=${text:1:-1}
            printf -v text %b "${text//\\\"/\"}"
        fi
        value[${BASH_REMATCH[1]}]=$text
    done <"$work/key"
}

# expect_values KEY NAME TEXT...: the key's values; "(none)" for one that must not exist.
expect_values() {
    local key=$1
    shift
    read_key "$key"
    while [ $# -gt 0 ]; do
        expect "$key, $1" "$2" "${value[$1]-(none)}"
        shift 2
    done
}

# unix PATH: the Unix path of a Windows path on drive C.
unix() {
    [[ $1 == C:\\* ]] || fail "$1 is not a path on drive C"
    local path=${1#C:}
    echo "$drive${path//\\//}"
}

# everything: all files of the prefix with their checksums, except the system's and temporary ones;
# and the registry keys that the product or its vendor could write.
everything() {
    (cd "$drive" && find . \( -path ./windows -o -path '*/Temp' \) -prune -o \
        \( -type f -exec sha256sum {} + , -print \) | sort -k 2)
    local key
    for key in 'HKCU\SOFTWARE' 'HKLM\SOFTWARE' "${entry%\\*}" "${entry%\\*\\*}"; do
        ask query "$key" || fail "$key is missing"
        tr -d '\r' <"$work/stdout"
    done
    for key in "${settings%\\*}" "$entry" 'HKLM\SOFTWARE\VST'; do
        read_key "$key"
        cat "$work/key"
    done
}

# expect_as FILE MESSAGE: everything is as recorded in the file.
expect_as() {
    everything >"$work/now"
    diff "$work/$1" "$work/now" >&2 || fail "$2 (< before, > now)"
}

# expect_installed VST2-FOLDER HOME: all files with their contents, and the settings that name them.
expect_installed() {
    same "$products/windows/ZKRT46.dll" "$1/ZKRT46.dll"
    same_tree "$products/windows/ZKRT46.vst3" "$vst3/ZKRT46.vst3"
    same_tree "$presets" "$presets_home"
    same "$products/ZKRT46-manual.pdf" "$2/ZKRT46-manual.pdf"
    same_text "$top/LICENSE" "$2/LICENSE.txt"
    expect_files "$2" $'COPYRIGHT.txt\nLICENSE.txt\nZKRT46-manual.pdf\nuninstall.exe' "$(listing "$2")"
    read_key "$settings"
    same "$2/ZKRT46-manual.pdf" "$(unix "${value[ManualPath]-}")"
    expect "folder of the manual" "$(realpath "$2")" \
        "$(dirname "$(realpath "$(unix "${value[ManualPath]}")")")"
}

# expect_none VST2-FOLDER: no libraries, no entry, no manual.
expect_none() {
    local left
    for left in "$1/ZKRT46.dll" "$vst3/ZKRT46.vst3" "$presets_home" "$home" "$manual_link"; do
        [ ! -e "$left" ] || fail "$left is left"
    done
    expect_values "$entry" DisplayName "(none)"
    expect_values "$settings" ManualPath "(none)"
}

# version_of FILE: the icon's widths, as octal bytes, and the version resource.
icon='icon \020 \030 \040 \060 \100 \200 \000'
version_of() {
    x86_64-w64-mingw32-windres -J coff -O rc "$1" | awk '
        /^ *"[^ ]*\\000\\000", 1, 32, / {icon = icon " " substr($1, 2, 4)}
        /^[0-9]+ VERSIONINFO/ {print "icon" icon}
        /^ *(FILEVERSION|PRODUCTVERSION|VALUE) / {$1 = $1; print}'
}

# expect_version FILE DESCRIPTION [ORIGINAL-NAME]
expect_version() {
    expect "version of $1" "$icon
FILEVERSION ${version//./, }
PRODUCTVERSION ${version//./, }
VALUE \"CompanyName\", \"ZKR-soundworks\"
VALUE \"FileDescription\", \"$2\"
VALUE \"FileVersion\", \"$version\"
${3:+VALUE \"InternalName\", \"ZKRT46\"
}VALUE \"LegalCopyright\", \"Copyright 2026 ZKR-soundworks. Licensed under GPL-3.0.\"
${3:+VALUE \"OriginalFilename\", \"$3\"
}VALUE \"ProductName\", \"ZKR T46\"
VALUE \"ProductVersion\", \"$version\"
VALUE \"Translation\", 0x409, 1200" "$(version_of "$1")"
}

[ -f "$installer" ] || fail "$installer is missing; scripts/package.sh makes it"
unpack_presets
step "a new Wine prefix"
# The server stays until the end, however long the pauses between two programs are.
mkdir "$WINEPREFIX"
wineserver -p600
code 0 win wineboot --init
everything >"$work/before"

step "install"
code 0 install_silently
expect_installed "$vst2" "$home"
[ -f "$manual_link" ] || fail "no entry for the manual in the start menu"
grep -aq "ZKRT46-manual.pdf" "$manual_link" || fail "the start menu's entry does not name the manual"
expect_values "$entry" DisplayName "ZKR T46" DisplayVersion "$version" Publisher ZKR-soundworks \
    UninstallString '"C:\Program Files\ZKR-soundworks\ZKR T46\uninstall.exe"' \
    QuietUninstallString '"C:\Program Files\ZKR-soundworks\ZKR T46\uninstall.exe" /S'
expect "icon of the entry" "$icon" "$(version_of "$(unix "${value[DisplayIcon]-}")" | sed -n 1p)"
size=$((${value[EstimatedSize]/dword:/0x}))
real=$(du -cbk --apparent-size "$vst2/ZKRT46.dll" "$vst3/ZKRT46.vst3" "$presets_home" "$home" |
    tail -n 1 | cut -f 1)
[ $((size * 10)) -gt $((real * 8)) ] && [ $((size * 10)) -lt $((real * 12)) ] ||
    fail "EstimatedSize is $size KB, the files have $real KB"

step "the icon of the VST 3 bundle"
# attributes PATH: the letters of a file's or folder's attributes below the folder of VST 3 plug-ins.
attributes() {
    code 0 win attrib "C:\\Program Files\\Common Files\\VST3\\$1"
    sed 's/ *C:.*//; s/ //g' "$work/stdout"
}
expect "the folder's attributes" S "$(attributes ZKRT46.vst3)"
expect "the description's attributes" ASH "$(attributes 'ZKRT46.vst3\desktop.ini')"
expect "the icon's attributes" ASH "$(attributes 'ZKRT46.vst3\PlugIn.ico')"
icon_file=$(tr -d '\r' <"$vst3/ZKRT46.vst3/desktop.ini" | sed -n 's/^IconResource=\(.*\),0$/\1/p')
same "$top/resources/icon.ico" "$vst3/ZKRT46.vst3/$icon_file"

step "version resources"
expect_version "$vst2/ZKRT46.dll" "ZKR T46 mastering equaliser (VST 2)" ZKRT46.dll
expect_version "$vst3/ZKRT46.vst3/Contents/x86_64-win/ZKRT46.vst3" \
    "ZKR T46 mastering equaliser (VST 3)" ZKRT46.vst3
expect_version "$installer" "ZKR T46 installer"
expect_version "$home/uninstall.exe" "ZKR T46 installer"

step "remove: nothing is left"
uninstall_silently
expect_none "$vst2"
expect_as before "the uninstaller leaves something or takes too much"

step "with others' files, the user's settings, and the folder that hosts name"
named=$drive/Audio/Plug-ins
mkdir -p "$named" "$vst2" "$vst3/Other.vst3"
foreign_files=("$named/Other.dll" "$vst2/ZKRT46.dll" "$vst3/Other.vst3/a" "$vst3/b.vst3")
for foreign in "${foreign_files[@]}"; do
    echo foreign >"$foreign"
done
win reg add "$settings" /v DefaultBank /t REG_BINARY /d 5a4b52 /f
win reg add 'HKLM\SOFTWARE\VST' /v VSTPluginsPath /d 'C:\Audio\Plug-ins\' /f
code 0 install_silently
expect_installed "$named" "$home"

step "use the installed library"
export ZKRT46_BRIDGE=$products/windows/zkrt46-bridge.exe
tool=$products/linux/zkrt46
timeout 60 "$tool" info --plugin "$named/ZKRT46.dll" >"$work/info"
grep -q "Zt46" "$work/info" || fail "the tool cannot open the installed library"
noise "$work/in.wav"
warm=(--set LFreqL=82 --set LGainL=+3.5 --set HFreqR=12000 --set HGainR=-2)
timeout 60 "$tool" render --plugin "$named/ZKRT46.dll" "${warm[@]}" "$work/in.wav" "$work/out.wav"
timeout 60 "$tool" render --plugin "$products/linux/ZKRT46.so" "${warm[@]}" "$work/in.wav" \
    "$work/expected.wav"
same "$work/expected.wav" "$work/out.wav"
timeout 60 "$tool" render --plugin "$products/linux/ZKRT46.so" "$work/in.wav" "$work/flat.wav"
if cmp -s "$work/flat.wav" "$work/out.wav"; then fail "the settings have no effect"; fi
if [ -f "$vst3_test" ]; then
    # try_vst3 LIBRARY: compares its output with that of the VST 2 library.
    try_vst3() {
        ZKR_TEST_VST3_LIBRARY=$(windows "$1") win "$vst3_test" \
            --gtest_filter=Bundle.SoundsAsTheVst2LibraryDoesToTheBit
    }
    try_vst3 "$vst3/ZKRT46.vst3/Contents/x86_64-win/ZKRT46.vst3" ||
        fail "the installed VST 3 library: $(cat "$work/stdout")"
    grep -q '\[  PASSED  \] 1 test\.' "$work/stdout" || fail "no test of the VST 3 library has run"
    if try_vst3 "$vst3/Other.vst3/a"; then fail "$vst3_test does not test the library that it is given"; fi
elif [ -n "${ZKR_EXPECT_WINDOWS:-}" ]; then
    fail "$vst3_test is missing"
else
    step "skipped, without $vst3_test: the installed VST 3 library"
fi

step "remove: what belongs to others stays"
uninstall_silently
expect_none "$named"
everything >"$work/before"
grep -q '"CurrBank"=' "$work/before" || fail "the uninstaller removes the settings that the library has stored"
grep -q '"DefaultBank"=hex:5a,4b,52' "$work/before" || fail "the uninstaller removes the default bank"
for foreign in "${foreign_files[@]}"; do
    expect "$foreign" foreign "$(cat "$foreign")"
done
code 0 install_silently

step "upgrade an older version, into a folder with a long non-ASCII name"
win reg add "$entry" /v DisplayVersion /d 0.9.0.0 /f
echo old >"$named/ZKRT46.dll"
echo old >"$home/ZKRT46-manual.pdf"
moved="$drive/Müsik 音/VST 2 $(printf 'ordner %.0s' {1..15})x"
code 0 install_silently "/VST2DIR=C:\\Müsik 音\\${moved##*/}"
expect_installed "$moved" "$home"
expect_values "$entry" DisplayVersion "$version"
expect_files "the previous folder" Other.dll "$(listing "$named")"

step "install again: the folder is kept"
code 0 install_silently
expect_installed "$moved" "$home"
timeout 60 "$tool" info --plugin "$moved/ZKRT46.dll" >"$work/info-moved"
diff <(grep -v '^Plug-in ' "$work/info") <(grep -v '^Plug-in ' "$work/info-moved") >&2 ||
    fail "the library reports something else from there"

# hold FILE: runs a program that has the file loaded or open.
makensis -V1 -DOUTPUT="$work/holder.exe" "$here/holder.nsi"
hold() {
    rm -f "$work/holding" "$work/release"
    wine "$work/holder.exe" "$(windows "$1")" 2>/dev/null &
    local patience=100
    until [ -e "$work/holding" ]; do
        [ $((patience--)) -gt 0 ] || fail "the holder has not loaded $1 after 10 s"
        sleep 0.1
    done
}
release() {
    touch "$work/release"
    wait
}

step "files in use: refused, and nothing changed"
everything >"$work/installed"
for held in "$moved/ZKRT46.dll" "$vst3/ZKRT46.vst3/Contents/x86_64-win/ZKRT46.vst3" \
    "$home/ZKRT46-manual.pdf"; do
    hold "$held"
    code 3 install_silently
    grep -q "is in use" "$work/stderr" || fail "no message that $held is in use"
    expect_installed "$moved" "$home"
    code 3 typed '"C:\Program Files\ZKR-soundworks\ZKR T46\uninstall.exe" /S _?=C:\Program Files\ZKR-soundworks\ZKR T46'
    expect_installed "$moved" "$home"
    release
done
cp "$products/windows/ZKRT46.dll" "$named"
hold "$named/ZKRT46.dll"
code 3 install_silently "/VST2DIR=C:\\Audio\\Plug-ins"
expect_installed "$moved" "$home"
release
rm "$named/ZKRT46.dll"
expect_as installed "a refused installation has changed something"

step "a wrong command line: refused, and nothing changed"
code 4 install_silently /NOVST2 /NOVST3
code 4 install_silently /VST2DIR=plug-ins
code 4 install_silently /VST2DIR=
expect_as installed "a refused installation has changed something"

step "one of the two plug-ins without the other"
code 0 install_silently /NOVST3
same "$products/windows/ZKRT46.dll" "$moved/ZKRT46.dll"
[ ! -e "$vst3/ZKRT46.vst3" ] || fail "/NOVST3 leaves the VST 3 plug-in"
[ ! -e "$presets_home" ] || fail "/NOVST3 leaves the presets of VST 3"
code 0 install_silently /NOVST2
same_tree "$products/windows/ZKRT46.vst3" "$vst3/ZKRT46.vst3"
[ ! -e "$moved" ] || fail "/NOVST2 leaves the VST 2 plug-in or its folder"
cp "$installer" "$drive/setup.exe"
code 0 typed 'C:\setup.exe /S /NOVST3 /VST2DIR="C:\with spaces"'
same "$products/windows/ZKRT46.dll" "$drive/with spaces/ZKRT46.dll"
code 0 typed 'C:\setup.exe /S /VST2DIR=C:\no quotes /NOVST3'
same "$products/windows/ZKRT46.dll" "$drive/no quotes/ZKRT46.dll"
rm "$drive/setup.exe"
code 0 install_silently "/VST2DIR=C:\\Audio\\Plug-ins\\"
expect_installed "$named" "$home"

step "remove: others' files in our folders stay"
echo mine >"$vst3/ZKRT46.vst3/Contents/Resources/mine.txt"
echo mine >"$home/mine.txt"
uninstall_silently
expect mine mine "$(cat "$vst3/ZKRT46.vst3/Contents/Resources/mine.txt" "$home/mine.txt" | uniq)"
rm -r "$vst3/ZKRT46.vst3" "$drive/Program Files/ZKR-soundworks"
expect_as before "the uninstaller leaves something or takes too much"

step "a file that cannot be written: the installation is rolled back"
mkdir "$named/ZKRT46.dll"
everything >"$work/before"
code 2 install_silently
expect_as before "half an installation is left"
rmdir "$named/ZKRT46.dll"

step "an upgrade that cannot be written: the older version is restored"
# older [ARGUMENTS...]: installs an older version, whose files and values differ from the new ones.
older() {
    code 0 install_silently "$@"
    local file
    while read -r file; do
        echo older >>"$file"
    done < <(find "$home" "$named/ZKRT46.dll" "$vst3/ZKRT46.vst3" "$presets_home" "$manual_link" \
        -type f)
    win reg add "$entry" /v DisplayVersion /d 0.9.0.0 /f
    win reg add "$entry" /v EstimatedSize /t REG_DWORD /d 46 /f
    everything >"$work/older"
}
# upgrade_fails [ARGUMENTS...]: the upgrade fails and leaves the older version as it was.
upgrade_fails() {
    code 2 install_silently "$@"
    expect_as older "the older version has changed"
}
everything >"$work/before"

# Into other folders, where the VST 2 library cannot be written.
mkdir -p "$drive/Blocked/ZKRT46.dll"
older
upgrade_fails '/VST2DIR=C:\Blocked' '/D=C:\Elsewhere'
rm -r "$drive/Blocked"

# Into the same folders, where a program has one of the old files open.
older
hold "$home/LICENSE.txt"
upgrade_fails
release

# Into the same folders, where the last file cannot be written.
code 0 install_silently /NOVST3
mkdir -p "$vst3/ZKRT46.vst3/Contents/x86_64-win/ZKRT46.vst3" "$vst3/ZKRT46.vst3/Contents/Resources" \
    "$presets_home"
echo mine >"$vst3/ZKRT46.vst3/Contents/Resources/mine.txt"
older /NOVST3
upgrade_fails
rm -r "$vst3/ZKRT46.vst3" "$presets_home"

# With no obstacle left the upgrade succeeds, also from a version that lacks files and folders.
older
rm -r "$presets_home" "$vst3/ZKRT46.vst3/Contents/Resources/Snapshots" \
    "$vst3/ZKRT46.vst3/desktop.ini" "$vst3/ZKRT46.vst3/PlugIn.ico"
win reg delete "$entry" /v PresetsCreated /f
code 0 install_silently
expect_installed "$named" "$home"
uninstall_silently
expect_as before "the uninstaller leaves something or takes too much"

step "no valid VST folder of hosts; manual and uninstaller in a folder from the command line"
rm "$vst2/ZKRT46.dll"
win reg add 'HKLM\SOFTWARE\VST' /v VSTPluginsPath /d 'somewhere' /f
everything >"$work/before"
code 0 install_silently '/D=C:\Zürich\ZKR-T46'
expect_installed "$vst2" "$drive/Zürich/ZKR-T46"
uninstall_silently "$drive/Zürich/ZKR-T46"
expect_as before "the uninstaller leaves something or takes too much"

step "the archive"
archive=$packages/ZKRT46-$version-windows-x64
python3 -m zipfile -e "$archive.zip" "$work/zip"
unpacked=$work/zip/${archive##*/}
expect_files "$archive.zip" "$({
    bundle_listing "$products/windows"
    echo "VST3 Presets/"
    listing "$presets" | sed 's|^|VST3 Presets/|'
    printf '%s\n' COPYRIGHT.txt LICENSE.txt README.txt ZKRT46-manual.pdf ZKRT46.dll
} | sort)" "$(listing "$unpacked")"
same "$products/windows/ZKRT46.dll" "$unpacked/ZKRT46.dll"
same_tree "$products/windows/ZKRT46.vst3" "$unpacked/ZKRT46.vst3"
same_tree "$presets" "$unpacked/VST3 Presets"
same "$products/ZKRT46-manual.pdf" "$unpacked/ZKRT46-manual.pdf"
same_text "$top/LICENSE" "$unpacked/LICENSE.txt"
for holder in "Steinberg Media Technologies" "mingw-w64 project" "License: ZPL-2.1" \
    "License: BSD-3-clause" "License: Expat"; do
    grep -q "$holder" "$unpacked/COPYRIGHT.txt" || fail "COPYRIGHT.txt does not mention $holder"
done
for word in "ZKR T46 $version" ZKRT46.dll ZKRT46.vst3 ZKRT46-manual.pdf ManualPath /VST2DIR= /NOVST2 /NOVST3; do
    grep -qF -- "$word" "$unpacked/README.txt" || fail "README.txt does not mention $word"
done
stop_wine
rm -rf "$WINEPREFIX"
echo "$test_name: passed in $SECONDS s"
