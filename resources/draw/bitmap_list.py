"""Reads bitmaps.txt."""
import os

RESOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


class Bitmap:
    def __init__(self, line):
        number, self.file, width, height, frames = line.split()
        self.number, self.frames = int(number), int(frames)
        self.width, self.height = int(width), int(height)

    def path(self, folder):
        return os.path.join(folder, self.file)


def read():
    with open(os.path.join(RESOURCES, "bitmaps.txt"), encoding="ascii") as lines:
        return [Bitmap(line) for line in (raw.split("#")[0].strip() for raw in lines) if line]
