#!/usr/bin/python3
"""Spoils the plug-in's state in a saved Ardour session: half drops the later half of the bytes, empty
all of them, noise puts others in their place, torn breaks the text that carries them.
Usage: damage_state.py FOLDER half|empty|noise|torn"""
import base64
import random
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

folder, how = Path(sys.argv[1]), sys.argv[2]
document = folder / f"{folder.name}.ardour"
tree = ElementTree.parse(document)
spoilt = 0
for chunk in tree.iter("chunk"):
    state = base64.b64decode(chunk.text)
    assert len(state) > 40000, f"a state of {len(state)} bytes"
    chunk.text = {
        "half": lambda: base64.b64encode(state[:len(state) // 2]).decode(),
        "empty": lambda: "",
        "noise": lambda: base64.b64encode(random.Random(46).randbytes(len(state))).decode(),
        "torn": lambda: chunk.text[:1001] + "%%%",
    }[how]()
    spoilt += 1
assert spoilt == 1, f"{spoilt} states instead of one"
tree.write(document, encoding="UTF-8", xml_declaration=True)
