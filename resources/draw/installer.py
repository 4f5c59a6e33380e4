#!/usr/bin/python3
"""Draws resources/installer-side.bmp, the picture on the installer's first and last page."""
import argparse
import os

import numpy as np
from PIL import Image

import bitmap_list
import icon
import look
from lettering import write
from pixels import paste, shrink, to_bytes
from plates import Plate
from shapes import cover

SIZE = (164, 314)
SCREWS = ((11, 11), (153, 11), (11, 303), (153, 303))
NAME_BASE = 62
LINE_BASES = (80, 92)
KNOB_MIDDLE = (82, 206)
KNOB_SHRINK = 6         # of the icon's sub-pixels


def knob():
    """The icon's knob without its plate, and its radius."""
    x, y, scale = icon.field(icon.SIDE)
    picture = icon.large()
    c = icon.SIDE / 2
    picture[..., 3] = cover(np.hypot(x - c, y - c) - look.RING_RADIUS, 1.0 / scale)
    return shrink(picture, KNOB_SHRINK), look.RING_RADIUS * scale / KNOB_SHRINK


def side():
    picture, radius = knob()
    plate = Plate(SIZE, look.GRAPHITE, seed=164)
    plate.edges()
    for number, (x, y) in enumerate(SCREWS):
        plate.screw(x, y, look.STRIP_SCREW_RADIUS, 25 + 50 * number)
    plate.knob(*KNOB_MIDDLE, radius, look.CAP_HEIGHT)
    result = plate.finish()
    middle = SIZE[0] / 2
    write(result, "ZKR T46", NAME_BASE, look.LETTER, size=look.CAPS_13, middle=middle, tracking=3.2)
    for base, line in zip(LINE_BASES, ("STEREO MASTERING", "EQUALISER")):
        write(result, line, base, look.LETTER_FAINT, middle=middle, tracking=1.2)
    half = picture.shape[0] // 2
    paste(result, picture, KNOB_MIDDLE[0] - half, KNOB_MIDDLE[1] - half)
    return result


def draw(folder):
    path = os.path.join(folder, "installer-side.bmp")
    Image.fromarray(to_bytes(side())[..., :3].copy()).save(path)
    return path


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--into", default=bitmap_list.RESOURCES,
                           help="folder in place of resources/")
    print(draw(arguments.parse_args().into))


if __name__ == "__main__":
    main()
