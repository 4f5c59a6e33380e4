"""The round lamp and the power button, which has a lit ring."""
import numpy as np
from scipy.ndimage import gaussian_filter

import look
from pixels import grid, light, over, shrink, tint, with_alpha
from shade import Surface
from shapes import box, cover, ramp
from turned import profile

SCALE = 6


def led(size, on):
    """A dome in a turned steel bezel."""
    cx, cy = look.LED_MIDDLE
    x, y = grid(*size, SCALE)
    r = np.hypot(x - cx, y - cy)
    s = Surface(x, y, SCALE, look.STEEL)
    s.height = profile(r, look.LED_PROFILE)
    s.turned_about(cx, cy, np.ones_like(r))
    dome = look.LED_FLOOR + look.LED_DOME * np.sqrt(np.clip(look.LED_RADIUS ** 2 - r ** 2, 0, None))
    s.height = np.where(r < look.LED_RADIUS, dome, s.height)
    lens = cover(r - look.LED_RADIUS, 0.3)
    s.paint(lens, look.LENS)
    picture = with_alpha(s.picture(), cover(r - look.LED_RIM, 1.0 / SCALE))
    if not on:
        dark = 0.55 * lens * ramp(look.LED_RADIUS - r, 0, 1.6)
        across, down, glint, strength = look.LED_GLINT
        spot = np.exp(-((x - cx - across) ** 2 + (y - cy - down) ** 2) / glint ** 2)
        picture = over(picture, tint(look.LAMP_DARK, dark))
        return shrink(light(picture, look.LIT_LETTER, strength * spot * lens), SCALE)
    picture = over(picture, tint(look.LIT, 0.92 * lens * ramp(look.LED_RADIUS - r, 0, 2.6)))
    core, strength = look.LED_CORE
    picture = light(picture, look.LIT_LETTER, strength * lens * np.exp(-(r / core) ** 2))
    picture = light(picture, look.LIT_DEEP,
                    look.LED_GLOW * gaussian_filter(lens, look.LED_GLOW_REACH * SCALE))
    border = min(cx, size[0] - cx)              # the glow fades out inside the bitmap
    picture[..., 3] *= ramp(border - r, 0, 2)
    return shrink(picture, SCALE)


def power(size, on):
    """A turned push button, whose face is lower when it is on."""
    cx, cy = look.POWER_MIDDLE
    x, y = grid(*size, SCALE)
    r = np.hypot(x - cx, y - cy)
    s = Surface(x, y, SCALE, look.ANODISED)
    face, groove = look.POWER_FACE, look.POWER_GROOVE
    lift = look.POWER_SUNK if on else 0.0
    s.height = np.where(r < face, profile(r, look.POWER_FACE_PROFILE) - lift,
                        profile(r, look.POWER_COLLAR_PROFILE))
    s.height = np.where((r >= face) & (r < groove), look.GROOVE_FLOOR, s.height)
    s.turned_about(cx, cy, np.ones_like(r))
    s.paint(cover(r - groove, 0.3), look.PIT)
    s.paint(cover(r - face, 0.3), look.TITANIUM)
    picture = with_alpha(s.picture(), cover(r - look.POWER_RADIUS, 1.0 / SCALE))
    track = cover(np.abs(r - (face + groove) / 2) - (groove - face) / 2 + 0.1, 0.4)
    picture = over(picture, tint(look.LIT if on else look.LAMP_DARK, track))
    picture = over(picture, tint(look.POWER_INK, cover(power_symbol(x, y, cx, cy, 5.6, 1.7), 0.4)))
    if on:
        glow = look.ARC_GLOW * gaussian_filter(track, look.ARC_GLOW_REACH * SCALE)
        picture = light(picture, look.LIT_DEEP, glow * (r < look.POWER_RADIUS))
    return shrink(picture, SCALE)


def power_symbol(x, y, cx, cy, radius, width):
    """Distance to a ring, open at the top, with a bar in its opening."""
    r = np.hypot(x - cx, y - cy)
    from_top = np.abs(np.degrees(np.arctan2(x - cx, cy - y)))
    past = np.radians(np.maximum(38 - from_top, 0)) * radius
    ring = np.hypot(r - radius, past) - width / 2
    bar = box(x, y, cx - width / 2, cy - radius - 1.4, width, radius + 0.6, width / 2)
    return np.minimum(ring, bar)


def draw(number, frames, width, height):
    one = {10006: led, 10018: power}[number]
    return np.concatenate([one((width, height // frames), frame) for frame in range(frames)], 0)
