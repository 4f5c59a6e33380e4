"""The buttons: dark metal keys in slots, each with a lamp slit and a legend that lights up."""
import numpy as np
from scipy.ndimage import gaussian_filter

import icons
import look
from lettering import mask
from pixels import grid, light, over, shrink, tint, with_alpha
from shade import Surface, cast_shadow
from shapes import box, cover, ramp, slope

SCALE = 6

# States of a key: (pressed, lamp colour, legend colour, glow colour); IDLE is on without power
OFF = (False, look.LAMP_DARK, look.KEY_LETTER, None)
ON = (True, look.LIT, look.LIT, look.LIT_DEEP)
ON_AMBER = (True, look.AMBER, look.AMBER, look.AMBER_DEEP)
IDLE = (True, look.LAMP_IDLE, look.LETTER_IDLE, None)
IDLE_AMBER = (True, look.AMBER_IDLE, look.AMBER_LETTER_IDLE, None)

# The drawing on a key that overwrites, as HOVER_INK
STORE_INK = ((look.STORE_LETTER, None, 0), (look.STORE_LIT, look.AMBER_DEEP, look.HOVER_GLOW),
             (look.STORE_LIT, look.AMBER_DEEP, look.LEGEND_GLOW))

# A kick button's legend at rest, hovered and held: (colour, glow colour, glow strength)
HOVER_INK = ((look.KEY_LETTER, None, 0), (look.LIT_LETTER, look.LIT_DEEP, look.HOVER_GLOW),
             (look.LIT_LETTER, look.LIT_DEEP, look.LEGEND_GLOW))


def key_body(size, rect, pressed, round_corners=look.KEY_ROUND, dish=look.LOW_DISH):
    """The key and its slot; transparent outside the slot's lip."""
    left, top, width, height = rect
    x, y = grid(*size, SCALE)
    s = Surface(x, y, SCALE, look.PIT)
    d = box(x, y, left, top, width, height, round_corners)
    slot = box(x, y, left - look.KEY_GAP, top - look.KEY_GAP, width + 2 * look.KEY_GAP,
               height + 2 * look.KEY_GAP,
               round_corners + look.KEY_GAP)
    lift = look.KEY_PRESSED if pressed else look.KEY_HEIGHT
    v = (y - top - height / 2) / (height / 2)
    bevel, fall = look.KEY_CHAMFER
    top_face = lift - dish * (1 - np.clip(v * v, 0, 1)) - fall * (1 - slope(-d, 0, bevel))
    s.height = np.where(d < 0, top_face, -look.SLOT_DEPTH)
    lip, drop = look.SLOT_LIP
    s.height = np.where(slot > 0, -drop * (1 - slope(slot, 0, lip)), s.height)
    s.paint(cover(d, 1.0 / SCALE), look.KEYCAP)
    s.paint(cover(d, 1.0 / SCALE) * cover(-d - bevel, 0.5), look.KEY_EDGE)
    s.paint(cover(-slot, 1.0 / SCALE), look.GRAPHITE)
    return with_alpha(s.picture(), cover(slot - lip + 0.2, 0.4))


def on_plate(picture, rect, pressed):
    """Puts a key's shadow on the plate under it; a pressed key has none."""
    if pressed:
        return picture
    rows, columns = picture.shape[:2]
    x, y = grid(columns // SCALE, rows // SCALE, SCALE)
    key = np.where(box(x, y, *rect, look.KEY_ROUND) < 0, look.KEY_HEIGHT, 0).astype(np.float32)
    dark = look.KEY_SHADOW * (1 - cast_shadow(key, SCALE, onto=np.zeros_like(key)))
    border = np.minimum.reduce([x, rect[0] + rect[2] + 2 - x, y, rows / SCALE - y])
    return over(tint((0, 0, 0), dark * ramp(border, 0, look.KEY_SHADOW_FADE)), picture)


def wash(picture, rect, round_corners, state):
    """Adds the light of the legend to the face of a hovered (1) or held (2) key."""
    strength = (0, look.HOVER_WASH, look.HELD_WASH)[state]
    x, y = grid(picture.shape[1] // SCALE, picture.shape[0] // SCALE, SCALE)
    return light(picture, look.LIT_DEEP,
                 strength * cover(box(x, y, *rect, round_corners), 0.4))


def slit(size, cx, cy, width, height=2.0):
    """Distance to a lamp slit with its middle at (cx, cy)."""
    x, y = grid(*size, SCALE)
    return box(x, y, cx - width / 2, cy - height / 2, width, height, height / 2)


def lamp(picture, shape, rgb, glow):
    """Adds a slit milled into the metal, its light and the glow on the key."""
    picture = over(picture, tint((0, 0, 0), 0.75 * cover(shape - 0.6, 0.8)))
    lit = cover(shape, 0.4)
    picture = over(picture, tint(rgb, lit))
    if glow:
        spread = gaussian_filter(lit, look.LAMP_GLOW_REACH * SCALE)
        picture = light(picture, glow, look.LAMP_GLOW * spread * picture[..., 3])
    return picture


def legend(picture, text, base, middle, rgb, glow, size=look.CAPS_7, tracking=0.5,
           strength=look.LEGEND_GLOW):
    """Adds lettering to a key, at the picture's scale."""
    ink, above = mask(text, size, tracking, about=middle)
    whole = np.zeros(picture.shape[:2], np.float32)
    left, top = int(round(middle - ink.shape[1] / 2)), base - above
    whole[top:top + ink.shape[0], left:left + ink.shape[1]] = ink
    return ink_on(picture, whole, rgb, glow, strength)


def ink_on(picture, ink, rgb, glow, strength=look.LEGEND_GLOW):
    """Adds ink in a shallow engraving and its glow."""
    dark = np.zeros_like(ink)
    dark[:-1] = ink[1:]
    picture = over(picture, tint((0, 0, 0), 0.4 * dark))
    picture = over(picture, tint(rgb, ink))
    if glow:
        spread = gaussian_filter(ink, look.LEGEND_GLOW_REACH)
        picture = light(picture, glow, strength * spread * picture[..., 3])
    return picture


def tall_key(size, rect, icon, state):
    pressed, lamp_rgb, ink_rgb, glow = state
    left, top, width, height = rect
    cx = left + width / 2
    picture = on_plate(key_body(size, rect, pressed, dish=look.TALL_DISH), rect, pressed)
    picture = shrink(lamp(picture, slit(size, cx, top + 8.0, 13), lamp_rgb, glow), SCALE)
    return ink_on(picture, icon(size, cx, top + height * 0.62), ink_rgb, glow)


def wide_key(size, rect, lines, state):
    pressed, lamp_rgb, ink_rgb, glow = state
    left, top, width, height = rect
    cx = left + width / 2
    picture = on_plate(key_body(size, rect, pressed, dish=look.WIDE_DISH), rect, pressed)
    picture = shrink(lamp(picture, slit(size, cx, top + 3.4, 15, 1.6), lamp_rgb, glow), SCALE)
    if len(lines) == 1:
        return legend(picture, lines[0], top + 20, cx, ink_rgb, glow, look.CAPS_8, 0.6)
    picture = legend(picture, lines[0], top + 15, cx, ink_rgb, glow, look.CAPS_6, 0.6)
    return legend(picture, lines[1], top + 24, cx, ink_rgb, glow, look.CAPS_6, 0.6)


def panel_key(size, lit):
    """A low key with one long lamp; the rows below the upper 22 are empty."""
    pressed, lamp_rgb, _, glow = ON if lit else OFF
    left, top, width, height = look.PANEL_KEY
    picture = key_body(size, look.PANEL_KEY, pressed)
    return shrink(lamp(picture, slit(size, left + width / 2, top + height / 2, 18, 2.2), lamp_rgb,
                       glow), SCALE)


def channel_switch(size, chosen):
    """Five interlocked keys; with none chosen, as the panel shows them without power."""
    picture = None
    left, top, width, height = look.CHANNEL_KEY
    for k in range(5):
        y = k * look.CHANNEL_PITCH + top
        pressed, lamp_rgb, _, glow = ON if k == chosen else OFF
        rect = (left, y, width, height)
        one = key_body(size, rect, pressed)
        one = lamp(one, slit(size, left + width / 2, y + height / 2, 18, 2.2), lamp_rgb, glow)
        picture = one if picture is None else over(picture, one)
    return shrink(picture, SCALE)


def both():
    """The key that bypasses both channels; it is part of the panel's background."""
    left, top, width, height = look.BOTH_KEY
    picture = key_body((left + width + 4, top + height + 2), look.BOTH_KEY, False)
    return legend(shrink(picture, SCALE), "BOTH", look.BOTH_BASE, left + width / 2,
                  look.KEY_LETTER, None, look.CAPS_7, 1.0)


def info(size, frame):
    picture = key_body(size, look.INFO_KEY, frame == 2)
    picture = wash(picture, look.INFO_KEY, look.KEY_ROUND, frame)
    left, top, width, height = look.INFO_KEY
    return legend(shrink(picture, SCALE), "INFO", top + 11, left + width / 2, *HOVER_INK[frame][:2],
                  look.CAPS_7, 1.4,
                  HOVER_INK[frame][2])


def draw(number, frames, width, height):
    size = (width, height // frames)
    three = {
        10003: lambda state: tall_key(size, look.PROCESS_KEY, icons.bell, state),
        10004: lambda state: tall_key(size, look.LOW_SHELF_KEY, icons.low_shelf, state),
        10005: lambda state: tall_key(size, look.HIGH_SHELF_KEY, icons.high_shelf, state),
        10010: lambda state: wide_key(size, look.KEY_28K, ("28k",), state),
        10011: lambda state: wide_key(size, look.KEY_PHASE,
                                      ("\N{LATIN CAPITAL LETTER O WITH STROKE}",), state),
        10012: lambda state: wide_key(size, look.KEY_AMPLIFIER, ("AMP", "OFF"), state),
        10026: lambda state: wide_key(size, look.KEY_TRANSFORMER, ("TRAFO", "OFF"), state),
    }
    if number in three:
        turns_off = number in (10012, 10026)
        states = (OFF, ON_AMBER, IDLE_AMBER) if turns_off else (OFF, ON, IDLE)
        pictures = [three[number](state) for state in states]
    else:
        one = {10019: channel_switch, 10020: panel_key, 10025: info}[number]
        pictures = [one(size, frame) for frame in range(frames)]
    return np.concatenate(pictures, 0)
