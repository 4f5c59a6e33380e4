#!/usr/bin/env python3
"""Checks that every include names its folder, and that no folder includes one it must not know.

A folder sees itself and what its row names; `a/b` without a row has that of `a`. Headers of the SDK
are written as the SDK writes them, and count as `sdk`.
"""

import pathlib
import re
import sys

MAY_INCLUDE = {
    "platform": "",
    "vstgui": "platform",
    "sdk": "platform vstgui",
    "params/ids": "sdk",
    "params/lookup": "",
    "dsp": "params/lookup",
    "presets": "params/ids platform sdk",
    "params": "params/ids params/lookup presets sdk",
    "resources": "vstgui",
    "editor/controls": "params/lookup platform vstgui",
    "editor/panel": "editor/controls platform presets sdk vstgui",
    "editor": "editor/controls editor/panel params presets resources vstgui",
    "shell/oversampling": "dsp",
    "shell": "dsp editor params params/ids params/lookup presets sdk shell/oversampling",
    "tools/host": "platform sdk",
    "tools/bridge": "tools/host",
    "tools/common": "tools/host",
    "tools/audio": "tools/common tools/host",
    "tools/measuring": "platform tools/audio tools/common",
    "tools/banks": "params/ids platform presets sdk tools/common tools/host",
    "tools/commands": "editor params platform tools vstgui",
    "tools": "tools/commands",
    "bench": "dsp params/ids sdk shell",
    "tests": "dsp editor params platform presets sdk shell tools vstgui",
}
SDK = ("base/", "pluginterfaces/", "public.sdk/")
GENERATED = {"BitmapNumbers.h", "Product.h"}


def row_of(folder):
    """The row of MAY_INCLUDE that holds for a folder, or None."""
    while folder and folder not in MAY_INCLUDE:
        folder = folder.rpartition("/")[0]
    return folder or None


def complaint(file, header):
    """What is wrong about this file's including that header, or None."""
    if header in GENERATED:
        return None
    if not header.startswith(SDK) and not pathlib.Path(header).is_file():
        return "is not a path from the project's folder"
    row = row_of(file.parent.as_posix())
    seen = "sdk" if header.startswith(SDK) else row_of(str(pathlib.Path(header).parent))
    if seen == row or any(f"{seen}/".startswith(f"{name}/") for name in MAY_INCLUDE[row].split()):
        return None
    return f"is not for {row}/"


def main():
    failed = False
    for top in sorted({name.partition("/")[0] for name in MAY_INCLUDE}):
        for file in sorted(pathlib.Path(top).rglob("*")):
            if file.suffix not in (".h", ".cpp"):
                continue
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                include = re.match(r'\s*#\s*include ["<]([^">]*)([">])', line)
                if include and (include[2] == '"' or include[1].startswith(SDK)):
                    wrong = complaint(file, include[1])
                    if wrong:
                        print(f"{file}:{number}: {include[1]} {wrong}")
                        failed = True
    sys.exit(failed)


if __name__ == "__main__":
    main()
