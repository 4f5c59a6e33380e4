"""The chassis behind the strips (left cheek with the name, preset row) and the channel label."""
import numpy as np

import look
from lettering import name_between_rules, write, write_up
from pixels import paste, shrink, tint
from plates import Plate
from preset_row import menu_key
from shapes import box, cover


def background():
    width = look.FRAME[0]
    plate = Plate(look.FRAME, look.CHASSIS, seed=7, scale=2)
    for k, y in enumerate(look.CHEEK_SCREWS):
        plate.screw(look.CHEEK_MIDDLE, y, look.CHEEK_SCREW_RADIUS, 12 + 50 * k)
    plate.rule(-5, width + 5, look.PRESET_TOP + 0.5)
    left, top, right, bottom = look.NAME_FIELD
    more = look.FIELD_POCKET
    plate.pocket(left - more, top - more, right - left + 2 * more, bottom - top + 2 * more,
                 more + 1, look.FIELD_DEPTH)
    picture = plate.finish()
    paste(picture, name_field(plate), 0, 0)
    paste(picture, menu_key(look.MENU_KEY), *look.MENU_KEY_AT)
    write_up(picture, "ZKR T46", look.BRAND_BASE, look.BRAND_MIDDLE, look.LETTER, look.CAPS_13, 4.0)
    write_up(picture, "STEREO MASTERING EQUALISER", look.BRAND_LINE_BASE, look.BRAND_LINE_MIDDLE,
             look.LETTER_FAINT,
             look.CAPS_7, 2.0)
    write(picture, "A", look.PRESET_BASE, look.LETTER, middle=look.SLOT_A_MIDDLE)
    write(picture, "B", look.PRESET_BASE, look.LETTER, middle=look.SLOT_B_MIDDLE)
    return picture


def name_field(plate):
    """A pale pane whose upper edge is shaded by the pocket's wall."""
    left, top, right, bottom = look.NAME_FIELD
    pane = box(plate.x, plate.y, left - 0.5, top - 0.5, right - left + 1, bottom - top + 1,
               look.FIELD_ROUND)
    picture = tint(look.FIELD, shrink(cover(pane, 0.5).astype(np.float32), plate.scale))
    strength, rows = look.FIELD_SHADE
    depth = np.clip((np.arange(look.FRAME[1]) + 0.5 - top + 1) / rows, 0, 1)
    picture[..., :3] *= (1 - strength * (1 - depth))[:, None, None].astype(np.float32)
    return picture


def channel_label(frame_picture):
    """Six frames on the chassis background: three layouts in stereo, the same three in Mid/Side."""
    x0, y0 = look.LABEL_AT
    w, h = look.LABEL
    bed = frame_picture[y0:y0 + h, x0:x0 + w]
    rows = []
    for names, rgb in zip(look.LABEL_NAMES, (look.LETTER, look.LIT)):
        for groups in look.LABEL_GROUPS:
            row = bed.copy()
            for name, (left, right) in zip(names, groups):
                ends = (left - x0 + look.LABEL_INSET, right - x0 - look.LABEL_INSET)
                name_between_rules(row, name, ends, look.LABEL_BASE, rgb, 2.4, up=True)
            rows.append(row)
    return np.concatenate(rows, 0)


def draw(number, frames):
    picture = background()
    return picture if number == 10007 else channel_label(picture)
