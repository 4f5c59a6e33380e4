"""The strips' front plates: equaliser, pre-amplifier, blank plate and separator."""
import numpy as np

import look
import labels
from lettering import engrave, mask, name_between_rules, write
from pixels import over, shrink, tint
from plates import Plate
from shapes import cover, disc, spoke

T46_NAMES = ("HIGH", "MID", "LOW")
QB9_NAMES = ("DRIVE", "HPF", "OUT")


def strip_plate(seed):
    plate = Plate(look.STRIP, look.GRAPHITE, seed, look.STRIP_TOP)
    plate.edges()
    for k, (cx, cy) in enumerate(look.STRIP_SCREWS):
        plate.screw(cx, cy, look.STRIP_SCREW_RADIUS, 17 + 41 * k)
    return plate


def knob_rules(plate, names):
    """The hairlines on which the knobs' names stand; they start behind the names."""
    for text, base in zip(names, look.NAME_BASES):
        ink, _ = name(text)
        left = look.NAME_LEFT + ink.shape[1] + look.NAME_RULE_GAP
        plate.rule(left, look.STRIP[0] - look.NAME_LEFT, base - look.NAME_RULE_RISE)


def name(text):
    return mask(text, look.CAPS_7, tracking=0.9, bold=True)


def name_knobs(picture, names):
    for text, base in zip(names, look.NAME_BASES):
        ink, above = name(text)
        engrave(picture, ink, look.LETTER, look.NAME_LEFT, base - above)


def inked(picture, plate, ink):
    return over(picture, tint(look.LETTER_FAINT, shrink(ink.astype(np.float32), plate.scale)))


def dots(picture, plate, centre, angles, radius):
    """The marks of steps: round, so that none reads as a minus in front of its label."""
    ink = np.zeros_like(plate.x)
    for degrees in angles:
        a = np.radians(degrees)
        at = centre[0] + radius * np.sin(a), centre[1] - radius * np.cos(a)
        ink = np.maximum(ink, cover(disc(plate.x, plate.y, *at, look.STEP_DOT), 0.5))
    return inked(picture, plate, ink)


def ticks(picture, plate, centre, angles, radius, length):
    """The marks of a continuous scale."""
    ink = np.zeros_like(plate.x)
    for degrees in angles:
        d = spoke(plate.x, plate.y, centre[0], centre[1], degrees, radius, radius + length,
                  look.TICK_WIDTH)
        ink = np.maximum(ink, cover(d, 0.5))
    return inked(picture, plate, ink)


def level_position(decibels):
    """The level knob's position, 0 to 1, for a gain."""
    x = (decibels + look.LEVEL_RANGE) / (2 * look.LEVEL_RANGE)
    t = max(x, 1 - x)
    p = (((-8.60583 * t + 30.0348) * t - 39.2757) * t + 23.4886) * t - 4.64187
    return p if x > 0.5 else 1 - p if x < 0.5 else 0.5


def level_degrees(decibels):
    return (level_position(decibels) - 0.5) * look.GAIN_SWEEP


def t46():
    plate = strip_plate(46)
    knob_rules(plate, T46_NAMES)
    centres = {band: (x + look.COAX_CENTRE[0], y + look.COAX_CENTRE[1])
               for band, (x, y) in look.COAX_VIEWS.items()}
    for cx, cy in centres.values():
        plate.knob(cx, cy, look.RING_RADIUS - 1, look.RING_HEIGHT)
    picture = plate.finish()
    for band, (x, y) in look.COAX_VIEWS.items():
        picture = dots(picture, plate, centres[band],
                       [look.COAX_STEP_DEGREES * k for k in range(10)], look.COAX_DOT_RADIUS)
        labels.engrave_unlit(picture, labels.coax(band), x, y)
    name_knobs(picture, T46_NAMES)
    write(picture, "T46", look.TITLE_BASE, look.LETTER, look.CAPS_9, middle=look.STRIP_MIDDLE,
          tracking=2.0)
    name_between_rules(picture, "SHELF", look.SHELF_GROUP, look.SHELF_GROUP_BASE, look.LETTER, 1.2)
    for text, middle in (("LOW", 28.5), ("HIGH", 62.5), ("EQ IN", 96.5)):
        write(picture, text, look.SHELF_LEGEND_BASE, look.LETTER, middle=middle, tracking=0.7)
    return picture


def qb9():
    plate = strip_plate(9)
    knob_rules(plate, QB9_NAMES)
    centres = {name: (x + look.DIAL_CENTRE, y + look.DIAL_CENTRE)
               for name, (x, y) in look.DIAL_VIEWS.items()}
    for knob, (cx, cy) in centres.items():
        plate.knob(cx, cy, look.DIAL_RADIUS - 1, 4.6 if knob == "hpf" else 3.0)
    picture = plate.finish()
    name_knobs(picture, QB9_NAMES)
    for knob in look.DIAL_VIEWS:
        if knob == "hpf":
            picture = dots(picture, plate, centres[knob],
                           [look.HPF_STEP_DEGREES * k for k in range(12)], look.DIAL_DOT_RADIUS)
            labels.engrave_unlit(picture, labels.high_pass(), *look.DIAL_VIEWS[knob])
        else:
            picture = level_scale(picture, plate, centres[knob])
    write(picture, "QB11", look.TITLE_BASE, look.LETTER, look.CAPS_9, middle=look.STRIP_MIDDLE,
          tracking=2.0)
    return picture


def level_scale(picture, plate, centre):
    long = {sign * db for db in look.LEVEL_LABELS for sign in (1, -1)}
    fine = set(range(-look.LEVEL_RANGE, look.LEVEL_RANGE + 1)) - long
    for marked, length in ((long, look.TICK_LENGTH), (fine, look.LEVEL_FINE_TICK)):
        picture = ticks(picture, plate, centre, map(level_degrees, marked), look.DIAL_TICK_RADIUS,
                        length)
    halves = [sign * level_degrees(db) for db in look.LEVEL_HALVES for sign in (1, -1)]
    picture = dots(picture, plate, centre, halves, look.DIAL_TICK_RADIUS + look.STEP_DOT)
    for db in sorted(long):
        sign = "" if abs(db) < look.LEVEL_RANGE else "+" if db > 0 else "\N{MINUS SIGN}"
        ink, _ = mask(sign + str(abs(db)), look.CAPS_7, about=centre[0])
        left, top = labels.beside(ink, level_degrees(db), centre,
                                  look.DIAL_TICK_RADIUS + look.TICK_LENGTH, look.LABEL_GAP)
        engrave(picture, ink, look.LETTER_FAINT, left, top)
    write(picture, "dB", int(centre[1] + 38), look.LETTER_FAINT, look.CAPS_7, middle=centre[0])
    return picture


def separator():
    plate = Plate((look.SEPARATOR_WIDTH, look.STRIP[1]), look.CHASSIS, 13, look.STRIP_TOP)
    width = look.SEPARATOR_SLOT[2]
    plate.pocket(*look.SEPARATOR_SLOT, width / 2, look.SEPARATOR_DEPTH, wall=1.6)
    return plate.finish()


def draw(number, frames):
    if number == 10008:
        return strip_plate(8).finish()
    return {10000: t46, 10009: qb9, 10024: separator}[number]()
