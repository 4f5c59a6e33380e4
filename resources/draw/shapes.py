"""Signed distances (negative inside a shape) and profiles for height maps."""
import numpy as np


def box(x, y, left, top, width, height, radius):
    dx = np.abs(x - (left + width / 2)) - width / 2 + radius
    dy = np.abs(y - (top + height / 2)) - height / 2 + radius
    outside = np.hypot(np.maximum(dx, 0), np.maximum(dy, 0))
    return outside + np.minimum(np.maximum(dx, dy), 0) - radius


def disc(x, y, cx, cy, radius):
    return np.hypot(x - cx, y - cy) - radius


def spoke(x, y, cx, cy, degrees, inner, outer, width):
    """A bar with round ends along a ray, from one radius to another."""
    a = np.radians(degrees)
    along = (x - cx) * np.sin(a) - (y - cy) * np.cos(a)
    across = (x - cx) * np.cos(a) + (y - cy) * np.sin(a)
    beyond = along - np.clip(along, inner + width / 2, outer - width / 2)
    return np.hypot(beyond, across) - width / 2


def cover(distance, softness):
    """Anti-aliased coverage from a signed distance; `softness` is the width of the edge."""
    return np.clip(0.5 - distance / softness, 0, 1)


def ramp(value, start, end):
    """0 before the start, 1 after the end, smooth in between."""
    t = np.clip((value - start) / (end - start), 0, 1)
    return t * t * (3 - 2 * t)


def slope(value, start, end):
    """0 before the start, 1 after the end, linear in between, as a machined chamfer."""
    return np.clip((value - start) / (end - start), 0, 1)


def turn(x, y, cx, cy):
    """Degrees clockwise from straight up, -180 to 180."""
    return np.degrees(np.arctan2(x - cx, cy - y))
