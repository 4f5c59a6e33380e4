#!/usr/bin/python3
"""Checks the editor's bitmaps by measuring their pixels: sizes, labels, pointers, states and seams.

Usage: artwork_test.py RESOURCES_FOLDER [unittest arguments]. Positions and expected directions are
written out here on purpose and share nothing with the program that draws.
"""
import os
import struct
import sys
import unittest

import numpy as np
from PIL import Image

RESOURCES = ""

# number: (width, height, frames)
BITMAPS = {
    989: (12, 45, 3), 990: (12, 42, 3), 991: (12, 42, 3), 992: (36, 45, 3), 993: (42, 45, 3), 995: (31, 70, 5),
    10000: (125, 448, 1), 10001: (71, 1704, 24), 10002: (71, 9159, 129), 10003: (36, 162, 3),
    10004: (37, 162, 3), 10005: (35, 162, 3), 10006: (21, 44, 2), 10007: (940, 505, 1), 10008: (125, 448, 1),
    10009: (125, 448, 1), 10010: (42, 102, 3), 10011: (42, 102, 3), 10012: (42, 102, 3), 10013: (121, 101, 1),
    10014: (121, 101, 1), 10015: (121, 101, 1), 10016: (82, 8282, 101), 10017: (82, 984, 12), 10018: (49, 152, 2),
    10019: (47, 460, 5), 10020: (44, 72, 2), 10021: (112, 112, 1), 10022: (89, 487, 1), 10023: (771, 192, 6),
    10024: (13, 448, 1), 10025: (46, 57, 3), 10026: (42, 102, 3),
}
TOTAL_LIMIT = 3 * 1000 * 1000

COAX_RECTS = [(47, 0, 74, 13), (81, 0, 109, 15), (95, 18, 121, 35), (98, 40, 120, 57), (92, 64, 119, 81),
              (78, 83, 106, 99), (51, 86, 70, 100), (18, 82, 44, 99), (0, 63, 26, 80), (0, 40, 23, 57)]
DIAL_RECTS = [(44, 0, 67, 22), (70, 7, 103, 31), (85, 32, 113, 48), (88, 48, 111, 69), (83, 71, 110, 85),
              (69, 86, 102, 108), (45, 85, 68, 107), (14, 85, 42, 107), (7, 67, 30, 84), (1, 48, 24, 65),
              (1, 32, 34, 49), (10, 14, 43, 32)]
# overlay: (strip, view's corner on the strip, label rectangles, knob's centre in the view, radius free of scale marks)
OVERLAYS = {
    10013: (10000, (2, 36), COAX_RECTS, (60.5, 47.5), 36.5),
    10014: (10000, (2, 138), COAX_RECTS, (60.5, 47.5), 36.5),
    10015: (10000, (2, 240), COAX_RECTS, (60.5, 47.5), 36.5),
    10021: (10009, (7, 128), DIAL_RECTS, (56.0, 56.0), 33.2),
}
LABEL_RECT_OF_LAYOUT = [(33, 304), (33, 554), (33, 804)]


def entries():
    with open(os.path.join(RESOURCES, "bitmaps.txt"), encoding="ascii") as lines:
        rows = [line.split("#")[0].split() for line in lines]
    return {int(row[0]): (row[1],) + tuple(int(value) for value in row[2:]) for row in rows if row}


def path(number):
    return os.path.join(RESOURCES, entries()[number][0])


def picture(number):
    """Red, green, blue and alpha, 0 to 255, as floats."""
    return np.asarray(Image.open(path(number)).convert("RGBA"), np.float64)


def frames(number):
    data = picture(number)
    return data.reshape(BITMAPS[number][2], -1, data.shape[1], 4)


def brightness(data):
    """Luma of a picture over black."""
    return (data[..., :3] @ (0.299, 0.587, 0.114)) * data[..., 3] / 255


def laid_over(below, above):
    a = above[..., 3:] / 255
    return above[..., :3] * a + below[..., :3] * (1 - a)


def polar(size):
    """Radius and direction, in degrees clockwise from straight up, of each pixel's middle."""
    at = np.arange(size) + 0.5 - size / 2
    x, y = np.meshgrid(at, at)
    return x, y, np.hypot(x, y), np.degrees(np.arctan2(x, -y))


def turned(degrees):
    return (degrees + 180) % 360 - 180


def pointers(number, chosen, inner, outer):
    """Direction and centroid of what each frame has more than the middle one of all: its white pointer.

    A first look finds the direction by the brightest; then everything near it counts, the dark seam along
    the pointer's sides as well, since the two sides balance.
    """
    strip = np.stack([brightness(frames(number)[k]) for k in chosen])
    x, y, r, at = polar(strip.shape[-1])
    more = strip - np.median(strip, 0)
    window = np.sin(np.pi * np.clip((r - inner) / (outer - inner), 0, 1)) ** 2     # no step at its edges

    def centroid(weight):
        total = weight.sum((1, 2))
        assert (total > 0).all(), f"{number}: a frame without a pointer"
        return (weight * x).sum((1, 2)) / total, (weight * y).sum((1, 2)) / total

    cx, cy = centroid(np.where(more > 50, more, 0) * window)
    rough = np.degrees(np.arctan2(cx, -cy))
    cx, cy = centroid(more * window * (np.abs(turned(at - rough[:, None, None])) < 30))
    return np.degrees(np.arctan2(cx, -cy)), np.stack([cx, cy], 1)


class TheList(unittest.TestCase):
    def test_names_every_bitmap_with_its_size_and_frames(self):
        self.assertEqual({number: row[1:] for number, row in entries().items()}, BITMAPS)

    def test_files_have_the_listed_size_and_a_plain_format(self):
        for number, (width, height, count) in BITMAPS.items():
            with open(path(number), "rb") as file:
                head = file.read(29)
            self.assertEqual(head[:8], b"\x89PNG\r\n\x1a\n", number)
            w, h, depth, kind, _, _, interlace = struct.unpack(">IIBBBBB", head[16:29])
            self.assertEqual((w, h), (width, height), number)
            self.assertEqual(height % count, 0, number)
            self.assertEqual((depth, interlace), (8, 0), number)
            self.assertIn(kind, (2, 6), f"{number}: neither RGB nor RGBA")

    def test_all_together_stay_small(self):
        self.assertLess(sum(os.path.getsize(path(number)) for number in BITMAPS), TOTAL_LIMIT)

    def test_folder_holds_nothing_unlisted(self):
        found = {"bitmaps/" + name for name in os.listdir(os.path.join(RESOURCES, "bitmaps"))}
        self.assertEqual(found, {row[0] for row in entries().values()})


class Labels(unittest.TestCase):
    def each(self):
        for overlay, (strip, (left, top), rects, centre, clear) in OVERLAYS.items():
            lit = picture(overlay)
            h, w = lit.shape[:2]
            yield overlay, lit, picture(strip)[top:top + h, left:left + w], rects, centre, clear

    def test_one_whole_label_in_each_click_area(self):
        for overlay, lit, _, rects, _, _ in self.each():
            ink = lit[..., 3] > 0
            near = np.zeros_like(ink)
            inside = np.zeros_like(ink)
            for step, (left, top, right, bottom) in enumerate(rects):
                area = np.zeros_like(ink)
                area[top:bottom, left:right] = True
                here = ink & area
                self.assertGreater(here.sum(), 15, f"{overlay} step {step}: no label")
                grown = np.pad(here, 1)
                near = sum(grown[1 + dy:1 + dy + ink.shape[0], 1 + dx:1 + dx + ink.shape[1]]
                           for dy in (-1, 0, 1) for dx in (-1, 0, 1)) > 0
                self.assertFalse((near & ink & ~area).any(), f"{overlay} step {step}: label cut by its area")
                inside |= here
            self.assertFalse((ink & ~inside).any(), f"{overlay}: ink outside every click area")

    def test_lit_labels_cover_the_unlit_ones_to_the_pixel(self):
        for overlay, lit, plate, rects, centre, clear in self.each():
            y, x = np.mgrid[:lit.shape[0], :lit.shape[1]] + 0.5
            free = np.hypot(x - centre[0], y - centre[1]) > clear
            alpha = lit[..., 3] / 255
            unlit = brightness(plate)
            for step, (left, top, right, bottom) in enumerate(rects):
                area = np.s_[top:bottom, left:right]
                a, u, f = alpha[area], unlit[area], free[area]
                metal = np.median(u[(a == 0) & f])
                ink = np.median(u[a > 0.9]) if (a > 0.9).any() else u[a > 0].max()
                self.assertGreater(ink - metal, 40, f"{overlay} step {step}: unlit label illegible")
                # the unlit ink, read back from the plate, is the overlay's coverage
                read = (u - metal) / (ink - metal)
                stray = (read > 0.30) & (a == 0) & f
                self.assertFalse(stray.any(), f"{overlay} step {step}: unlit ink the overlay leaves bare")
                halo = (a > 0.40) & (read < 0.02) & f
                self.assertFalse(halo.any(), f"{overlay} step {step}: the overlay lights bare metal")
                self.assertLess(np.abs(read - a)[(a > 0.5)].max(), 0.25, f"{overlay} step {step}: labels differ")
                fit = {(dx, dy): ((np.roll(a, (dy, dx), (0, 1)) - read)[f] ** 2).sum()
                       for dx in (-1, 0, 1) for dy in (-1, 0, 1)}
                self.assertEqual(min(fit, key=fit.get), (0, 0), f"{overlay} step {step}: overlay off by a pixel")

    def test_lit_label_stands_out(self):
        for overlay, lit, plate, rects, _, _ in self.each():
            strong = lit[..., 3] > 200
            gain = (laid_over(plate, lit) - plate[..., :3]) @ (0.299, 0.587, 0.114)
            self.assertGreater(gain[strong].mean(), 45, overlay)

    def test_each_label_lies_where_its_pointer_points(self):
        for overlay, lit, _, rects, centre, _ in self.each():
            for step, (left, top, right, bottom) in enumerate(rects):
                alpha = lit[top:bottom, left:right, 3]
                y, x = np.mgrid[top:top + alpha.shape[0], left:left + alpha.shape[1]] + 0.5
                dx = (alpha * x).sum() / alpha.sum() - centre[0]
                dy = (alpha * y).sum() / alpha.sum() - centre[1]
                off = turned(np.degrees(np.arctan2(dx, -dy)) - 30 * step)
                self.assertLess(abs(off), 8.5, f"{overlay} step {step}: label {off:.1f} degrees off its ray")


class Pointers(unittest.TestCase):
    def check(self, number, chosen, expected, inner, outer, tolerance, centre_tolerance=0.12):
        angles, centroids = pointers(number, chosen, inner, outer)
        error = turned(angles - expected)
        worst = np.abs(error).max()
        reach = np.hypot(*centroids.T)
        # centre of the circle that fits the centroids
        a = np.column_stack([2 * centroids, np.ones(len(centroids))])
        solved = np.linalg.lstsq(a, (centroids ** 2).sum(1), rcond=None)[0]
        centre = np.hypot(*solved[:2])
        print(f"{number}: pointer at most {worst:.2f} degrees off, radius {reach.min():.2f} to {reach.max():.2f}, "
              f"centre {centre:.3f} pixels off")
        self.assertLess(worst, tolerance, number)
        self.assertLess(np.ptp(reach), 0.5, f"{number}: the pointer changes its radius")
        self.assertLess(centre, centre_tolerance, f"{number}: wobble")
        return error

    def test_ring_points_at_its_ten_labels(self):
        self.check(10001, range(0, 20, 2), 30.0 * np.arange(10), 22.5, 29.5, 0.6)

    def test_high_pass_dial_points_at_its_twelve_labels(self):
        self.check(10017, range(12), 30.0 * np.arange(12), 20.5, 26.5, 0.6)

    def test_gain_knob_turns_evenly_with_zero_straight_up(self):
        error = self.check(10002, range(129), (np.arange(129) - 64) * 300 / 128, 6.5, 12.5, 0.7)
        self.assertLess(abs(error[64]), 0.3)
        self.assertLess(np.abs(np.diff(error)).max(), 1.0, "jitter")

    def test_level_knob_turns_evenly_with_zero_straight_up(self):
        error = self.check(10016, range(101), (np.arange(101) - 50) * 3.0, 7.0, 13.5, 0.7)
        self.assertLess(abs(error[50]), 0.3)
        self.assertLess(np.abs(np.diff(error)).max(), 1.0, "jitter")

    def test_highlights_stay_still_while_the_pointer_moves(self):
        for number, inner, outer, sweep in ((10002, 5.0, 12.5, 300), (10016, 5.0, 14.0, 300), (10017, 5.0, 12.5, 330)):
            strip = brightness(frames(number))
            _, _, r, at = polar(strip.shape[-1])
            count = len(strip)
            start = 0 if number == 10017 else -sweep / 2
            for k in range(count - 1):
                away = np.minimum.reduce([np.abs(turned(at - start - sweep * j / (count - 1))) for j in (k, k + 1)])
                face = (r > inner) & (r < outer) & (away > 40)
                change = np.abs(strip[k + 1] - strip[k])[face].max()
                self.assertLess(change, 2.5, f"{number} frame {k}: the metal flickers")


class States(unittest.TestCase):
    def test_states_of_a_button_can_be_told_apart(self):
        for number in (989, 990, 991, 992, 993, 995, 10003, 10004, 10005, 10006, 10010, 10011, 10012, 10018, 10020,
                       10025, 10026):
            strip = frames(number)
            for k in range(len(strip)):
                for j in range(k):
                    change = np.abs(strip[k] - strip[j])[..., :3].max(-1) * strip[k][..., 3] / 255
                    seen = (change > 24).sum()
                    self.assertGreater(seen, 8, f"{number}: frames {j} and {k} look alike")

    def test_a_lit_lamp_is_brighter_than_an_idle_and_a_dark_one(self):
        for number in (10003, 10004, 10005, 10010, 10011, 10012, 10026):
            strip = frames(number)[..., :3].max(-1)
            lamp = strip[1] - strip[0] > 100
            self.assertGreater(lamp.sum(), 12, f"{number}: no lamp lights")
            off, on, idle = (frame[lamp].mean() for frame in strip)
            self.assertGreater(on, idle + 60, number)
            self.assertGreater(idle, off + 20, number)

    def test_overlapping_bypass_keys_do_not_cut_each_other(self):
        self.assertLess(frames(10020)[:, 19:, :, 3].max(), 8)

    def test_transformer_key_lies_left_of_its_cut(self):
        self.assertLess(frames(10026)[:, :, 40:, 3].max(), 8)

    def test_panel_without_power_shows_the_channel_keys_dark(self):
        """Where a frame's key is not the chosen one, laying the frame on the panel changes nothing."""
        panel = picture(10022)[172:264, 6:53]
        for k, frame in enumerate(frames(10019)):
            change = np.abs(laid_over(panel, frame) - panel[..., :3]).max(-1)
            rows = np.arange(92)
            mine = (rows >= 18.4 * k - 1) & (rows < 18.4 * (k + 1) + 1)
            self.assertGreater(change[mine].max(), 60, f"key {k} does not light")
            self.assertLess(change[~mine].max(), 20, f"key {k} disturbs another")


class Frame(unittest.TestCase):
    def test_name_field_has_the_text_fields_colour(self):
        self.assertEqual(tuple(picture(10007)[496, 197, :3]), (0xD1, 0xE3, 0xEE))

    def test_hint_stands_on_plain_dark_metal(self):
        for left in (395, 520):
            self.assertLess(brightness(picture(10007)[488:504, left:left + 215]).max(), 64)

    def test_nothing_stands_across_a_cut(self):
        """The columns either side of each window's right edge are no different from their neighbours."""
        for width in (394, 644, 894):
            band = brightness(picture(10007)[:, width - 6:width + 6])
            self.assertLess(np.ptp(band, 1).max(), 14, width)

    def test_channel_names_stand_under_the_strips_of_their_layout(self):
        bed = picture(10007)[455:487, 33:804]
        groups = [((42, 167), (180, 305)), ((42, 292), (305, 555)), ((42, 417), (430, 805))]
        rows = frames(10023)
        for k, row in enumerate(rows):
            changed = (np.abs(row - bed)[..., :3].max(-1) > 8).any(0)
            columns = np.flatnonzero(changed) + 33
            self.assertLess(columns.max(), LABEL_RECT_OF_LAYOUT[k % 3][1], f"row {k} runs past its view")
            for left, right in groups[k % 3]:
                mine = columns[(columns >= left) & (columns < right)]
                self.assertGreater(len(mine), 30, f"row {k}")
                self.assertLess(abs((mine.min() + mine.max() + 1) / 2 - (left + right) / 2), 1.1, f"row {k} off centre")
            separator = (columns >= groups[k % 3][0][1]) & (columns < groups[k % 3][1][0])
            self.assertFalse(separator.any(), f"row {k}: something under the separator")
        for k in range(3):
            self.assertGreater(np.abs(rows[k] - rows[k + 3]).max(), 60, "stereo and Mid/Side look alike")


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    RESOURCES = sys.argv.pop(1)
    unittest.main()
