#!/usr/bin/python3
"""Writes a 16-bit WAV file with decaying low notes, a high tone and noise, different in left and
right; "mono" is the left channel alone, "doubled" the left one in both channels.
Usage: make_audio.py FILE RATE SECONDS stereo|mono|doubled [SILENCE]     SILENCE in samples"""
import sys
import wave

import numpy

path, rate, seconds, kind = sys.argv[1], int(sys.argv[2]), float(sys.argv[3]), sys.argv[4]
time = numpy.arange(int(rate * seconds)) / rate
noise = numpy.random.default_rng(46)
columns = []
for channel in range(2):
    note = numpy.sin(2 * numpy.pi * (55 + 22 * channel) * time) * numpy.exp(-4 * (time % 0.5))
    tone = numpy.sin(2 * numpy.pi * (2500 + 800 * channel) * time)
    columns.append(0.5 * note + 0.05 * tone + 0.1 * noise.uniform(-1, 1, len(time)))
left, right = columns
columns = {"stereo": [left, right], "mono": [left], "doubled": [left, left]}[kind]
silence = int(sys.argv[5]) if len(sys.argv) > 5 else 0
samples = numpy.round(numpy.stack(columns, axis=1) * 32767).astype("<i2")
samples = numpy.pad(samples, ((silence, 0), (0, 0)))
with wave.open(path, "wb") as file:
    file.setnchannels(len(columns))
    file.setsampwidth(2)
    file.setframerate(rate)
    file.writeframes(samples.tobytes())
