#!/usr/bin/env bash
# Checks the Linux archive and the Debian package: the place and contents of every file, the tool
# and the libraries run from there, and the declared dependencies.
# Usage: linux_packages_test.sh [FOLDER]   FOLDER holds the products and packages/; default: dist
# shellcheck source=checks.sh
source "$(dirname "${BASH_SOURCE[0]}")/checks.sh"

archive=$packages/ZKRT46-$version-linux-x86_64.tar.gz
package=$packages/zkr-t46_${version}_amd64.deb
export XDG_DATA_HOME=$work/settings

# check_tool TOOL: has all its libraries, finds the plug-in without being told where it is, and
# renders the same samples as the built tool.
check_tool() {
    expect "libraries missing for $1" "" "$(ldd "$1" | sed -n '/not found/p')"
    [ -f "$work/expected.wav" ] || {
        noise "$work/in.wav"
        "$products/linux/zkrt46" render --set LFreq=82 --set LGain=+3.5 "$work/in.wav" \
            "$work/expected.wav"
    }
    env -u ZKRT46_PLUGIN "$1" info | grep -q "Zt46" || fail "$1 does not find its library"
    rm -f "$work/out.wav"
    env -u ZKRT46_PLUGIN "$1" render --set LFreq=82 --set LGain=+3.5 "$work/in.wav" "$work/out.wav"
    same "$work/expected.wav" "$work/out.wav"
}

step "the presets"
unpack_presets
preset_listing() { echo presets/; listing "$presets" | sed 's|^|presets/|'; }
# Each put into its place in an empty bank, they make the factory bank.
echo '{"format": "zkrt46-bank", "version": 1, "presets": []}' >"$work/bank.json"
"$products/linux/zkrt46" bank import "$work/bank.json" -o "$work/bank.zkb"
for file in "$presets/ZKR-soundworks/ZKR T46"/*.vstpreset; do
    "$products/linux/zkrt46" check "$file" >&2
    number=$(basename "$file" | head -c 2)
    "$products/linux/zkrt46" preset import "$file" --into "$work/bank.zkb" --at "$number"
done
"$products/linux/zkrt46" bank diff "$work/bank.zkb" >&2 || fail "the presets are not the factory's"

step "the pictures that the bundles name"
"$products/linux/zkrt46" screenshot --preset "Mastering loudness" -o "$work/editor.png" >&2
for bundle in "$products"/{linux,windows}/ZKRT46.vst3; do
    same "$work/editor.png" "$bundle/$(python3 -c 'import json, sys
print(json.load(sys.stdin)["Classes"][0]["Snapshots"][0]["Path"])' \
        <"$bundle/Contents/Resources/moduleinfo.json")"
done

step "the archive"
mkdir "$work/tar"
tar -xzf "$archive" -C "$work/tar"
unpacked=$work/tar/$(basename "$archive" .tar.gz)
expect_files "$archive" "$({
    bundle_listing "$products/linux"
    preset_listing
    printf '%s\n' LICENSE README.txt ZKRT46-manual.pdf ZKRT46.so completions/ copyright zkrt46 \
        zkrt46.1
    printf 'completions/%s\n' _zkrt46 zkrt46 zkrt46.fish
} | sort)" "$(listing "$unpacked")"
same "$products/linux/ZKRT46.so" "$unpacked/ZKRT46.so"
same "$products/linux/zkrt46" "$unpacked/zkrt46"
same_tree "$products/linux/ZKRT46.vst3" "$unpacked/ZKRT46.vst3"
same "$products/ZKRT46-manual.pdf" "$unpacked/ZKRT46-manual.pdf"
same "$top/LICENSE" "$unpacked/LICENSE"
check_tool "$unpacked/zkrt46"
for word in "ZKR T46 $version" ZKRT46.so ZKRT46.vst3 zkrt46 ZKRT46-manual.pdf .vst3 ManualPath; do
    grep -qF -- "$word" "$unpacked/README.txt" || fail "README.txt does not mention $word"
done

step "the commands in the README"
mkdir "$work/user"
sed -n 's/^  \(mkdir\|cp\|settings=\|printf\|\.\/zkrt46\)/\1/p' "$unpacked/README.txt" >"$work/typed"
(cd "$unpacked" && env -u XDG_DATA_HOME HOME="$work/user" bash -e "$work/typed" >"$work/info")
same "$products/linux/ZKRT46.so" "$work/user/.vst/ZKRT46.so"
same_tree "$products/linux/ZKRT46.vst3" "$work/user/.vst3/ZKRT46.vst3"
same_tree "$presets" "$work/user/.vst3/presets"
same "$products/ZKRT46-manual.pdf" "$(cat "$work/user/.local/share/ZKR-soundworks/ZKRT46/ManualPath")"
grep -q "Zt46" "$work/info" || fail "./zkrt46 info does not show the plug-in"

step "the Debian package"
dpkg-deb --extract "$package" "$work/root"
dpkg-deb --control "$package" "$work/control"
root=$work/root
documents=usr/share/doc/zkr-t46
metainfo=usr/share/metainfo/example.zkr_soundworks.zkrt46.metainfo.xml
expect_files "$package" "$({
    printf '%s/\n' usr usr/bin usr/lib usr/lib/vst usr/lib/vst3 usr/share \
        usr/share/ZKR-soundworks usr/share/ZKR-soundworks/ZKRT46 usr/share/doc $documents \
        usr/share/man usr/share/man/man1 usr/share/bash-completion \
        usr/share/bash-completion/completions usr/share/fish usr/share/fish/vendor_completions.d \
        usr/share/zsh usr/share/zsh/vendor-completions usr/share/vst3 usr/share/doc-base \
        usr/share/lintian usr/share/lintian/overrides usr/share/metainfo
    preset_listing | sed 's|^|usr/share/vst3/|'
    printf '%s\n' usr/bin/zkrt46 usr/lib/vst/ZKRT46.so usr/share/ZKR-soundworks/ZKRT46/ManualPath \
        $documents/ZKRT46-manual.pdf $documents/changelog.gz $documents/copyright \
        usr/share/man/man1/zkrt46.1.gz usr/share/bash-completion/completions/zkrt46 \
        usr/share/fish/vendor_completions.d/zkrt46.fish usr/share/zsh/vendor-completions/_zkrt46 \
        $metainfo usr/share/doc-base/zkr-t46.zkr-t46-manual usr/share/lintian/overrides/zkr-t46
    bundle_listing "$products/linux" | sed 's|^|usr/lib/vst3/|'
} | sort)" "$(listing "$root")"
same "$products/linux/ZKRT46.so" "$root/usr/lib/vst/ZKRT46.so"
same_tree "$products/linux/ZKRT46.vst3" "$root/usr/lib/vst3/ZKRT46.vst3"
same_tree "$presets" "$root/usr/share/vst3/presets"
same "$products/linux/zkrt46" "$root/usr/bin/zkrt46"
same "$products/ZKRT46-manual.pdf" "$root/$documents/ZKRT46-manual.pdf"
same "$products/ZKRT46-manual.pdf" "$root$(cat "$root/usr/share/ZKR-soundworks/ZKRT46/ManualPath")"
(cd "$root" && md5sum --check --quiet "$work/control/md5sums") || fail "md5sums do not match"
expect "files that are not root's" "" "$(dpkg-deb --contents "$package" | awk '$2 != "root/root"')"

step "the package's fields"
field() { dpkg-deb --field "$package" "$1"; }
expect Version "$version" "$(field Version)"
expect Architecture amd64 "$(field Architecture)"
expect Recommends "gnuplot-nox | gnuplot, xdg-utils, zenity | kdialog" "$(field Recommends)"
expect Maintainer "ZKR-soundworks <support@zkr-soundworks.example>" "$(field Maintainer)"
listed=$(find "$root" -type f -print0 | du -ck --apparent-size --files0-from=- | tail -n 1 | cut -f 1)
size=$(field Installed-Size)
[ $((size * 10)) -gt $((listed * 9)) ] && [ $((size * 10)) -lt $((listed * 11)) ] ||
    fail "Installed-Size is $size KB, the files have $listed KB"
# Debian's changelog has all versions and entries of CHANGELOG.md.
entries() { awk '/^ *[-*] / {on = 1} /^$|^#/ {on = 0} on' "$1" | sed 's/^ *[-*] /* /' | tr -s ' \n' '\n'; }
zcat "$root/$documents/changelog.gz" >"$work/changelog"
expect "versions in the changelog" "$(sed -n 's/^## \[\([0-9.]*\)\].*/\1/p' "$top/CHANGELOG.md")" \
    "$(dpkg-parsechangelog --all -l "$work/changelog" -S Version 2>&1)"
diff <(tr -d '`' <"$top/CHANGELOG.md" | sed 's/\[\([^]]*\)\]([^)]*)/\1/g' | entries -) \
    <(entries "$work/changelog") >&2 || fail "the changelog is not that of CHANGELOG.md"
appstreamcli validate --no-net "$root/$metainfo" >&2 || fail "the AppStream data are not valid"
expect "the manual that doc-base knows" "/$documents/ZKRT46-manual.pdf" \
    "$(sed -n 's/^Files: //p' "$root/usr/share/doc-base/zkr-t46.zkr-t46-manual")"
# lintian checks the manual page's syntax.
expect "the manual page's first command" ".SS \"zkrt46 render [OPTIONS] FILES...\"" \
    "$(zcat "$root/usr/share/man/man1/zkrt46.1.gz" | grep -m 1 '^\.SS')"
for place in bash:bash-completion/completions/zkrt46 zsh:zsh/vendor-completions/_zkrt46 \
    fish:fish/vendor_completions.d/zkrt46.fish; do
    same <("$root/usr/bin/zkrt46" --completion "${place%%:*}") "$root/usr/share/${place#*:}"
done
found=$(lintian --no-cfg -I --pedantic "$package")
expect "what lintian finds" "" "$found"

step "install, upgrade and remove"
system=$work/system
mkdir -p "$system"/var/lib/dpkg/{info,updates} "$system/usr/lib/vst" \
    "$system/home/me/.local/share/ZKR-soundworks/ZKRT46"
touch "$system"/var/lib/dpkg/{status,available} "$system/usr/lib/vst/Other.so" \
    "$system/home/me/.local/share/ZKR-soundworks/ZKRT46/DefaultBank"
debian() {
    dpkg --root="$system" --force-not-root,bad-path,depends --log=/dev/null "$@" >"$work/dpkg" 2>&1 ||
        fail "dpkg $*: $(cat "$work/dpkg")"
}
users_files() { listing "$system" | grep -v '^var/'; }
users_files >"$work/before"
# An older version: it lacks files, others have changed, and one exists no more.
older=$work/older
dpkg-deb --raw-extract "$package" "$older"
rm -r "$older"/usr/share/{metainfo,doc-base,vst3,fish} "$older/DEBIAN/md5sums"
echo older | tee "$older/usr/bin/zkrt46" >"$older/usr/lib/vst/ZKRT46-32.so"
sed -i 's/^Version: .*/Version: 0.9.0.0/' "$older/DEBIAN/control"
dpkg-deb --root-owner-group --build "$older" "$work/older.deb" >/dev/null
debian --install "$work/older.deb"
cmp -s "$older/usr/bin/zkrt46" "$system/usr/bin/zkrt46" || fail "the older version is not installed"
debian --install "$package"
rm "$system/usr/lib/vst/Other.so"
same_tree "$root/usr" "$system/usr"
touch "$system/usr/lib/vst/Other.so"
debian --remove zkr-t46
debian --purge zkr-t46
diff "$work/before" <(users_files) >&2 || fail "the package leaves something or takes too much"

step "use the tool and the libraries, and check their dependencies"
check_tool "$root/usr/bin/zkrt46"
binaries=("$root/usr/bin/zkrt46" "$root/usr/lib/vst/ZKRT46.so"
    "$root/usr/lib/vst3/ZKRT46.vst3/Contents/x86_64-linux/ZKRT46.so")
for binary in "${binaries[@]}"; do
    expect "libraries missing for $binary" "" "$(ldd -r "$binary" 2>&1 | sed -n '/not found\|undefined/p')"
done
for binary in "${binaries[@]}" "$products"/windows/*.{dll,exe} \
    "$products"/windows/ZKRT46.vst3/Contents/x86_64-win/ZKRT46.vst3; do
    expect "symbols in $binary" "nm: $binary: no symbols" "$(nm --debug-syms "$binary" 2>&1)"
done
# Ubuntu 22.04 has these versions of the C and C++ libraries; also its other libraries suffice.
expect "versions newer than Ubuntu 22.04's" "" "$(objdump -p "${binaries[@]}" | awk '
    BEGIN { newest["GLIBC"] = "2.35"; newest["GLIBCXX"] = "3.4.30"; newest["CXXABI"] = "1.3.13"
            newest["GCC"] = "12.0.0" }
    function newer(a, b,   i, x, y) {
        split(a, x, "."); split(b, y, ".")
        for (i = 1; i <= 3; ++i) if (x[i] + 0 != y[i] + 0) return x[i] + 0 > y[i] + 0
        return 0
    }
    /^  required from/ { inside = 1; next }
    inside && $1 ~ /^0x/ {
        split($4, of, "_")
        if (of[1] in newest && (of[2] !~ /^[0-9]/ || newer(of[2], newest[of[1]]))) print $4
        next
    }
    { inside = 0 }' | sort -u)"
needed=$(objdump -p "${binaries[@]}" | awk '$1 == "NEEDED" {print $2}' | sort -u | while read -r name; do
    file=$(ldconfig -p | awk -v name="$name" '$1 == name && /x86-64/ {print $NF}')
    { dpkg -S "$file" "$(realpath "$file")" 2>/dev/null || true; } | cut -d : -f 1
done | sort -u)
[ -n "$needed" ] || fail "the binaries need no library at all"
while read -r name least; do
    case $name in
    libc6) has=2.35-0ubuntu3 ;;
    libcairo2) has=1.16.0-5ubuntu2 ;;
    libebur128-1) has=1.2.6-1 ;;
    libfontconfig1) has=2.13.1-4.2ubuntu5 ;;
    libgcc-s1 | libstdc++6) has=12-20220319-1ubuntu1 ;;
    libsndfile1) has=1.0.31-2 ;;
    libx11-6) has=2:1.7.5-1 ;;
    *) fail "Depends names $name, whose version in Ubuntu 22.04 is not listed here" ;;
    esac
    dpkg --compare-versions "$has" ge "${least:-0}" ||
        fail "the package needs $name $least, Ubuntu 22.04 has $has"
done < <(field Depends | tr ',' '\n' | sed 's/[(>=)]//g')
expect "packages of the needed libraries" "$needed" \
    "$(field Depends | tr ',' '\n' | sed 's/^ *//; s/[ (:].*//' | sort -u)"

step "packaging is reproducible"
mkdir "$work/again"
cp -r "$products/windows" "$products/linux" "$products/ZKRT46-manual.pdf" "$work/again"
SOURCE_DATE_EPOCH=$(stat -c %Y "$unpacked/LICENSE") "$top/scripts/package.sh" "$work/again" >/dev/null
same_tree "$packages" "$work/again/packages"

step "checksums"
(cd "$packages" && sha256sum --check --quiet SHA256SUMS) || fail "SHA256SUMS do not match"
expect "files in SHA256SUMS" "$(cd "$packages" && find . -type f ! -name SHA256SUMS -printf '%P\n' | sort)" \
    "$(awk '{print $2}' "$packages/SHA256SUMS" | sort)"
echo "$test_name: passed in $SECONDS s"
