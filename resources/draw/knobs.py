"""The knobs: every frame is modelled with flutes and pointer turned, under a fixed light."""
import functools

import numpy as np
from scipy.ndimage import gaussian_filter

import labels
import look
from lettering import mask
from pixels import grid, light, over, paste, shrink, tint, with_alpha
from shade import Surface, cast_shadow
from shapes import cover, ramp, spoke, turn
from turned import arc, cap, inlay, knurl, profile, rings

SCALE = 6


def blank(size, radius):
    """A black anodised surface with lathe grain, its centre, and each sub-pixel's radius. It is
    only as large as the part of a bitmap within that radius of the bitmap's middle."""
    size -= 2 * int(size / 2 - radius - 1)
    x, y = grid(size, size, SCALE)
    middle = size / 2
    surface = Surface(x, y, SCALE, look.ANODISED)
    surface.turned_about(middle, middle, np.ones_like(x))
    return surface, middle, np.hypot(x - middle, y - middle)


def bright_cut(surface, radius, chamfer):
    """Polishes a chamfer, from its inner to its outer radius."""
    inner, outer = chamfer
    band = np.abs(radius - (inner + outer) / 2) - (outer - inner) / 2
    surface.paint(cover(band, 0.4), look.BRIGHT_CUT)


def framed(picture, size):
    """Shrinks a picture and puts it in the middle of a bitmap of that size."""
    picture = shrink(picture, SCALE)
    margin = (size - picture.shape[0]) // 2
    return np.pad(picture, ((margin, margin), (margin, margin), (0, 0)))


def coax_ring(frame):
    """The frequency ring, knurled at its edge."""
    degrees = frame * 360.0 / look.COAX_RING_FRAMES
    s, c, r = blank(look.COAX_IMAGE, look.RING_RADIUS)
    around = np.radians(turn(s.x, s.y, c, c) - degrees)
    s.height = profile(r, look.RING_PROFILE) - knurl(r, around, look.RING_RADIUS, look.KNURL_DEPTH)
    s.height = np.where(r < look.RING_INNER, look.RING_FLOOR, s.height)
    s.paint(cover(r - look.RING_INNER, 0.3), look.PIT)
    bright_cut(s, r, look.RING_BRIGHT)
    rings(s, c, c, look.RING_INNER + 1, look.RING_RADIUS - 3, seed=7)
    picture = with_alpha(s.picture(), cover(r - look.RING_RADIUS, 1.0 / SCALE))
    pointer = spoke(s.x, s.y, c, c, degrees, look.RING_INNER + 1.9, look.RING_RADIUS - 0.3,
                    look.POINTER_WIDTH)
    return framed(inlay(picture, pointer, r - look.RING_RADIUS, SCALE), look.COAX_IMAGE)


def coax_knob(frame):
    """The gain cap in its lamp groove, with its shadow on the ring, which is another bitmap."""
    degrees = (frame / (look.COAX_FRAMES - 1) - 0.5) * look.GAIN_SWEEP
    s, c, r = blank(look.COAX_IMAGE, look.GAIN_DISC)
    picture = lamp_and_cap(s, c, r, degrees, look.GAIN_CAP_RADIUS, look.GAIN_CAP_FACE,
                           look.GAIN_GROOVE, look.GAIN_DISC)
    picture = over(picture, gain_marks(c))
    picture = lit(picture, s, c, r, degrees, look.GAIN_CAP_RADIUS, look.GAIN_ARC_INNER,
                  look.GAIN_ARC_OUTER)
    needle = spoke(s.x, s.y, c, c, degrees, look.GAIN_CAP_FACE, look.GAIN_NEEDLE,
                   look.POINTER_WIDTH)
    picture = framed(inlay(picture, needle, r - look.GAIN_NEEDLE, SCALE), look.COAX_IMAGE)
    return over(over(cap_shadow(), picture), gain_figures())


@functools.lru_cache
def cap_shadow():
    """A gain cap's shadow on the ring."""
    c = look.COAX_IMAGE / 2
    r = np.hypot(*(at - c for at in grid(look.COAX_IMAGE, look.COAX_IMAGE, SCALE)))
    occluder = np.where(r < look.GAIN_CAP_RADIUS, look.CAP_SHADOW_HEIGHT, 0).astype(np.float32)
    shadow = look.CAP_SHADOW * (1 - cast_shadow(occluder, SCALE, onto=np.zeros_like(r)))
    shadow *= cover(r - look.RING_RADIUS + 0.5, 1.0)
    return shrink(tint((0, 0, 0), shadow.astype(np.float32)), SCALE)


def gain_degrees(decibels):
    return decibels * look.GAIN_SWEEP / (2 * look.LEVEL_RANGE)


@functools.lru_cache
def gain_marks(c):
    """The still scale around a gain cap: marks of decibels, longer at even ones and at figures."""
    x, y = grid(int(2 * c), int(2 * c), SCALE)
    ink = np.zeros_like(x)
    for db in range(-look.LEVEL_RANGE, look.LEVEL_RANGE + 1):
        rank = 0 if abs(db) in look.GAIN_FIGURES else 1 + db % 2
        mark = spoke(x, y, c, c, gain_degrees(db), look.GAIN_MARKS,
                     look.GAIN_MARKS + look.GAIN_MARK_LENGTHS[rank], look.TICK_WIDTH)
        ink = np.maximum(ink, look.GAIN_MARK_INKS[rank] * cover(mark, 0.4))
    return tint(look.LETTER, ink)


@functools.lru_cache
def gain_figures():
    """The scale's figures, and a minus and a plus between its ends."""
    picture = np.zeros((look.COAX_IMAGE, look.COAX_IMAGE, 4), np.float32)
    c = look.COAX_IMAGE / 2
    ends = look.GAIN_MARKS + look.GAIN_MARK_LENGTHS[0]
    for size in look.GAIN_FIGURES:
        for db in {-size, size}:
            ink, _ = mask(str(size), look.CAPS_5, tracking=0.2)
            left, top = labels.beside(ink, gain_degrees(db), (c, c), ends,
                                      look.GAIN_FIGURE_GAP)
            paste(picture, tint(look.LETTER, ink), left, top)
    *across, down = look.GAIN_SIGNS
    for text, x in zip("\N{MINUS SIGN}+", across):
        ink, _ = mask(text, look.CAPS_6, about=c)
        paste(picture, tint(look.LETTER, ink), *(int(round(c + at - size / 2)) for at, size in
                                                 zip((x, down), ink.shape[::-1])))
    return picture


def level_knob(frame):
    """The drive and output knob: the same cap in a fixed collar."""
    degrees = (frame / (look.LEVEL_FRAMES - 1) - 0.5) * look.GAIN_SWEEP
    s, c, r = blank(look.DIAL_IMAGE, look.DIAL_RADIUS)
    s.height = profile(r, look.COLLAR_PROFILE)
    bright_cut(s, r, look.DIAL_BRIGHT)
    rings(s, c, c, look.DIAL_ARC_OUTER + 1, look.DIAL_RADIUS - 1.4, seed=5)
    picture = lamp_and_cap(s, c, r, degrees, look.DIAL_CAP_RADIUS, look.DIAL_CAP_FACE,
                           look.COLLAR_INNER,
                           look.DIAL_RADIUS)
    picture = lit(picture, s, c, r, degrees, look.DIAL_CAP_RADIUS, look.DIAL_ARC_INNER,
                  look.DIAL_ARC_OUTER)
    needle = spoke(s.x, s.y, c, c, degrees, look.DIAL_CAP_FACE, look.DIAL_NEEDLE,
                   look.POINTER_WIDTH)
    return framed(inlay(picture, needle, r - look.DIAL_NEEDLE, SCALE), look.DIAL_IMAGE)


def high_pass_dial(frame):
    """The cap and a black skirt in one piece; the pointer continues on the skirt to the labels."""
    degrees = frame * look.HPF_STEP_DEGREES
    s, c, r = blank(look.DIAL_IMAGE, look.DIAL_RADIUS)
    around = np.radians(turn(s.x, s.y, c, c) - degrees)
    s.height = profile(r, look.SKIRT_PROFILE) - knurl(r, around, look.DIAL_RADIUS, look.KNURL_DEPTH)
    bright_cut(s, r, look.DIAL_BRIGHT)
    rings(s, c, c, look.CAP_RADIUS, look.DIAL_RADIUS - 2.4, seed=9)
    on_cap, _ = cap(s, c, c, degrees, look.CAP_RADIUS, look.CAP_FACE, look.SKIRT_FLOOR)
    on_skirt = spoke(s.x, s.y, c, c, degrees, look.CAP_RADIUS - 2, look.DIAL_RADIUS - 0.3,
                     look.POINTER_WIDTH)
    picture = with_alpha(s.picture(), cover(r - look.DIAL_RADIUS, 1.0 / SCALE))
    return framed(inlay(picture, np.minimum(on_cap, on_skirt), r - look.DIAL_RADIUS, SCALE),
                  look.DIAL_IMAGE)


def lamp_and_cap(s, c, r, degrees, radius, face, groove, outline):
    """A cap in a dark groove; transparent outside the radius `outline`."""
    s.height = np.where(r < groove, look.GROOVE_FLOOR, s.height)
    s.paint(cover(r - groove, 0.3), look.PIT)
    pointer, edge = cap(s, c, c, degrees, radius, face)
    picture = with_alpha(s.picture(), cover(r - outline, 1.0 / SCALE))
    return inlay(picture, pointer, edge, SCALE)


def lit(picture, s, c, r, degrees, radius, inner, outer):
    """Adds the lamp in the groove, lit up to the pointer, and its glow on the metal around it."""
    clear_of_cap = ramp(r, radius - 0.6, radius)
    track = np.abs(r - (inner + outer) / 2) - (outer - inner) / 2
    reach = np.abs(turn(s.x, s.y, c, c)) <= look.GAIN_SWEEP / 2 + 2
    picture = over(picture, tint(look.LAMP_DARK, cover(track, 0.4) * reach * clear_of_cap))
    lamp = cover(arc(s.x, s.y, c, c, degrees, inner, outer), 0.5) * clear_of_cap
    picture = over(picture, tint(look.LIT_ARC, lamp))
    metal = picture[..., 3] > 0.99
    return light(picture, look.LIT_DEEP,
                 look.ARC_GLOW * gaussian_filter(lamp, look.ARC_GLOW_REACH * SCALE) * metal)


def draw(number, frame):
    return {10001: coax_ring, 10002: coax_knob, 10016: level_knob,
            10017: high_pass_dial}[number](frame)
