#!/usr/bin/env bash
# Builds the manual, dist/ZKRT46-manual.pdf; the built tool supplies its pictures and numbers.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh manual

program=dist/linux/zkrt46
sources=docs/manual
folder=build/manual
[ -x "$program" ] && [ -e dist/linux/ZKRT46.so ] || scripts/build.sh
if ! "$program" screenshot --help >/dev/null 2>&1; then
    echo "manual: $program is too old for the manual; run scripts/build.sh first" >&2
    exit 1
fi

rm -rf "$folder"
mkdir -p "$folder"
cp "$sources"/manual.css "$sources"/template.html "$sources"/*.svg "$folder"
# The manual always describes the built library.
unset ZKRT46_PLUGIN
echo "Measuring and drawing"
PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 "$sources/make_manual.py" "$program" "$folder"

echo "Typesetting"
product() {
    sed -n "s/^set($1 \"\(.*\)\")/\1/p" cmake/Product.cmake
}
maker=$(product ZKR_MAKER)
web=$(product ZKR_WEB_ADDRESS)
(
    cd "$folder"
    pandoc manual.md -V maker="$maker" -V web="$web" --from markdown --to html5 \
        --template template.html --toc --toc-depth 2 --number-sections --columns 400 \
        --fail-if-warnings -o manual.html
    # Otherwise the embedded fonts would contain today's date.
    SOURCE_DATE_EPOCH=0 weasyprint manual.html manual.pdf 2>weasyprint.log ||
        echo "it failed" >>weasyprint.log
)
if [ -s "$folder/weasyprint.log" ]; then
    cat "$folder/weasyprint.log" >&2
    echo "manual: weasyprint reports problems" >&2
    exit 1
fi
cp "$folder/manual.pdf" dist/ZKRT46-manual.pdf
echo "Made dist/ZKRT46-manual.pdf, $(du -k dist/ZKRT46-manual.pdf | cut -f1) KB"
