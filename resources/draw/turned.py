"""Parts turned on a lathe: profiles, concentric grain, fluted caps, and the lamp around a cap."""
import numpy as np

import look
from pixels import over, tint
from shapes import cover, ramp, slope, spoke, turn


def profile(radius, points):
    """Height at a radius, interpolated linearly between (radius, height) points."""
    return np.interp(radius, [p[0] for p in points], [p[1] for p in points]).astype(np.float32)


def rings(surface, cx, cy, inner, outer, seed):
    """Adds the fine rings of the lathe tool; the same in all frames, so that highlights do not
    flicker."""
    x, y = surface.x - cx, surface.y - cy
    radius = np.hypot(x, y)
    count = int(outer * look.RINGS_PER_PIXEL) + 3
    ring = np.random.default_rng(seed).standard_normal(count).astype(np.float32)
    at = np.minimum(radius, outer) * look.RINGS_PER_PIXEL
    low = at.astype(int)
    wave = ring[low] + (ring[low + 1] - ring[low]) * (at - low)
    inside = ramp(radius, inner, inner + 1) * (1 - ramp(radius, outer - 1, outer))
    tilt = look.TURNED_DEPTH * wave * inside / np.maximum(radius, 0.3)
    surface.tilt_x += tilt * x
    surface.tilt_y += tilt * y


def knurl(radius, around, outer, bite):
    """Depth of notches in a rim, deepest at its edge; `around` is the angle from the pointer, in
    radians."""
    notch = ramp(np.cos(look.RING_NOTCHES * around), 0.1, 0.9)
    return bite * notch * ramp(radius, outer - look.KNURL_WIDTH, outer - look.KNURL_WIDTH / 2)


def cap(surface, cx, cy, degrees, radius, face, base=0.0):
    """Adds a fluted titanium cap with a dished face; returns the distances to pointer and edge."""
    x, y = surface.x, surface.y
    r = np.hypot(x - cx, y - cy)
    around = np.radians(turn(x, y, cx, cy) - degrees)
    hollow = 0.5 - 0.5 * np.cos(look.CAP_FLUTES * around)      # none under the pointer
    chamfer, drop = look.CAP_CHAMFER
    edge = radius - look.FLUTE_BITE * hollow
    body = look.CAP_HEIGHT * (1 - look.CAP_TAPER * slope(r, face + chamfer, radius) ** 1.3)
    body -= drop * slope(r, face, face + chamfer)
    body -= look.FLUTE_DEPTH * hollow * ramp(r, face + chamfer, radius - 0.4)
    body -= look.CAP_DISH * np.clip(1 - (r / face) ** 2, 0, 1)
    inside = cover(r - edge, 1.0 / surface.scale)
    surface.height = np.where(r < edge, base + body, surface.height)
    surface.paint(inside, look.TITANIUM)
    surface.turned_about(cx, cy, inside * (r < face + chamfer))
    rings(surface, cx, cy, 1.0, face, seed=11)
    return spoke(x, y, cx, cy, degrees, look.POINTER_START * face, radius - 1.0,
                 look.POINTER_WIDTH), r - edge


def inlay(picture, line, within, scale):
    """Adds a flush pointer with a dark seam, unaffected by the lighting."""
    inside = cover(within, 1.0 / scale)
    darkness, width = look.POINTER_SEAM
    picture = over(picture, tint((0, 0, 0), darkness * cover(line - width, 0.8) * inside))
    return over(picture, tint(look.POINTER, cover(line, 0.4) * inside))


def arc(x, y, cx, cy, degrees, inner, outer):
    """Distance to the arc of a groove from straight up to the pointer; at 0 dB a dot."""
    middle, half = (inner + outer) / 2, (outer - inner) / 2
    at = turn(x, y, cx, cy)
    beyond = np.maximum(min(0.0, degrees) - at, at - max(0.0, degrees))
    past = np.radians(np.maximum(beyond, 0)) * middle
    return np.hypot(past, np.hypot(x - cx, y - cy) - middle) - half
