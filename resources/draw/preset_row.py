"""The small keys of the preset row."""
import numpy as np

import icons
import keys
import look
from pixels import over, shrink


def small_key(size, state, rect=None):
    width, height = size
    rect = rect or (1, 1, width - 2, look.PRESET_KEY_HEIGHT)
    picture = keys.key_body(size, rect, state == 2, round_corners=look.PRESET_KEY_ROUND)
    return shrink(keys.wash(picture, rect, look.PRESET_KEY_ROUND, state), keys.SCALE)


def menu_key(size):
    """The key that opens the preset menu; it is part of the frame's background."""
    icon = icons.chevron(size, size[0] / 2, size[1] / 2, 0, 1)
    return keys.ink_on(small_key(size, 0), icon, *keys.HOVER_INK[0])


def rocker(size, frame):
    """Two keys, previous and next: frames at rest, each hovered, each held."""
    width, height = size
    half = width // 2
    halves = []
    for k in range(2):
        state = 1 if frame == k + 1 else 2 if frame == k + 3 else 0
        left = 1 if k == 0 else half + 1
        key = small_key(size, state, (left, 1, half - 1, look.PRESET_KEY_HEIGHT))
        icon = icons.chevron(size, left + (half - 1) / 2, height / 2, 1 if k else -1, 0)
        halves.append(keys.ink_on(key, icon, *keys.HOVER_INK[state]))
    return over(*halves)


def fetching_key(size, state):
    """Loads or recalls: an open folder."""
    return keys.ink_on(small_key(size, state), icons.dotted(size, icons.FOLDER),
                       *keys.HOVER_INK[state])


def overwriting_key(size, state):
    """Saves or stores: a disk, in amber."""
    return keys.ink_on(small_key(size, state), icons.dotted(size, icons.DISK),
                       *keys.STORE_INK[state])


def word_key(size, state, text, rect, capitals=look.CAPS_7):
    rgb, glow, strength = keys.HOVER_INK[state]
    base = rect[1] + look.PRESET_KEY_BASE
    middle = rect[0] + rect[2] / 2
    return keys.legend(small_key(size, state, rect), text, base, middle, rgb, glow, capitals,
                       0.3, strength)


def draw(number, frames, width, height):
    size = (width, height // frames)
    one = {
        989: lambda frame: word_key(size, frame, "?", look.PRESET_KEYS[989], look.CAPS_8),
        990: lambda frame: fetching_key(size, frame),
        991: lambda frame: overwriting_key(size, frame),
        992: lambda frame: word_key(size, frame, "BANK", look.PRESET_KEYS[992]),
        993: lambda frame: word_key(size, frame, "PRESET", look.PRESET_KEYS[993]),
        995: lambda frame: rocker(size, frame),
    }[number]
    return np.concatenate([one(frame) for frame in range(frames)], 0)
