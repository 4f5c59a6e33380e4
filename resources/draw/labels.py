"""Position and ink of the step labels, the same for the unlit and the lit ones."""
import numpy as np

import look
from lettering import engrave, mask
from pixels import paste, tint


def beside(ink, degrees, centre, radius, gap, rect=None):
    """The corner (whole pixels) that puts the ink on its ray, `gap` away from the mark that ends
    at `radius`; inside `rect`, if given: left, top, right, bottom."""
    h, w = ink.shape
    out = np.array((np.sin(np.radians(degrees)), -np.cos(np.radians(degrees))))
    mark = np.array(centre) + radius * out
    rows, columns = np.nonzero(ink > 0.4)
    reach = int(gap + max(h, w)) + 2
    left, top, right, bottom = rect or (*(int(at) - 2 * reach for at in mark),
                                        *(int(at) + 2 * reach for at in mark))
    best = None
    for y in range(top, bottom - h + 1):
        for x in range(left, right - w + 1):
            nearest = np.hypot(columns + x + 0.5 - mark[0], rows + y + 0.5 - mark[1]).min() - 0.5
            dx, dy = x + w / 2 - centre[0], y + h / 2 - centre[1]
            sideways = dx * out[1] - dy * out[0]
            behind = dx * out[0] + dy * out[1] < radius
            cost = 12 * (nearest - gap) ** 2 + sideways ** 2 + 1e6 * behind
            if best is None or cost < best[0]:
                best = (cost, x, y)
    return best[1:]


def placed(texts, rects, step_degrees, centre, dots, gap):
    """Of each label its ink and corner; `dots` is the radius of the circle of their marks."""
    result = []
    for step, (text, rect) in enumerate(zip(texts, rects)):
        ink, _ = mask(text, look.CAPS_7, about=centre[0])
        result.append((ink, *beside(ink, step * step_degrees, centre, dots + look.STEP_DOT,
                                    gap, rect)))
    return result


def coax(band):
    return placed(look.COAX_LABELS[band], look.COAX_RECTS, look.COAX_STEP_DEGREES, look.COAX_CENTRE,
                  look.COAX_DOT_RADIUS, look.COAX_LABEL_GAP)


def high_pass():
    return placed(look.HPF_LABELS, look.HPF_RECTS, look.HPF_STEP_DEGREES,
                  (look.DIAL_CENTRE, look.DIAL_CENTRE),
                  look.DIAL_DOT_RADIUS, look.LABEL_GAP)


def engrave_unlit(picture, labels, left, top):
    for ink, x, y in labels:
        engrave(picture, ink, look.LETTER_FAINT, left + x, top + y)


def overlay(labels, width, height):
    """The lit labels."""
    picture = np.zeros((height, width, 4), np.float32)
    for ink, x, y in labels:
        paste(picture, tint(look.LIT_LETTER, ink), x, y)
    return picture


def draw(number, frames):
    if number == 10021:
        return overlay(high_pass(), look.DIAL_VIEW, look.DIAL_VIEW)
    band = {10013: "high", 10014: "mid", 10015: "low"}[number]
    return overlay(coax(band), *look.COAX_VIEW)
