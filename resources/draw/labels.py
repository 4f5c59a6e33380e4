"""Position and ink of the step labels, the same for the unlit and the lit ones."""
import numpy as np

import look
from lettering import engrave, mask
from pixels import paste, tint


def place(text, degrees, rect, centre, radius):
    """The label's ink, and the corner (whole pixels) that puts it closest to its ray and radius
    inside the click area."""
    ink, _ = mask(text, look.CAPS_7, about=centre[0])
    h, w = ink.shape
    best = None
    for top in range(rect[1], rect[3] - h + 1):
        for left in range(rect[0], rect[2] - w + 1):
            dx, dy = left + w / 2 - centre[0], top + h / 2 - centre[1]
            off = np.degrees(np.arctan2(dx, -dy)) - degrees
            sideways = np.radians((off + 180) % 360 - 180) * np.hypot(dx, dy)
            nearest = np.hypot(max(abs(dx) - w / 2, 0), max(abs(dy) - h / 2, 0))
            too_near = max(radius - 1 - nearest, 0)
            cost = sideways ** 2 + 1.5 * (nearest - radius) ** 2 + 400 * too_near
            if best is None or cost < best[0]:
                best = (cost, left, top)
    return ink, best[1], best[2]


def placed(texts, rects, step_degrees, centre, radius):
    return [place(text, step * step_degrees, rect, centre, radius)
            for step, (text, rect) in enumerate(zip(texts, rects))]


def coax(band):
    return placed(look.COAX_LABELS[band], look.COAX_RECTS, look.COAX_STEP_DEGREES, look.COAX_CENTRE,
                  look.COAX_LABEL_RADIUS)


def high_pass():
    return placed(look.HPF_LABELS, look.HPF_RECTS, look.HPF_STEP_DEGREES,
                  (look.DIAL_CENTRE, look.DIAL_CENTRE),
                  look.DIAL_LABEL_RADIUS)


def engrave_unlit(picture, labels, left, top):
    for ink, x, y in labels:
        engrave(picture, ink, look.LETTER_FAINT, left + x, top + y)


def overlay(labels, width, height):
    picture = np.zeros((height, width, 4), np.float32)
    for ink, x, y in labels:
        paste(picture, tint(look.LIT, ink), x, y)
    return picture


def draw(number, frames):
    if number == 10021:
        return overlay(high_pass(), look.DIAL_VIEW, look.DIAL_VIEW)
    band = {10013: "high", 10014: "mid", 10015: "low"}[number]
    return overlay(coax(band), *look.COAX_VIEW)
