#!/usr/bin/python3
"""Changes a saved Ardour session with one plug-in. "window" opens the plug-in's window when the
session is loaded; the others damage the plug-in's state: "half" drops the second half of its bytes,
"empty" drops all of them, "noise" replaces them with random ones, "torn" breaks the base64 text.
Usage: edit_session.py FOLDER window|half|empty|noise|torn"""
import base64
import random
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

folder, how = Path(sys.argv[1]), sys.argv[2]
document = folder / f"{folder.name}.ardour"
tree = ElementTree.parse(document)
session = tree.getroot()
(route, plugin), = ((route, processor) for route in session.find("Routes")
                    for processor in route.findall("Processor")
                    if processor.get("type") in ("lxvst", "vst3"))
if how == "window":
    extra = ElementTree.SubElement(session, "Extra")
    ElementTree.SubElement(ElementTree.SubElement(extra, "UI"), "Window", {
        "name": f"P-{route.get('id')}-{plugin.get('id')}", "visible": "1", "custom-ui": "1",
        "x-off": "20", "y-off": "20", "x-size": "-1", "y-size": "-1"})
else:
    chunk, = plugin.iter("chunk")
    state = base64.b64decode(chunk.text)
    assert len(state) > 40000, f"a state of {len(state)} bytes"
    chunk.text = {"half": base64.b64encode(state[:len(state) // 2]).decode(),
                  "empty": "",
                  "noise": base64.b64encode(random.Random(46).randbytes(len(state))).decode(),
                  "torn": chunk.text[:1001] + "%%%"}[how]
tree.write(document, encoding="UTF-8", xml_declaration=True)
