#!/usr/bin/python3
"""Compares a host's output with the sum of the expected files and prints the largest difference.
The exit code is 1 if that exceeds the tolerance, if rates or lengths differ, or if the output is
silent or has samples that are not finite."""
import argparse
import sys
from pathlib import Path

import numpy

from audio import samples_of

options = argparse.ArgumentParser(description=__doc__)
# A float's step just below full scale: whether a gain was set or has glided to its value changes
# the twelfth digit, which sometimes changes the rounding to float.
options.add_argument("--tolerance", type=float, default=2.0**-24)
options.add_argument("--skip", type=int, default=0, help="frames of silence before the result")
options.add_argument("--result", type=Path)
options.add_argument("--expected", nargs="+", type=Path)
options.add_argument("--changes", nargs="*", type=int, default=[],
                     help="frames after the silence at which something changed")
given = options.parse_args()

# Frames ignored around a change: hosts apply it within a block of its time, then gains glide for
# more than a second.
EARLY, LATE = 9000, 80000

rate, result = samples_of(given.result)
if not numpy.isfinite(result).all():
    sys.exit("some samples are not finite")
# The oversampling filters ring before an onset.
before = numpy.abs(result[:max(given.skip - 128, 0)]).max(initial=0)
if before > 1e-6:
    sys.exit(f"sound of {before:g} before the start")
result = result[given.skip:]
peak = numpy.abs(result).max()
if peak < 1e-3:
    sys.exit(f"no sound: peak {peak:g}")

expected = numpy.zeros(result.shape)
for path in given.expected:
    expected_rate, samples = samples_of(path)
    if expected_rate != rate or samples.shape != result.shape:
        sys.exit(f"{rate} Hz, {result.shape} instead of {expected_rate} Hz, {samples.shape}")
    expected += samples
difference = numpy.abs(result - expected)
for change in given.changes:
    difference[max(change - EARLY, 0):change + LATE] = 0
largest, frame = difference.max(), int(difference.max(axis=1).argmax())
unequal = int((difference > 0).any(axis=1).sum())
outside = f" except around {len(given.changes)} changes" if given.changes else ""
where = f" at frame {frame}, {unequal} unequal" if largest > 0 else ""
print(f"largest difference {largest:.3g}{where}, of {len(result)} frames{outside}, peak {peak:.3f}")
sys.exit(1 if largest > given.tolerance else 0)
