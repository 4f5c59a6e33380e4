#!/usr/bin/python3
"""Redraws the editor's bitmaps into resources/bitmaps, and the icon and the installer's picture."""
import argparse
import functools
import multiprocessing
import os
import subprocess
import time
from multiprocessing.pool import ThreadPool

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


def start_frames(bitmap, pool):
    """Starts drawing a bitmap; the result is a list of pictures to be stacked from the top. A
    knob's frames are drawn one by one, other bitmaps as a whole."""
    if FIXED.get(bitmap.number) is knobs:
        return pool.map_async(functools.partial(knobs.draw, bitmap.number), range(bitmap.frames), 4)
    return pool.map_async(picture_of, [bitmap])


def picture_of(bitmap):
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

    with multiprocessing.Pool() as pool, ThreadPool() as packers:
        draw_bitmaps(chosen, pool, packers)
    if not chosen.numbers:
        print(icon.draw(chosen.into))
        print(installer.draw(chosen.into))


def draw_bitmaps(chosen, pool, packers):
    start = time.time()
    bitmaps = [each for each in bitmap_list.read()
               if not chosen.numbers or each.number in chosen.numbers]
    # the largest first: optimising its file takes longest, and the others are drawn meanwhile
    bitmaps.sort(key=lambda each: each.width * each.height, reverse=True)
    frames = [start_frames(bitmap, pool) for bitmap in bitmaps]
    written = [packers.apply_async(write, (chosen, *each)) for each in zip(bitmaps, frames)]
    for bitmap, each in zip(bitmaps, written):
        size = each.get()
        print(f"{bitmap.number:6} {bitmap.width:4} x {bitmap.height:<5} {size:8} bytes "
              f"after {time.time() - start:6.1f} s", flush=True)


def write(chosen, bitmap, frames):
    """Waits for the frames and writes the bitmap's file; returns its size."""
    picture = np.concatenate(frames.get(), 0)
    if picture.shape[:2] != (bitmap.height, bitmap.width):
        raise ValueError(f"{bitmap.number}: drawn {picture.shape[1]} by {picture.shape[0]}, "
                         f"listed {bitmap.width} by {bitmap.height}")
    path = bitmap.path(chosen.into)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    save(picture, path)
    if not chosen.fast:
        subprocess.run(["optipng", "-quiet", "-o3", "-nc", "-nb", "-np", "-strip", "all", path],
                       check=True)
    return os.path.getsize(path)


if __name__ == "__main__":
    main()
