#!/usr/bin/python3
"""Prints the rate of a WAV or FLAC file. Usage: rate_of.py FILE"""
import sys
from pathlib import Path

from audio import shape_of

print(shape_of(Path(sys.argv[1]))[1])
