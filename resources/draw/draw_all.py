#!/usr/bin/python3
"""Redraws the editor's bitmaps into resources/bitmaps, and the icon and the installer's picture."""
import argparse
import functools
import multiprocessing
import os
import subprocess
import sys
import time

import numpy as np

import bitmap_list
import frame
import icon
import installer
import keys
import knobs
import labels
import lamps
import main_panel
import preset_row
import strips
from pixels import save

FIXED = {10000: strips, 10008: strips, 10009: strips, 10024: strips, 10007: frame, 10023: frame,
         10022: main_panel,
         10001: knobs, 10002: knobs, 10016: knobs, 10017: knobs,
         10013: labels, 10014: labels, 10015: labels, 10021: labels}

LAMPS = (10006, 10018)


def picture_of(bitmap, pool):
    if FIXED.get(bitmap.number) is knobs:
        frames = pool.map(functools.partial(knobs.draw, bitmap.number), range(bitmap.frames))
        return np.concatenate(frames, 0)
    if bitmap.number in FIXED:
        return FIXED[bitmap.number].draw(bitmap.number, bitmap.frames)
    module = preset_row if bitmap.number < 1000 else lamps if bitmap.number in LAMPS else keys
    return module.draw(bitmap.number, bitmap.frames, bitmap.width, bitmap.height)


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("numbers", nargs="*", type=int, help="only these bitmaps")
    arguments.add_argument("--into", default=bitmap_list.RESOURCES,
                           help="folder in place of resources/")
    arguments.add_argument("--fast", action="store_true", help="leave the files unoptimised")
    chosen = arguments.parse_args()

    with multiprocessing.Pool() as pool:
        draw_bitmaps(chosen, pool)
    if not chosen.numbers:
        print(icon.draw(chosen.into))
        print(installer.draw(chosen.into))


def draw_bitmaps(chosen, pool):
    for bitmap in bitmap_list.read():
        if chosen.numbers and bitmap.number not in chosen.numbers:
            continue
        start = time.time()
        picture = picture_of(bitmap, pool)
        if picture.shape[:2] != (bitmap.height, bitmap.width):
            sys.exit(f"{bitmap.number}: drawn {picture.shape[1]} by {picture.shape[0]}, "
                     f"listed {bitmap.width} by {bitmap.height}")
        path = bitmap.path(chosen.into)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        save(picture, path)
        if not chosen.fast:
            subprocess.run(["optipng", "-quiet", "-o3", "-nc", "-nb", "-np", "-strip", "all", path],
                           check=True)
        print(f"{bitmap.number:6} {bitmap.width:4} x {bitmap.height:<5} "
              f"{os.path.getsize(path):8} bytes {time.time() - start:6.1f} s")


if __name__ == "__main__":
    main()
