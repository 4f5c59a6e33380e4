"""Text at exact sizes: heights snap to whole pixels, letters to eighths of a pixel."""
import cairo
import numpy as np

import look
from pixels import paste, tint

FINE = 8                # horizontal sub-pixels
ROOM = 24               # rows above the base line; a third of that below it
WIDTH = 400


def mask(text, size, tracking=0.4, bold=False, about=None):
    """Coverage of a line of text, cropped to its ink, and the number of rows above the base line.

    With `about` (the line's middle) the width is made even or odd so that the ink is centred there
    exactly.
    """
    rows = ROOM + ROOM // 3
    surface = cairo.ImageSurface(cairo.FORMAT_A8, WIDTH * FINE, rows)
    context = cairo.Context(surface)
    context.select_font_face(look.FAMILY, cairo.FONT_SLANT_NORMAL,
                             cairo.FONT_WEIGHT_BOLD if bold else cairo.FONT_WEIGHT_NORMAL)
    context.set_font_matrix(cairo.Matrix(size * FINE, 0, 0, size, 0, 0))
    options = cairo.FontOptions()
    options.set_hint_style(cairo.HINT_STYLE_SLIGHT)
    options.set_hint_metrics(cairo.HINT_METRICS_OFF)
    options.set_antialias(cairo.ANTIALIAS_GRAY)
    context.set_font_options(options)
    x = 2.0 * FINE
    for letter in text:
        context.move_to(round(x), ROOM)
        context.show_text(letter)
        x += context.text_extents(letter).x_advance + tracking * FINE
    surface.flush()
    fine = np.ndarray((rows, surface.get_stride()), np.uint8, surface.get_data())[:, :WIDTH * FINE]
    inked = np.flatnonzero(fine.any(0))
    start = inked[0]
    whole = -(-(inked[-1] + 1 - start) // FINE)
    if about is not None and (whole - round(2 * about)) % 2:
        whole += 1
    spare = (whole * FINE - (inked[-1] + 1 - start)) // 2     # centres the ink in whole pixels
    start -= spare
    line = fine[:, start:start + whole * FINE].astype(np.float32) / 255
    line = line.reshape(rows, whole, FINE).mean(2)
    used = np.flatnonzero(line.max(1) > 0.02)
    return line[used[0]:used[-1] + 1], ROOM - used[0]


def engrave(picture, ink, rgb, left, top):
    """Paint-filled engraving: the groove's upper wall is in shade, its lower edge is lit."""
    h, w = ink.shape
    groove = np.zeros((h + 2, w + 2), np.float32)
    groove[1:-1, 1:-1] = ink
    upper, lower = np.zeros_like(groove), np.zeros_like(groove)
    upper[:-1] = groove[1:]
    lower[1:] = groove[:-1]
    paste(picture, tint((0, 0, 0), 0.45 * upper), left - 1, top - 1)
    paste(picture, tint((255, 255, 255), 0.10 * lower * (1 - groove)), left - 1, top - 1)
    paste(picture, tint(rgb, ink), left, top)


def write(picture, text, base, rgb, size=look.CAPS_7, left=None, middle=None, tracking=0.4,
          bold=False):
    """Engraves a line at its left edge or middle; the base line is the row below its capitals."""
    ink, above = mask(text, size, tracking, bold, about=middle)
    if left is None:
        left = int(round(middle - ink.shape[1] / 2))
    engrave(picture, ink, rgb, left, base - above)


def write_up(picture, text, column, middle, rgb, size, tracking, bold=False):
    """Engraves a line that reads upwards; its base line is the column right of its capitals."""
    ink, above = mask(text, size, tracking, bold)
    ink = np.rot90(ink)
    engrave(picture, ink, rgb, column - above, int(round(middle - ink.shape[0] / 2)))


def name_between_rules(picture, text, ends, base, rgb, tracking, up=False):
    """Engraves a name between two hairlines, whose ends bend down, or up, to what it names."""
    middle = (ends[0] + ends[1]) / 2
    ink, above = mask(text, look.CAPS_7, tracking, about=middle)
    start = int(round(middle - ink.shape[1] / 2))
    rules = np.zeros(picture.shape[:2], np.float32)
    row = base - look.RULE_RISE
    rules[row, ends[0]:start - look.RULE_GAP] = 1
    rules[row, start + ink.shape[1] + look.RULE_GAP:ends[1]] = 1
    hook = slice(row - look.RULE_HOOK, row) if up else slice(row + 1, row + 1 + look.RULE_HOOK)
    rules[hook, (ends[0], ends[1] - 1)] = 1
    engrave(picture, look.RULE_INK * rules, look.LETTER_FAINT, 0, 0)
    engrave(picture, ink, rgb, start, base - above)
