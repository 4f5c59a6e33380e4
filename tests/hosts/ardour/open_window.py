#!/usr/bin/python3
"""Makes a saved Ardour session open the window of its plug-in when it is loaded.
Usage: open_window.py FOLDER"""
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

folder = Path(sys.argv[1])
document = folder / f"{folder.name}.ardour"
tree = ElementTree.parse(document)
session = tree.getroot()
(route, plugin), = ((route, processor) for route in session.find("Routes")
                    for processor in route.findall("Processor")
                    if processor.get("type") in ("lxvst", "vst3"))
extra = ElementTree.SubElement(session, "Extra")
ElementTree.SubElement(ElementTree.SubElement(extra, "UI"), "Window", {
    "name": f"P-{route.get('id')}-{plugin.get('id')}", "visible": "1", "custom-ui": "1",
    "x-off": "20", "y-off": "20", "x-size": "-1", "y-size": "-1"})
tree.write(document, encoding="UTF-8", xml_declaration=True)
