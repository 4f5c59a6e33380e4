#!/usr/bin/python3
"""Draws resources/icon.ico: one gain knob on a graphite plate, its groove lit up to the pointer.

From 48 pixels on it is the editor's cap in a knurled ring, under the editor's light. Below that its
flutes and knurls would blur, so the small sizes are drawn from fewer and heavier shapes.
"""
import argparse
import io
import os
import struct

import numpy as np
from PIL import Image
from scipy.ndimage import gaussian_filter

import bitmap_list
import look
from pixels import light, over, shrink, tint, to_bytes, with_alpha
from plates import brushed
from shade import Surface, cast_shadow
from shapes import box, cover, disc, slope, spoke
from turned import arc, cap, inlay, knurl, profile, rings

FINE = 768                      # sub-pixels of a side, a multiple of every size
PNG_FROM = 128                  # sizes from here on are stored as PNG, smaller ones as bitmaps
POINTER = 60                    # degrees; the groove is lit up to it

# The large form, in pixels of the editor
SIDE = 76.0
MARGIN = 1.5                    # of the plate
ROUND = 13.0
CHAMFER = (1.6, 1.1)            # width and depth of the plate's edge
RING_INNER = 21.2
RING_PROFILE = ((21.2, 7.3), (22.5, 8.0), (27.0, 8.0), (28.6, 7.25), (31.0, 3.65))
LARGE_SIZES = (48, 64, 128, 256)

# The small forms, in pixels of the icon
#            corner  groove:         cap     pointer:
#                    inner   outer           start   end     width
SMALL = {16: (3.0,   5.4,    7.2,    4.9,    0.0,    4.6,    1.8),
         24: (4.5,   8.0,    10.6,   7.2,    1.2,    6.8,    2.2),
         32: (6.0,   10.6,   14.0,   9.8,    2.0,    9.2,    2.8)}
PLATE_TOP = (0x4A, 0x4D, 0x52)
PLATE_FOOT = (0x22, 0x24, 0x27)
RIM = (0x7C, 0x81, 0x88)        # keeps the plate's edge visible on black
CAP_TOP = (0xA0, 0xA4, 0xAA)
CAP_FOOT = (0x50, 0x54, 0x5A)


def field(side):
    """x and y of each sub-pixel for a picture of this side length, and sub-pixels per unit."""
    scale = FINE / side
    across = (np.arange(FINE, dtype=np.float32) + 0.5) / scale
    return (*np.meshgrid(across, across), scale)


def large():
    """The editor's knob, modelled and lit, at FINE by FINE sub-pixels."""
    x, y, scale = field(SIDE)
    c = SIDE / 2
    r = np.hypot(x - c, y - c)
    plate = box(x, y, MARGIN, MARGIN, SIDE - 2 * MARGIN, SIDE - 2 * MARGIN, ROUND)
    s = Surface(x, y, scale, look.GRAPHITE)
    s.brightness = 1.5 - 0.5 * y / SIDE
    width, depth = CHAMFER
    s.height -= depth * slope(plate, -width, 0)
    on_ring = r < look.RING_RADIUS
    around = np.arctan2(x - c, c - y) - np.radians(POINTER)
    ring = profile(r, RING_PROFILE) - knurl(r, around, look.RING_RADIUS, look.KNURL_DEPTH)
    s.height = np.where(on_ring, ring,
                        s.height)
    s.height = np.where(r < RING_INNER, look.GROOVE_FLOOR, s.height)
    s.paint(cover(r - look.RING_RADIUS, 0.3), look.ANODISED)
    s.paint(cover(r - RING_INNER, 0.3), look.PIT)
    s.turned_about(c, c, on_ring.astype(np.float32))
    rings(s, c, c, RING_INNER + 1, look.RING_RADIUS - 3, seed=7)
    pointer, edge = cap(s, c, c, POINTER, look.CAP_RADIUS, look.CAP_FACE)
    above = np.where(on_ring, look.CAP_HEIGHT, 0).astype(np.float32)
    rgb = s.picture(np.where(on_ring, 1.0, cast_shadow(above, scale, onto=np.zeros_like(above))))
    grain = np.repeat(np.repeat(brushed(FINE // 3, FINE // 3, seed=46), 3, 0), 3, 1)
    rgb = rgb * np.where(on_ring, 1.0, grain)[..., None]
    picture = with_alpha(rgb, cover(plate, 1.0 / scale))
    rim = 0.55 * cover(np.abs(plate + 0.5) - 0.5, 0.5) * cover(plate, 1.0 / scale)
    picture = over(picture, tint(RIM, rim))
    picture = inlay(picture, pointer, edge, scale)
    return lit(picture, x, y, c, scale, look.ARC_INNER - 0.2, look.ARC_OUTER + 0.4,
               r > look.CAP_RADIUS)


def small(size):
    """The same as flat shapes, lit from above."""
    corner, inner, outer, radius, start, end, width = SMALL[size]
    x, y, scale = field(size)
    c = size / 2
    r = np.hypot(x - c, y - c)
    down = y / size
    plate = box(x, y, 0, 0, size, size, corner)
    picture = with_alpha(blend(PLATE_TOP, PLATE_FOOT, down), cover(plate, 1.0 / scale))
    rim = 0.6 * cover(np.abs(plate + 0.5) - 0.5, 0.2) * cover(plate, 1.0 / scale)
    picture = over(picture, tint(RIM, rim))
    picture = over(picture, tint((0, 0, 0), 0.85 * cover(r - outer, 0.3)))
    face = blend(CAP_TOP, CAP_FOOT, np.clip((y - c + radius) / (2 * radius), 0, 1))
    picture = over(picture, with_alpha(face, cover(disc(x, y, c, c, radius), 0.2)))
    line = spoke(x, y, c, c, POINTER, start, end, width)
    picture = over(picture, tint((0, 0, 0), 0.55 * cover(line - 0.45, 0.5) * (r < radius)))
    picture = over(picture, tint(look.POINTER, cover(line, 0.3) * (r < radius)))
    return lit(picture, x, y, c, scale, inner, outer, r > radius)


def lit(picture, x, y, c, scale, inner, outer, groove):
    """Adds the light in the groove, from straight up to the pointer, and its glow."""
    lamp = cover(arc(x, y, c, c, POINTER, inner, outer), 0.5) * groove
    picture = over(picture, tint(look.LIT_ARC, lamp))
    reach = look.ARC_GLOW_REACH * (outer - inner) / (look.ARC_OUTER - look.ARC_INNER)
    metal = picture[..., 3] > 0.99
    return light(picture, look.LIT_DEEP,
                 look.ARC_GLOW * gaussian_filter(lamp, reach * scale) * metal)


def blend(top, foot, share):
    top, foot = np.array(top, np.float32) / 255, np.array(foot, np.float32) / 255
    return top + (foot - top) * share[..., None]


def pictures():
    """Size and picture, from the smallest to the largest."""
    for size in SMALL:
        yield size, shrink(small(size), FINE // size)
    knob = large()
    for size in LARGE_SIZES:
        yield size, shrink(knob, FINE // size)


def image(size, picture):
    """One image of an icon file."""
    data = to_bytes(picture)
    if size >= PNG_FROM:
        png = io.BytesIO()
        Image.fromarray(data).save(png, "PNG", optimize=True)
        return png.getvalue()
    # A bottom-up BGRA bitmap, then a mask of one bit per pixel for systems without alpha; the
    # height in the header counts the rows of both.
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    colours = data[::-1, :, (2, 1, 0, 3)].tobytes()
    row = -(-size // 32) * 32
    hidden = np.zeros((size, row), bool)
    hidden[:, :size] = data[::-1, :, 3] < 128
    return header + colours + np.packbits(hidden, axis=1).tobytes()


def icon(images):
    """An icon file of (size, bytes) pairs."""
    at = 6 + 16 * len(images)
    head = struct.pack("<HHH", 0, 1, len(images))
    for size, data in images:
        head += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), at)
        at += len(data)
    return head + b"".join(data for _, data in images)


def draw(folder):
    images = [(size, image(size, picture)) for size, picture in pictures()]
    path = os.path.join(folder, "icon.ico")
    with open(path, "wb") as file:
        file.write(icon(images))
    return path


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--into", default=bitmap_list.RESOURCES,
                           help="folder in place of resources/")
    print(draw(arguments.parse_args().into))


if __name__ == "__main__":
    main()
