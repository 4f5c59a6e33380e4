#!/usr/bin/python3
"""Checks the editor's bitmaps by measuring their pixels: sizes, labels, pointers, states and seams.

Usage: artwork_test.py RESOURCES_FOLDER [unittest arguments]. Positions and expected directions
are those of the editor's test or written out here; the program that draws has only its step labels
looked at.
"""
import itertools
import re
import sys
import unittest
from pathlib import Path

import numpy as np
from PIL import Image

RESOURCES = ""

# number: (width, height, frames)
BITMAPS = {
    989: (12, 45, 3), 990: (12, 42, 3), 991: (12, 42, 3), 992: (36, 45, 3), 993: (42, 45, 3),
    995: (31, 70, 5), 10000: (125, 448, 1), 10001: (71, 1704, 24), 10002: (71, 9159, 129),
    10003: (36, 162, 3), 10004: (37, 162, 3), 10005: (35, 162, 3), 10006: (21, 44, 2),
    10007: (940, 505, 1), 10008: (125, 448, 1), 10009: (125, 448, 1), 10010: (42, 102, 3),
    10011: (42, 102, 3), 10012: (42, 102, 3), 10013: (121, 101, 1), 10014: (121, 101, 1),
    10015: (121, 101, 1), 10016: (82, 8282, 101), 10017: (82, 984, 12), 10018: (49, 152, 2),
    10019: (47, 460, 5), 10020: (44, 72, 2), 10021: (112, 112, 1), 10022: (89, 487, 1),
    10023: (771, 192, 6), 10024: (13, 448, 1), 10025: (46, 57, 3), 10026: (42, 102, 3),
}
TOTAL_LIMIT = 3 * 1000 * 1000


def click_areas(knob):
    """Of a knob's labels: left, top, right, bottom, as the editor's own test expects them."""
    table = Path(__file__).parents[1] / "editor/controls.txt"
    rows = (line.split() for line in table.read_text("utf-8").splitlines())
    return [tuple(map(int, row[2:])) for row in rows if row[:2] == ["label", knob]]


COAX_RECTS, DIAL_RECTS = click_areas("band"), click_areas("dial")
# overlay: (strip, view's corner on the strip, label rectangles, knob's centre in the view, radius
# outside which there are no scale marks)
OVERLAYS = {
    10013: (10000, (2, 36), COAX_RECTS, (60.5, 47.5), 36.7),
    10014: (10000, (2, 138), COAX_RECTS, (60.5, 47.5), 36.7),
    10015: (10000, (2, 240), COAX_RECTS, (60.5, 47.5), 36.7),
    10021: (10009, (7, 128), DIAL_RECTS, (56.0, 56.0), 32.5),
}
# strip: (frames with a pointer, first direction, degrees per frame, radii between which the pointer
# is measured, tolerance, radii of the metal around it or none)
POINTERS = {
    10001: (range(0, 20, 2), 0, 30, (27.5, 32.0), 0.6, None),
    10017: (range(12), 0, 30, (20.5, 26.5), 0.6, (5.0, 12.5)),
    10002: (range(129), -150, 300 / 128, (4.2, 9.6), 1.3, (4.0, 9.0)),
    10016: (range(101), -150, 3, (7.0, 13.5), 0.7, (5.0, 14.0)),
}
# radii within which a gain's pointer crosses from its cap to the scale
NEEDLES = {10002: (10.0, 18.5), 10016: (16.0, 26.5)}
BUTTONS = (989, 990, 991, 992, 993, 995, 10003, 10004, 10005, 10006, 10010, 10011, 10012, 10018,
           10020, 10025, 10026)
# caption: (bitmap, left, right, base line, or none where it is not aligned with others); capitals
# are 7 high
CAPTIONS = {
    **{f"{knob} of {strip}": (strip, 9, 9 + width, base) for strip, names in
       ((10000, (("HIGH", 23), ("MID", 18), ("LOW", 22))),
        (10009, (("DRIVE", 28), ("HPF", 20), ("OUT", 20))))
       for (knob, width), base in zip(names, (40, 142, 244))},
    **{name: (10000, left, left + 30, 424) for name, left in
       (("LOW key", 14), ("HIGH key", 48), ("EQ IN", 82))},
    **{name: (10022, 50, 86, base) for name, base in
       (("LINK", 26), ("2xT46", 63), ("QB11", 100), ("M/S", 137), ("MID", 186), ("LEFT", 204),
        ("STEREO", 222), ("RIGHT", 240), ("SIDE", 258), ("L", 300), ("R", 319))},
    "BYPASS": (10022, 8, 48, 282), "BOTH": (10022, 12, 42, 340), "POWER": (10022, 8, 46, 451),
    "INFO": (10025, 8, 38, 13), "BANK": (992, 4, 32, 11), "PRESET": (993, 6, 37, 11),
}
CONTRAST = 4.5
# a gain knob's still scale: decibels with a long mark, degrees a decibel, radii of the marks
GAIN_MARKS, GAIN_DEGREES, GAIN_RADII = range(-16, 17, 4), 300 / 32, (16.8, 18.3)
# the level knobs' centres on their strip, decibels with a figure, radii of ticks and figures
LEVEL_CENTRES = {"DRIVE": (63.0, 85.0), "OUT": (63.0, 286.0)}
LEVEL_FIGURES, LEVEL_TICKS, LEVEL_RADII = (0, 2, 4, 6, 8, 12, 16), (29.3, 31.3), (33.5, 47.0)
LAMPS = (10003, 10004, 10005, 10010, 10011, 10012, 10026)
# layout: right end of the channel label's view, and left and right ends of each name's strips
LAYOUTS = [(304, (42, 167), (180, 305)), (554, (42, 292), (305, 555)), (804, (42, 417), (430, 805))]


def read_list():
    rows = [line.split("#")[0].split()
            for line in Path(RESOURCES, "bitmaps.txt").read_text("ascii").splitlines()]
    return {int(row[0]): (row[1], *map(int, row[2:])) for row in rows if row}


def path(number):
    return Path(RESOURCES, read_list()[number][0])


def picture(number):
    """Red, green, blue and alpha, 0 to 255, as floats."""
    return np.asarray(Image.open(path(number)).convert("RGBA"), np.float64)


def frames(number):
    data = picture(number)
    return data.reshape(BITMAPS[number][2], -1, data.shape[1], 4)


def brightness(data):
    """Luma of a picture over black."""
    return (data[..., :3] @ (0.299, 0.587, 0.114)) * data[..., 3] / 255


def luminance(data):
    """Relative luminance of opaque sRGB, as for contrast ratios."""
    c = data[..., :3] / 255
    linear = np.where(c <= 0.04045, c / 12.92, ((c + 0.055) / 1.055) ** 2.4)
    return linear @ (0.2126, 0.7152, 0.0722)


def contrast(area):
    """Of the ink in an area, the mean of the pixels over half its brightness, to the metal."""
    light = luminance(area).ravel()
    metal, ink = np.median(light[light <= np.median(light)]), np.sort(light)[-3:].mean()
    return (light[light > (metal + ink) / 2].mean() + 0.05) / (metal + 0.05)


def laid_over(below, above):
    a = above[..., 3:] / 255
    return above[..., :3] * a + below[..., :3] * (1 - a)


def around(centre, left, top, width, height):
    """Of each pixel in a rectangle, relative to the centre: x, y, radius, and direction in degrees
    clockwise from straight up."""
    x, y = np.meshgrid(np.arange(width) + left + 0.5 - centre[0],
                       np.arange(height) + top + 0.5 - centre[1])
    return x, y, np.hypot(x, y), np.degrees(np.arctan2(x, -y))


def step_label(hz):
    """17k5 for 17500 Hz."""
    thousands, rest = divmod(hz, 1000)
    return "OFF" if hz < 0 else f"{thousands}k{rest // 100 or ''}" if thousands else str(hz)


def level_degrees(db):
    """Where a level knob points at a gain: its law, from straight up."""
    x = 0.5 + abs(db) / 32
    p = -8.60583 * x ** 4 + 30.0348 * x ** 3 - 39.2757 * x ** 2 + 23.4886 * x - 4.64187
    return np.sign(db) * (p - 0.5) * 300


def turned(degrees):
    return (degrees + 180) % 360 - 180


class Artwork(unittest.TestCase):
    def test_list_and_folder_hold_every_bitmap_in_its_size(self):
        listed = read_list()
        self.assertEqual({number: row[1:] for number, row in listed.items()}, BITMAPS)
        self.assertEqual({"bitmaps/" + file.name for file in Path(RESOURCES, "bitmaps").iterdir()},
                         {row[0] for row in listed.values()})
        self.assertLess(sum(path(number).stat().st_size for number in BITMAPS), TOTAL_LIMIT)
        for number, (width, height, count) in BITMAPS.items():
            with Image.open(path(number)) as image:
                self.assertEqual((image.format, image.size, height % count),
                                 ("PNG", (width, height), 0), number)
                self.assertIn(image.mode, ("RGB", "RGBA"), number)
                self.assertFalse(image.info.get("interlace"), number)

    def test_step_labels_name_the_frequencies_that_are_heard(self):
        sys.path.insert(0, str(Path(RESOURCES, "draw")))
        import look
        header = Path(RESOURCES, "../params/lookup/FrequencySteps.h").read_text("ascii")
        tables = {name: [int(float(hz)) for hz in values.split(",")]
                  for name, values in re.findall(r"k(\w+)StepsHz\{\{([^}]*)\}\}", header)}
        labels = {name.title(): texts for name, texts in look.COAX_LABELS.items()}
        labels["HighPass"] = look.HPF_LABELS
        shown = {name: tuple(map(step_label, table)) for name, table in tables.items()}
        self.assertEqual(shown, labels)

    def test_lit_labels(self):
        """Each is inside its click area, on its pointer's ray, and covers the unlit one exactly."""
        for overlay, (strip, (left, top), rects, centre, clear) in OVERLAYS.items():
            lit = picture(overlay)
            plate = picture(strip)[top:top + lit.shape[0], left:left + lit.shape[1]]
            gain = (laid_over(plate, lit) - plate[..., :3]) @ (0.299, 0.587, 0.114)
            self.assertGreater(gain[lit[..., 3] > 200].mean(), 45, f"{overlay} does not stand out")
            outside = lit[..., 3] > 0
            for step, (left, top, right, bottom) in enumerate(rects):
                name = f"{overlay} step {step}"
                area = np.s_[top:bottom, left:right]
                outside[area] = False
                a, unlit = lit[area][..., 3] / 255, brightness(plate)[area]
                self.assertGreater((a > 0).sum(), 15, f"{name}: no label")
                x, y, radius, _ = around(centre, left, top, a.shape[1], a.shape[0])
                direction = np.degrees(np.arctan2((a * x).sum(), -(a * y).sum()))
                self.assertLess(abs(turned(direction - 30 * step)), 8.5,
                                f"{name}: label off its ray")
                free = radius > clear
                metal = np.median(unlit[(a == 0) & free])
                ink = np.median(unlit[a > 0.9]) if (a > 0.9).any() else unlit[a > 0].max()
                self.assertGreater(ink - metal, 40, f"{name}: unlit label illegible")
                # the coverage of the unlit ink, measured on the plate, must equal the overlay's
                read = (unlit - metal) / (ink - metal)
                self.assertFalse(((read > 0.30) & (a == 0) & free).any(),
                                 f"{name}: unlit ink is not covered")
                self.assertFalse(((a > 0.40) & (read < 0.02) & free).any(),
                                 f"{name}: lit where there is no ink")
                self.assertLess(np.abs(read - a)[a > 0.5].max(), 0.25, f"{name}: labels differ")
            self.assertFalse(outside.any(), f"{overlay}: ink outside every click area")

    def test_lettering_is_legible_and_aligned(self):
        """Contrast of captions and figures, base lines, and the gap between marks and labels."""
        found = {}
        for name, (number, left, right, base) in CAPTIONS.items():
            area = picture(number)[base - 8:base + 1, left:right]
            found[name] = contrast(area)
            rows = brightness(area).max(1)
            inked = np.flatnonzero(rows > (rows.max() + np.median(brightness(area))) / 2)
            self.assertLessEqual(abs(inked[0] - 1) + abs(inked[-1] - 7), 1, f"{name}: base line")
        for overlay, (strip, (x, y), rects, centre, clear) in OVERLAYS.items():
            height, width = picture(overlay).shape[:2]
            plate = picture(strip)[y:y + height, x:x + width]
            light = brightness(plate)
            dx, dy, radius, at = around(centre, 0, 0, width, height)
            gaps = []
            for step, (left, top, right, bottom) in enumerate(rects):
                area = np.s_[top:bottom, left:right]
                outside = radius[area] > clear
                metal = np.median(light[area])
                found[f"{overlay} step {step}"] = contrast(plate[area][outside][None])
                label = (light[area] > metal + 45) & outside
                mark = (radius < clear) & (radius > clear - 4)
                mark &= np.abs(turned(at - 30 * step)) < 6
                weight = np.where(mark, light - metal - 15, 0).clip(0)
                mark_x, mark_y = ((weight * each).sum() / weight.sum() for each in (dx, dy))
                gaps.append(np.hypot(dx[area] - mark_x, dy[area] - mark_y)[label].min())
            print(f"{overlay}: marks are {min(gaps):.2f} to {max(gaps):.2f} from their labels")
            self.assertLessEqual(np.ptp(gaps), 1, f"{overlay}: {np.round(gaps, 2)}")
        print("contrast:", ", ".join(f"{name} {ratio:.2f}" for name, ratio in found.items()))
        for name, ratio in found.items():
            self.assertGreaterEqual(ratio, CONTRAST, name)

    def test_gain_scale(self):
        """Its long marks stand where the pointer stands at that gain, and never change."""
        knob = frames(10002)
        still = np.median(brightness(knob), 0)
        _, _, r, at = around((35.5, 35.5), 0, 0, 71, 71)
        for db in GAIN_MARKS:
            away = turned(at - db * GAIN_DEGREES)
            near = (r > GAIN_RADII[0]) & (r < GAIN_RADII[1]) & (np.abs(away) < 4.5)
            ink = (still - still[near].min()) * near
            self.assertGreater(ink.max(), 60, f"{db} dB: no mark")
            self.assertLess(abs((ink * away).sum() / ink.sum()), 1.0, f"{db} dB: mark is off")
        gains = np.linspace(-16, 16, len(knob))
        away = np.abs(turned(at - (gains * GAIN_DEGREES)[:, None, None]))
        moved = np.abs(brightness(knob) - still) * ((r > 17.5) & (r < 26) & (away > 9))
        self.assertLess(moved.max(), 12, "the scale moves")
        figures = knob[64][..., :3][(r > 20.5) & (r < 26)]
        self.assertGreater(contrast(figures), CONTRAST)

    def test_level_scales(self):
        """A tick at each decibel where the knob points at it, and legible figures beside them."""
        plate = picture(10009)
        light = brightness(plate)
        for knob, centre in LEVEL_CENTRES.items():
            x, y, r, at = around(centre, 0, 0, *light.shape[::-1])
            ring = (r > LEVEL_TICKS[0]) & (r < LEVEL_TICKS[1])
            found, gaps = {}, {}
            for db in range(-16, 17):
                away = turned(at - level_degrees(db))
                near = ring & (np.abs(away) < 3.2)
                ink = (light - np.median(light[ring]) - 15).clip(0) * near
                self.assertGreater(ink.max(), 40, f"{knob} {db} dB: no tick")
                self.assertLess(abs((ink * away).sum() / ink.sum()), 1.0, f"{knob} {db} dB: tick")
                if abs(db) in LEVEL_FIGURES:
                    area = (r > LEVEL_RADII[0]) & (r < LEVEL_RADII[1])
                    area &= np.abs(away) < (7 if abs(db) <= 8 else 12)
                    found[db] = contrast(plate[area][None])
                    end = LEVEL_RADII[0] * np.exp(1j * np.radians(level_degrees(db) - 90))
                    gaps[db] = np.abs(x + 1j * y - end)[
                        area & (light > np.median(light[area]) + 45)].min()
            print(f"{knob}: figures are {min(gaps.values()):.2f} to {max(gaps.values()):.2f} from "
                  "their ticks; contrast:", ", ".join(f"{db} dB {ratio:.2f}"
                                                      for db, ratio in found.items()))
            self.assertGreaterEqual(min(found.values()), CONTRAST, knob)
            self.assertLessEqual(np.ptp(list(gaps.values())), 1, f"{knob}: {gaps}")

    def test_gain_pointers_reach_their_scale(self):
        """At every gain the pointer is bright from its cap's edge to the marks."""
        for number, (inner, outer) in NEEDLES.items():
            strip = brightness(frames(number))
            size = strip.shape[-1]
            _, _, r, at = around((size / 2, size / 2), 0, 0, size, size)
            turn = (np.arange(len(strip)) / (len(strip) - 1) - 0.5) * 300
            aside = np.abs(np.radians(turned(at - turn[:, None, None]))) * r
            least = min(np.where((aside < 1) & (np.abs(r - radius) < 0.8), strip, 0)
                        .max((1, 2)).min() for radius in np.arange(inner, outer, 0.5))
            print(f"{number}: at {inner} to {outer} the pointer's least brightness is {least:.0f}")
            self.assertGreater(least, 150, number)

    def test_pointers(self):
        """They point to their ticks and turn around the centre; the metal around them is still."""
        for number, (chosen, first, step, (inner, outer), tolerance, metal) in POINTERS.items():
            strip = brightness(frames(number))[list(chosen)]
            expected = first + step * np.arange(len(strip))
            size = strip.shape[-1]
            x, y, r, at = around((size / 2, size / 2), 0, 0, size, size)
            # The difference from the median frame is the pointer; the dark seam on both its sides
            # is symmetric and does not shift the centroid.
            more = strip - np.median(strip, 0)
            # a window that is smooth at its edges
            window = np.sin(np.pi * np.clip((r - inner) / (outer - inner), 0, 1)) ** 2
            weight = more * window * (np.abs(turned(at - expected[:, None, None])) < 30)
            self.assertGreater(np.where(weight > 50, weight, 0).sum((1, 2)).min(), 0,
                               f"{number}: no pointer")
            cx, cy = ((weight * each).sum((1, 2)) / weight.sum((1, 2)) for each in (x, y))
            error = turned(np.degrees(np.arctan2(cx, -cy)) - expected)
            self.assertLess(np.abs(error).max(), tolerance, number)
            self.assertLess(np.abs(np.diff(error)).max(), 1.0, f"{number}: jitter")
            self.assertLess(np.abs(error[np.abs(turned(expected)) < 0.1]).max(), 0.3,
                            f"{number}: off zero")
            self.assertLess(np.ptp(np.hypot(cx, cy)), 0.5,
                            f"{number}: the pointer changes its radius")
            # the centre of the circle fitted to the centroids
            a = np.column_stack([2 * cx, 2 * cy, np.ones(len(cx))])
            off = np.linalg.lstsq(a, cx ** 2 + cy ** 2, rcond=None)[0][:2]
            self.assertLess(np.hypot(*off), 0.12, f"{number}: wobble")
            for k in range(len(strip) - 1 if metal else 0):
                away = np.minimum(*(np.abs(turned(at - expected[j])) for j in (k, k + 1)))
                face = (r > metal[0]) & (r < metal[1]) & (away > 40)
                self.assertLess(np.abs(strip[k + 1] - strip[k])[face].max(), 2.5,
                                f"{number} frame {k}: flickers")

    def test_states_are_distinguishable(self):
        for number in BUTTONS:
            strip = frames(number)
            for j, k in itertools.combinations(range(len(strip)), 2):
                change = np.abs(strip[k] - strip[j])[..., :3].max(-1) * strip[k][..., 3] / 255
                self.assertGreater((change > 24).sum(), 8,
                                   f"{number}: frames {j} and {k} look alike")
        for number in LAMPS:
            strip = frames(number)[..., :3].max(-1)
            lamp = strip[1] - strip[0] > 100
            self.assertGreater(lamp.sum(), 12, f"{number}: no lamp lights")
            off, on, idle = (frame[lamp].mean() for frame in strip)
            self.assertTrue(on > idle + 60 and idle > off + 20, f"{number}: {off}, {on}, {idle}")
        # Keys that overlap others, or are clipped, are empty there.
        self.assertLess(frames(10020)[:, 19:, :, 3].max(), 8)
        self.assertLess(frames(10026)[:, :, 40:, 3].max(), 8)

    def test_panel_without_power_shows_the_channel_keys_dark(self):
        """Outside the chosen key a frame equals the panel's background."""
        panel = picture(10022)[172:264, 6:53]
        rows = np.arange(92)
        for k, frame in enumerate(frames(10019)):
            change = np.abs(laid_over(panel, frame) - panel[..., :3]).max(-1)
            mine = (rows >= 18.4 * k - 1) & (rows < 18.4 * (k + 1) + 1)
            self.assertGreater(change[mine].max(), 60, f"key {k} does not light")
            self.assertLess(change[~mine].max(), 20, f"key {k} changes another")

    def test_frame(self):
        frame = picture(10007)
        self.assertEqual(tuple(frame[496, 197, :3]), (0xD1, 0xE3, 0xEE), "the text fields' colour")
        for left in (395, 520):
            self.assertLess(brightness(frame[488:504, left:left + 215]).max(), 64,
                            "bright metal under the hint")
        for width in (394, 644, 894):
            band = brightness(frame[:, width - 6:width + 6])
            self.assertLess(np.ptp(band, 1).max(), 14,
                            f"something crosses the window's edge at {width}")

    def test_channel_names_stand_under_the_strips_of_their_layout(self):
        bed = picture(10007)[455:487, 33:804]
        rows = frames(10023)
        for k, row in enumerate(rows):
            end, *groups = LAYOUTS[k % 3]
            changed = (np.abs(row - bed)[..., :3].max(-1) > 8).any(0)
            columns = np.flatnonzero(changed) + 33
            self.assertLess(columns.max(), end, f"row {k} runs past its view")
            inside = [columns[(columns >= left) & (columns < right)] for left, right in groups]
            self.assertEqual(sum(map(len, inside)), (columns >= 42).sum(),
                             f"row {k}: something outside the names' strips")
            for mine, (left, right) in zip(inside, groups):
                self.assertGreater(len(mine), 30, f"row {k}")
                self.assertLess(abs((mine.min() + mine.max() + 1 - left - right) / 2), 1.1,
                                f"row {k} off centre")
            self.assertGreater(np.abs(row - rows[k - 3]).max(), 60,
                               "stereo and Mid/Side look alike")


if __name__ == "__main__":
    RESOURCES = sys.argv.pop(1)
    unittest.main()
