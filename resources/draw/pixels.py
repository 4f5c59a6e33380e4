"""Pictures as arrays of sRGB floats with straight alpha: coordinates, scaling, blending, files."""
import numpy as np
from PIL import Image


def grid(width, height, scale):
    """x and y of each sub-pixel's centre, in pixels."""
    x = (np.arange(width * scale, dtype=np.float32) + 0.5) / scale
    y = (np.arange(height * scale, dtype=np.float32) + 0.5) / scale
    return np.meshgrid(x, y)


def shrink(picture, scale):
    """The mean of each scale-by-scale block; colour is weighted by alpha."""
    h, w = picture.shape[0] // scale, picture.shape[1] // scale
    if picture.ndim == 2:
        return picture.reshape(h, scale, w, scale).mean((1, 3))
    weighted = picture.copy()
    weighted[..., :3] *= picture[..., 3:]
    mean = weighted.reshape(h, scale, w, scale, 4).mean((1, 3))
    mean[..., :3] /= np.maximum(mean[..., 3:], 1e-6)
    return mean


def to_srgb(linear):
    linear = np.clip(linear, 0.0, 1.0)
    return np.where(linear <= 0.0031308, 12.92 * linear, 1.055 * linear ** (1 / 2.4) - 0.055)


def colour(rgb):
    return np.array(rgb, np.float32) / 255.0


def opaque(rgb):
    return np.concatenate([rgb, np.ones(rgb.shape[:2] + (1,), rgb.dtype)], 2)


def with_alpha(rgb, alpha):
    return np.concatenate([rgb, alpha[..., None].astype(rgb.dtype)], 2)


def tint(rgb, alpha):
    """A plain colour with the given alpha."""
    return with_alpha(np.broadcast_to(colour(rgb), alpha.shape + (3,)), np.clip(alpha, 0, 1))


def over(below, above):
    """Blends one picture over another of the same size."""
    a, b = above[..., 3:], below[..., 3:]
    alpha = a + b * (1 - a)
    rgb = (above[..., :3] * a + below[..., :3] * b * (1 - a)) / np.maximum(alpha, 1e-6)
    return np.concatenate([rgb, alpha], 2)


def light(below, rgb, glow):
    """Adds light of a colour to a picture; on transparent pixels it is the picture's colour."""
    a = np.clip(glow, 0, 1)[..., None]
    rgb = colour(rgb)
    alpha = below[..., 3:] + a * (1 - below[..., 3:])
    lit = 1 - (1 - below[..., :3]) * (1 - a * rgb)
    mixed = (lit * below[..., 3:] + rgb * a * (1 - below[..., 3:])) / np.maximum(alpha, 1e-6)
    return np.concatenate([mixed, alpha], 2)


def paste(below, above, left, top):
    """Blends a picture over part of another one, in place, clipped at the edges."""
    h, w = above.shape[:2]
    y0, x0 = max(top, 0), max(left, 0)
    y1, x1 = min(top + h, below.shape[0]), min(left + w, below.shape[1])
    if y1 > y0 and x1 > x0:
        below[y0:y1, x0:x1] = over(below[y0:y1, x0:x1],
                                   above[y0 - top:y1 - top, x0 - left:x1 - left])


def to_bytes(picture):
    data = np.clip(np.rint(picture * 255), 0, 255).astype(np.uint8)
    data[data[..., 3] == 0] = 0
    return data


def save(picture, path):
    """Writes a PNG with 8 bits per channel; alpha only if the picture is not opaque."""
    data = to_bytes(picture)
    if (data[..., 3] == 255).all():
        data = np.ascontiguousarray(data[..., :3])
    Image.fromarray(data).save(path, optimize=True)
