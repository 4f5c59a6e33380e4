"""Lighting: renders a height map with materials to a picture.

A surface is a height above the plate in pixels. It is lit by a key and a fill light and by the
sky; metal adds the anisotropic highlight of a grooved surface (Ward's model) with a given grain
direction. The lights are fixed, so highlights stay in place while a knob turns.
"""
import numpy as np
from scipy.ndimage import gaussian_filter

import look
from pixels import to_srgb


def unit(vector):
    v = np.array(vector, np.float32)
    return v / np.linalg.norm(v)


KEY = unit(look.KEY_LIGHT)
FILL = unit(look.FILL_LIGHT)


class Surface:
    """Height, colour, highlight and grain of each sub-pixel, built up from parts."""

    def __init__(self, x, y, scale, material):
        self.x, self.y, self.scale = x, y, scale
        self.height = np.zeros_like(x)
        self.albedo = np.tile(np.array(material["albedo"], np.float32), x.shape + (1,))
        self.metal = np.full_like(x, material["metal"])
        self.along = np.full_like(x, material["along"])
        self.across = np.full_like(x, material["across"])
        self.brightness = 1.0
        self.grain = np.zeros_like(x)       # angle of the grain, radians from the x axis
        self.tilt_x = np.zeros_like(x)      # slopes of relief too fine for the height map
        self.tilt_y = np.zeros_like(x)

    def paint(self, mask, material):
        m = mask[..., None]
        self.albedo += (np.array(material["albedo"], np.float32) - self.albedo) * m
        for name in ("metal", "along", "across"):
            field = getattr(self, name)
            field += (material[name] - field) * mask

    def turned_about(self, cx, cy, mask):
        """Sets the lathe grain: grooves around the centre."""
        around = np.arctan2(self.y - cy, self.x - cx) + np.pi / 2
        self.grain = np.where(mask > 0.5, around, self.grain)

    def picture(self, extra_shadow=1.0):
        """The lit surface in sRGB; `extra_shadow` is a further visibility of the key light."""
        return to_srgb(self.lit(extra_shadow))

    def lit(self, extra_shadow):
        """The lit surface in linear red, green and blue."""
        gy, gx = np.gradient(self.height * self.scale)
        nx, ny = -(gx + self.tilt_x), -(gy + self.tilt_y)
        length = np.sqrt(nx * nx + ny * ny + 1)
        nx, ny, nz = nx / length, ny / length, 1 / length

        shadow = cast_shadow(self.height, self.scale) * extra_shadow
        cavity = gaussian_filter(self.height, look.CAVITY_RADIUS * self.scale) - self.height
        open_sky = np.clip(1 - look.CAVITY_STRENGTH * cavity, 0.25, 1.15)

        facing_key = nx * KEY[0] + ny * KEY[1] + nz * KEY[2]
        sky = look.GROUND + (look.SKY - look.GROUND) * (0.5 + 0.5 * facing_key)
        diffuse = sky * open_sky * (0.6 + 0.4 * shadow)
        highlight = np.zeros_like(nx)
        tx, ty = np.cos(self.grain), np.sin(self.grain)
        for direction, strength, seen in ((KEY, look.KEY_STRENGTH, shadow),
                                          (FILL, look.FILL_STRENGTH, 1.0)):
            facing = np.maximum(nx * direction[0] + ny * direction[1] + nz * direction[2], 0)
            diffuse = diffuse + strength * seen * facing
            half = unit(direction + np.array((0, 0, 1), np.float32))
            hn = np.maximum(nx * half[0] + ny * half[1] + nz * half[2], 1e-3)
            # components of the half vector along and across the grain, in the surface
            px, py = half[0] - hn * nx, half[1] - hn * ny
            ht, hb = px * tx + py * ty, -px * ty + py * tx
            lobe = np.exp(-((ht / self.along) ** 2 + (hb / self.across) ** 2) / (hn * hn))
            highlight += strength * seen * lobe * np.sqrt(facing / np.maximum(nz, 0.05)) \
                / (4 * self.along * self.across)
        diffuse = diffuse * self.brightness
        highlight = highlight * self.metal * open_sky * self.brightness
        tinted = highlight[..., None] * np.array((0.98, 1.0, 1.03), np.float32)
        return self.albedo * diffuse[..., None] + tinted


def cast_shadow(height, scale, onto=None):
    """Visibility of the key light, 0 to 1, on the heights `onto`; by default, on `height` itself.
    Shadows get softer with distance from the occluder."""
    ground = height if onto is None else onto
    reach = float(height.max() - ground.min())
    seen = np.zeros_like(height)
    rays = [(look.LIGHT_SIZE * sideways, look.LIGHT_SIZE * upward) for sideways, upward in
            ((-1.0, 0.0), (-0.5, 0.5), (0.0, -0.5), (0.5, 0.5), (1.0, 0.0))]
    across = np.array((-KEY[1], KEY[0])) / np.hypot(KEY[0], KEY[1])
    margin = int((look.SHADOW_REACH + 1) * scale)
    wide = np.pad(height, margin, mode="edge")
    rows, columns = height.shape
    for sideways, upward in rays:
        dx, dy = KEY[0] + across[0] * sideways, KEY[1] + across[1] * sideways
        flat = np.hypot(dx, dy)
        rise = (KEY[2] + upward) / flat
        length = min(look.SHADOW_REACH, reach / rise)
        clear = np.ones_like(height)
        lit = np.empty_like(height)
        for step in np.arange(0.5, length + 0.01, 0.5):
            sx, sy = int(round(dx / flat * step * scale)), int(round(dy / flat * step * scale))
            blocker = wide[margin + sy:margin + sy + rows, margin + sx:margin + sx + columns]
            penumbra = 0.25 + 0.7 * look.LIGHT_SIZE * step
            np.subtract(blocker, ground, out=lit)
            lit -= step * rise
            lit /= penumbra
            np.subtract(1, lit, out=lit)
            np.minimum(clear, lit, out=clear)
        seen += np.maximum(clear, 0, out=clear)
    return seen / len(rays)
