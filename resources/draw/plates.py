"""Brushed metal plates: chamfered edges, engravings, screws and shadows of knobs."""
import numpy as np
from scipy.ndimage import gaussian_filter, gaussian_filter1d

import look
from pixels import grid, opaque, shrink
from shade import Surface, cast_shadow
from shapes import box, cover, disc, slope

SCALE = 4


def brushed(width, height, seed):
    """Brightness (around 1) of a horizontally brushed surface: streaks of several lengths."""
    rng = np.random.default_rng(seed)
    grain = np.zeros((height, width), np.float32)
    for length in look.GRAIN_LENGTHS:
        noise = rng.standard_normal((height, width)).astype(np.float32)
        streak = gaussian_filter1d(noise, length, axis=1, mode="wrap")
        grain += streak / streak.std()
    return 1 + look.GRAIN_DEPTH * grain / np.sqrt(len(look.GRAIN_LENGTHS))


def lamp_strength(y):
    """Relative brightness of the lamp at a row of the window, 1 at half height."""
    def distance(row):
        return look.LAMP_HEIGHT ** 2 + (row + look.LAMP_ABOVE) ** 2
    return distance(look.FRAME[1] / 2) / distance(y)


class Plate:
    """A metal plate, built up as a height map and rendered by finish()."""

    def __init__(self, size, material, seed, top=0, scale=SCALE):
        self.size, self.scale, self.seed = size, scale, seed
        self.x, self.y = grid(*size, scale)
        self.surface = Surface(self.x, self.y, scale, material)
        self.surface.brightness = lamp_strength(self.y + top)
        # Heights of knobs that are in other bitmaps, for their shadows
        self.occluders = np.zeros_like(self.x)
        self.bare = np.ones_like(self.x)        # 1 where the grain is visible

    def edges(self):
        """A dark gap at the border of the plate and a chamfer inside it."""
        w, h = self.size
        inward = np.minimum.reduce([self.x, w - self.x, self.y, h - self.y])
        width, depth = look.EDGE_CHAMFER
        self.surface.height -= depth * (1 - slope(inward, look.EDGE_GAP, look.EDGE_GAP + width))
        self.surface.height -= look.EDGE_DEPTH * (inward < look.EDGE_GAP)
        self.surface.paint(cover(inward - look.EDGE_GAP - width, 0.4), look.PLATE_EDGE)
        self.surface.paint(cover(inward - look.EDGE_GAP, 0.5), look.PIT)
        self.bare *= 1 - cover(inward - look.EDGE_GAP, 0.5)

    def knob(self, cx, cy, radius, height):
        """Adds the shadow of a knob that is in another bitmap."""
        d = disc(self.x, self.y, cx, cy, radius)
        self.occluders = np.maximum(self.occluders, np.where(d < 0, height, 0).astype(np.float32))

    def pocket(self, left, top, width, height, radius, depth, wall=0.8):
        """A milled recess with a black floor."""
        d = box(self.x, self.y, left, top, width, height, radius)
        self.surface.height -= depth * slope(-d, -wall / 2, wall / 2)
        inside = cover(d, 0.5)
        self.surface.paint(inside, look.PIT)
        self.bare *= 1 - inside

    def rule(self, left, right, y):
        """An engraved hairline."""
        self.engrave(box(self.x, self.y, left, y - 0.5, right - left, 1.0, 0.5))
        width, brightness = look.HAIRLINE_LIP
        lip = box(self.x, self.y, left, y + 0.5, right - left, width, 0.4)
        self.surface.brightness = self.surface.brightness * (1 + brightness * cover(lip, 0.5))

    def engrave(self, distance):
        inside = cover(distance, 0.6)
        self.surface.height -= look.HAIRLINE_DEPTH * inside
        self.surface.paint(look.HAIRLINE_INK * inside, look.PIT)

    def screw(self, cx, cy, radius, turned):
        """A countersunk steel screw with a hexagon socket, turned by that many degrees."""
        x, y = self.x - cx, self.y - cy
        r = np.hypot(x, y)
        sink, sink_depth = look.COUNTERSINK
        edge, edge_depth = look.SCREW_EDGE
        a = np.radians(turned)
        u, v = x * np.cos(a) + y * np.sin(a), y * np.cos(a) - x * np.sin(a)
        flats = np.maximum(np.abs(u), np.abs(u) * np.cos(np.pi / 3) + np.abs(v) * np.sin(np.pi / 3))
        hexagon = flats - radius * look.SOCKET_SHARE
        head = look.SCREW_CROWN - edge_depth * slope(r, radius - edge, radius)
        head -= look.SOCKET_DEPTH * slope(-hexagon, 0, look.SOCKET_WALL)
        around = self.surface.height - sink_depth * (1 - slope(r, radius, radius + sink))
        self.surface.height = np.where(r < radius, head, around)
        self.surface.paint(cover(r - radius, 0.4), look.STEEL)
        self.surface.paint(cover(hexagon + look.SOCKET_WALL, 0.5), look.PIT)
        self.surface.turned_about(cx, cy, cover(r - radius, 0.4))
        self.bare *= 1 - cover(r - radius - 1, 0.5)

    def finish(self):
        shadow = cast_shadow(self.occluders, self.scale, onto=np.zeros_like(self.x))
        near = gaussian_filter((self.occluders > 0).astype(np.float32),
                               look.CONTACT_REACH * self.scale)
        rgb = self.surface.picture(shadow) * (1 - look.CONTACT_SHADE * near)[..., None]
        picture = shrink(opaque(rgb.astype(np.float32)), self.scale)
        bare = shrink(self.bare, self.scale)[..., None]
        picture[..., :3] *= 1 + (brushed(*self.size, self.seed)[..., None] - 1) * bare
        return picture
