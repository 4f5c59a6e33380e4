#!/usr/bin/python3
"""Composes the bitmaps as the editor does, in each of its four layouts, with some settings."""
import argparse
import os

from PIL import Image, ImageDraw, ImageFont

import bitmap_list
import look
import strips

# Settings of one column: ring step and gain in dB of each band, then the switches
EQ_WARM = dict(high=(6, 1.5), mid=(0, 0.0), low=(7, 2.0), low_shelf=1, high_shelf=1, process=1)
EQ_CUT = dict(high=(2, 4.5), mid=(9, -3.0), low=(5, -1.25), low_shelf=0, high_shelf=1, process=1)
EQ_OUT = dict(high=(0, 0.0), mid=(4, 8.0), low=(8, -6.0), low_shelf=1, high_shelf=0, process=0)
EQ_EXTREME = dict(high=(1, 16.0), mid=(3, -16.0), low=(9, 0.5), low_shelf=0, high_shelf=0,
                  process=1)
PRE_GENTLE = dict(drive=3.0, hpf=1, output=-2.0, boost=1, phase=0, transformer=0, amplifier=0)
PRE_DRIVEN = dict(drive=12.0, hpf=7, output=-6.0, boost=0, phase=1, transformer=1, amplifier=1)

SCENES = {
    "mode0": dict(mode=0, columns=((EQ_WARM,), (EQ_CUT,)), link=1),
    "mode1": dict(mode=1, columns=((PRE_GENTLE, EQ_WARM), (PRE_DRIVEN, EQ_OUT)), ms=1, channel=4,
                  bypass=(1, 0)),
    "mode2": dict(mode=2, columns=((EQ_WARM, EQ_OUT), (EQ_CUT, EQ_EXTREME)), link=1, hover=1),
    "mode3": dict(mode=3, columns=((PRE_GENTLE, EQ_WARM, EQ_CUT), (PRE_DRIVEN, EQ_EXTREME, EQ_OUT)),
                  link=1, channel=1),
    "power-off": dict(mode=1, columns=((PRE_DRIVEN, EQ_WARM), (PRE_GENTLE, EQ_CUT)), link=1,
                      power=0),
}


class Editor:
    """The window of one layout, drawn control by control in the editor's order."""

    def __init__(self, scene, folder):
        self.scene = scene
        self.bitmaps = {b.number: b for b in bitmap_list.read()}
        self.pictures = {number: Image.open(bitmap.path(folder)).convert("RGBA")
                         for number, bitmap in self.bitmaps.items()}
        self.power = scene.get("power", 1)
        self.mode = scene["mode"]
        self.width = look.WINDOW_WIDTHS[self.mode]
        self.window = Image.new("RGBA", (self.width, look.FRAME[1]))
        self.draw()

    def blit(self, number, x, y, frame=0, cut=None):
        bitmap = self.bitmaps[number]
        height = bitmap.height // bitmap.frames
        w, h = cut or (bitmap.width, height)
        part = self.pictures[number].crop((0, frame * height, min(w, bitmap.width),
                                           frame * height + min(h, height)))
        self.window.alpha_composite(part, (x, y)) if x + part.width <= self.width else \
            self.window.alpha_composite(part.crop((0, 0, self.width - x, part.height)), (x, y))

    def blit_button(self, number, x, y, on, cut=None):
        """A button with the frames off, on, and on without power."""
        self.blit(number, x, y, 0 if not on else 1 if self.power else 2, cut)

    def draw(self):
        self.blit(10007, 0, 0)
        self.channel_label()
        x = look.FIRST_STRIP
        for side, columns in enumerate(self.scene["columns"]):
            for column in columns:
                (self.preamp if "drive" in column else self.equaliser)(x, look.STRIP_TOP, column)
                x += look.STRIP[0]
            if side == 0:
                self.blit(10024, x, look.STRIP_TOP)
                x += look.SEPARATOR_WIDTH
        self.main_panel(self.width - look.MAIN_PANEL[0])
        self.preset_row()

    def channel_label(self):
        row = (0, 1, 1, 2)[self.mode] + 3 * self.scene.get("ms", 0)
        right = (304, 554, 554, 804)[self.mode]
        self.blit(10023, *look.LABEL_AT, frame=row, cut=(right - look.LABEL_AT[0], look.LABEL[1]))

    def equaliser(self, x, y, settings):
        self.blit(10000, x, y)
        for band, overlay in (("high", 10013), ("mid", 10014), ("low", 10015)):
            step, gain = settings[band]
            vx, vy = x + look.COAX_VIEWS[band][0], y + look.COAX_VIEWS[band][1]
            at = (vx + look.COAX_IMAGE_AT[0], vy + look.COAX_IMAGE_AT[1])
            self.blit(10001, *at, frame=2 * step)
            self.blit(10002, *at, frame=int((gain + 16) / 32 * 128 + 0.5))
            self.lit_label(overlay, vx, vy, look.COAX_RECTS[step])
        self.blit_button(10004, x + 9, y + 372, settings["low_shelf"])
        self.blit_button(10005, x + 45, y + 372, settings["high_shelf"])
        self.blit_button(10003, x + 80, y + 372, settings["process"])
        self.blit(10006, x + 86, y + 346, settings["process"] if self.power else 0)

    def preamp(self, x, y, settings):
        self.blit(10009, x, y)
        for name in ("drive", "output"):
            vx, vy = look.DIAL_VIEWS[name]
            position = strips.level_position(settings[name])
            self.blit(10016, x + vx + look.DIAL_INSET, y + vy + look.DIAL_INSET,
                      frame=int(position * 100 + 0.5))
        vx, vy = look.DIAL_VIEWS["hpf"]
        self.blit(10017, x + vx + look.DIAL_INSET, y + vy + look.DIAL_INSET, frame=settings["hpf"])
        self.lit_label(10021, x + vx, y + vy, look.HPF_RECTS[settings["hpf"]])
        self.blit_button(10010, x + 20, y + 345, settings["boost"])
        self.blit_button(10026, x + 21, y + 381, settings["transformer"], cut=(40, 34))
        self.blit_button(10012, x + 61, y + 381, settings["amplifier"])
        self.blit_button(10011, x + 62, y + 345, settings["phase"])

    def lit_label(self, number, x, y, rect):
        self.window.alpha_composite(self.pictures[number].crop(rect), (x + rect[0], y + rect[1]))

    def main_panel(self, x):
        scene = self.scene
        self.blit(10022, x, 0)
        self.blit(10018, x + 3, 387, self.power)
        self.blit(10006, x + 17, 353, self.power)
        if self.power:
            self.blit(10019, x + 6, 172, scene.get("channel", 2))
        for y, on in ((123, scene.get("ms", 0)), (86, self.mode & 1), (12, scene.get("link", 0)),
                      (49, self.mode >> 1)):
            self.blit(10020, x + 5, y, on if self.power else 0)
        left, right = scene.get("bypass", (0, 0))
        for y, on in ((305, right), (286, left)):
            self.blit(10020, x + 5, y, 0, cut=(44, 22))
            if on and self.power:
                self.blit(10020, x + 5, y, 1, cut=(44, 22))
        self.blit(10025, x + 5, 462, scene.get("hover", 0))

    def preset_row(self):
        hover = self.scene.get("hover", 0)
        self.text("Factory Default", (139, 488, 255, 504), (0x24, 0x24, 0x20))
        for number, x, y in ((995, 271, 489), (990, 53, 489), (991, 2, 489), (992, 15, 488),
                             (990, 120, 489), (991, 68, 489), (993, 79, 488), (990, 327, 489),
                             (991, 304, 489), (990, 366, 489),
                             (991, 344, 489)):
            self.blit(number, x, y, hover)
        self.blit(989, 378 if self.mode == 0 else self.width - 22, 488, hover)
        if self.mode:
            left = 520 if self.mode == 3 else 395
            self.text("Click to enable QB11s", (left, 488, left + 215, 504), (222, 223, 222))

    def text(self, words, rect, rgb):
        pen = ImageDraw.Draw(self.window)
        font = ImageFont.truetype("DejaVuSansCondensed.ttf", 10)
        left, top, right, bottom = pen.textbbox((0, 0), words, font=font)
        pen.text(((rect[0] + rect[2] - right - left) // 2, (rect[1] + rect[3] - bottom - top) // 2),
                 words, rgb, font)


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("into", nargs="?",
                           default=os.path.join(bitmap_list.RESOURCES, "..", "build", "mockups"))
    arguments.add_argument("--from", dest="source", default=bitmap_list.RESOURCES,
                           help="folder in place of resources/")
    arguments.add_argument("--zoom", type=int, default=1, help="whole enlargement")
    chosen = arguments.parse_args()
    os.makedirs(chosen.into, exist_ok=True)
    for name, scene in SCENES.items():
        window = Editor(scene, chosen.source).window.convert("RGB")
        if chosen.zoom > 1:
            window = window.resize((window.width * chosen.zoom, window.height * chosen.zoom),
                                   Image.NEAREST)
        path = os.path.join(chosen.into,
                            f"{name}.png" if chosen.zoom == 1 else f"{name}-x{chosen.zoom}.png")
        window.save(path)
        print(path)


if __name__ == "__main__":
    main()
