#!/usr/bin/python3
"""Reads channels, rate and length of WAV and FLAC files, and the samples of WAV files.
Usage, to print a file's rate: audio.py FILE"""
import struct
import sys
from pathlib import Path

import numpy


def samples_of(path):
    """(rate, array of frames by channels): integers are scaled to -1 .. 1, floats are unchanged."""
    data = path.read_bytes()
    assert data[:4] == b"RIFF" and data[8:12] == b"WAVE", f"{path} is not a WAV file"
    chunks, position = {}, 12
    while position + 8 <= len(data):
        size, = struct.unpack_from("<I", data, position + 4)
        chunks[data[position:position + 4]] = data[position + 8:position + 8 + size]
        position += 8 + size + size % 2
    tag, channels, rate, _, _, bits = struct.unpack_from("<HHIIHH", chunks[b"fmt "])
    if tag == 0xFFFE:  # WAVE_FORMAT_EXTENSIBLE: the tag is the start of the sub-format
        tag, = struct.unpack_from("<H", chunks[b"fmt "], 24)
    types = {(1, 16): "<i2", (3, 32): "<f4"}
    assert (tag, bits) in types, f"{path}: format {tag} with {bits} bits is not read here"
    samples = numpy.frombuffer(chunks[b"data"], types[tag, bits]).astype(numpy.float64)
    if tag == 1:
        samples /= 1 << (bits - 1)
    return rate, samples.reshape(-1, channels)


def shape_of(path):
    """(channels, rate, frames) of a WAV or a FLAC file."""
    data = path.read_bytes()
    if data[:4] != b"fLaC":
        rate, samples = samples_of(path)
        return samples.shape[1], rate, samples.shape[0]
    # STREAMINFO, from byte 8: 10 bytes of sizes, then 20 bits of rate, 3 of channels - 1, 5 of
    # bits - 1, 36 of frames.
    packed = int.from_bytes(data[18:26], "big")
    return (packed >> 41 & 7) + 1, packed >> 44, packed & (1 << 36) - 1


if __name__ == "__main__":
    print(shape_of(Path(sys.argv[1]))[1])
