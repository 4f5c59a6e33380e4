"""The right-hand plate with the global controls: captions, rules and the unlit channel switch."""
import keys
import look
from lettering import write
from pixels import paste
from plates import Plate

KEY_NAMES = dict(link="LINK", second="2\N{MULTIPLICATION SIGN}T46", preamp="QB11", ms="M/S",
                 left="L", right="R")
CHANNEL_NAMES = ("MID", "LEFT", "STEREO", "RIGHT", "SIDE")


def draw(number, frames):
    power_x, power_y = (at + middle for at, middle in zip(look.POWER_AT, look.POWER_MIDDLE))
    picture = plate(power_x, power_y)
    paste(picture, keys.channel_switch(look.SWITCH_SIZE, None), *look.CHANNEL_AT)
    paste(picture, keys.both(), *look.BOTH_AT)

    for name, text in KEY_NAMES.items():
        name_key(picture, text, look.PANEL_KEYS[name] + look.PANEL_KEY[1])
    for k, text in enumerate(CHANNEL_NAMES):
        name_key(picture, text, look.CHANNEL_AT[1] + k * look.CHANNEL_PITCH + look.CHANNEL_KEY[1])
    left, base = look.BYPASS_AT
    write(picture, "BYPASS", base, look.LETTER, left=left, tracking=0.9)
    write(picture, "POWER", look.POWER_BASE, look.LETTER, middle=power_x, tracking=1.0)
    return picture


def plate(power_x, power_y):
    metal = Plate(look.MAIN_PANEL, look.GRAPHITE, seed=89)
    metal.edges()
    for y in look.PANEL_RULES:
        metal.rule(look.PANEL_RULE_INSET, look.MAIN_PANEL[0] - look.PANEL_RULE_INSET, y)
    metal.knob(power_x, power_y, look.POWER_RADIUS - 1, look.POWER_HEIGHT)
    for cx, cy in look.PANEL_SCREWS:
        metal.screw(cx, cy, look.STRIP_SCREW_RADIUS, 30)
    return metal.finish()


def name_key(picture, text, key_top):
    write(picture, text, key_top + look.PANEL_LEGEND_BASE, look.LETTER, left=look.PANEL_LEGEND_LEFT,
          tracking=0.1)
