#!/usr/bin/python3
"""Writes the plug-in's state, as Audacity keeps it with the effect's last settings, to a bank file.
Usage: saved_bank.py pluginsettings.cfg FILE.fxb"""
import base64
import re
import struct
import sys
from pathlib import Path

settings = Path(sys.argv[1]).read_text()
unique_id, chunk = re.search(
    r"/CurrentSettings\]\nUniqueID=(1517564982)\n(?:\w+=\d+\n)*Chunk=(.*)", settings).groups()
state = base64.b64decode(chunk)
# Magic, bytes that follow, kind, format, the plug-in's id and version, presets, unused, the state.
head = struct.pack(">4si4siiii128si", b"CcnK", 152 + len(state), b"FBCh", 2, int(unique_id),
                   0x01000100, 24, b"", len(state))
Path(sys.argv[2]).write_bytes(head + state)
