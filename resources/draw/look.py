"""Every dimension and colour of the artwork. Lengths are in pixels, angles in degrees clockwise
from straight up."""
import re
from pathlib import Path


def click_areas(knob):
    """The click areas of a knob's labels, from the control's source: left, top, right, bottom."""
    source = Path(__file__).parents[2] / "editor/controls" / f"{knob}.cpp"
    rows = re.findall(r"CRect\( *(\d+), *(\d+), *(\d+), *(\d+)\)", source.read_text("utf-8"))
    return tuple(tuple(map(int, row)) for row in rows)


# ---- Light -------------------------------------------------------------------------------------
# Directions point from the picture to the light; x right, y down, z towards the viewer.
KEY_LIGHT = (-0.50, -0.72, 0.78)
KEY_STRENGTH = 1.00
FILL_LIGHT = (0.75, 0.10, 0.66)
FILL_STRENGTH = 0.20
SKY = 0.34              # ambient light on a face turned to the key light
GROUND = 0.10           # ambient light on a face turned away from it
LAMP_ABOVE = 420        # the lamp's distance above the window's top; lower rows get less light
LAMP_HEIGHT = 800       # the lamp's height over the panel
LIGHT_SIZE = 0.20       # of the key light; softens the edges of its shadows
SHADOW_REACH = 16       # greatest length of a cast shadow
CAVITY_RADIUS = 3.0     # distance within which a wall darkens a floor
CAVITY_STRENGTH = 0.16

# ---- Materials ---------------------------------------------------------------------------------
# albedo: linear red, green, blue; metal: strength of the highlight; along, across: its width along
# and across the grain (surface slope).
GRAPHITE = dict(albedo=(0.0345, 0.0362, 0.0399), metal=0.0138, along=0.30, across=0.55)
PLATE_EDGE = dict(albedo=(0.0400, 0.0420, 0.0460), metal=0.080, along=0.34, across=0.34)
CHASSIS = dict(albedo=(0.0150, 0.0158, 0.0176), metal=0.008, along=0.30, across=0.55)
ANODISED = dict(albedo=(0.0165, 0.0172, 0.0190), metal=0.075, along=0.22, across=0.50)
BRIGHT_CUT = dict(albedo=(0.0230, 0.0240, 0.0265), metal=0.150, along=0.24, across=0.50)
TITANIUM = dict(albedo=(0.0900, 0.0930, 0.0990), metal=0.150, along=0.195, across=0.62)
STEEL = dict(albedo=(0.1300, 0.1330, 0.1400), metal=0.140, along=0.25, across=0.45)
KEYCAP = dict(albedo=(0.0330, 0.0345, 0.0375), metal=0.030, along=0.40, across=0.40)
KEY_EDGE = dict(albedo=(0.0370, 0.0385, 0.0415), metal=0.120, along=0.34, across=0.34)
LENS = dict(albedo=(0.0032, 0.0034, 0.0038), metal=0.020, along=0.5, across=0.5)
PIT = dict(albedo=(0.0032, 0.0034, 0.0038), metal=0.0, along=0.5, across=0.5)

# ---- Colours (sRGB) ----------------------------------------------------------------------------
LIT = (0xD1, 0xE3, 0xEE)            # the pale blue of the name field and of every lamp
LIT_DEEP = (0x7F, 0xB4, 0xD6)       # its glow on metal
LIT_ARC = (0x86, 0xC2, 0xEA)        # the lamp around a knob; deeper, so that the pointer ends it
AMBER = (0xF2, 0x9A, 0x4B)          # lamps of switches that turn something off
AMBER_DEEP = (0xC8, 0x5A, 0x1E)
LETTER = (0xCE, 0xD1, 0xD4)         # captions
LETTER_FAINT = (0xC4, 0xC8, 0xCD)   # scales and unlit labels
LIT_LETTER = (0xF0, 0xFA, 0xFF)     # lit labels
POINTER = (0xFF, 0xFF, 0xFF)
LAMP_DARK = (0x1B, 0x20, 0x24)      # an unlit lamp
LETTER_IDLE = (0x7C, 0x90, 0x9C)    # the legend of a key that is on without power
AMBER_IDLE = (0x80, 0x58, 0x38)
AMBER_LETTER_IDLE = (0xA0, 0x78, 0x58)
LAMP_IDLE = (0x5A, 0x70, 0x7E)      # the lamp of a key that is on without power
KEY_LETTER = (0xCE, 0xD1, 0xD4)     # a key's legend, unlit
STORE_LETTER = (0xDD, 0x98, 0x58)   # the drawing on a key that overwrites
STORE_LIT = (0xFF, 0xC6, 0x8C)
FIELD = (0xD1, 0xE3, 0xEE)

# ---- Lettering ---------------------------------------------------------------------------------
FAMILY = "Roboto Condensed"
CAPS_5 = 7.04           # font sizes by the height of their capitals
CAPS_7 = 9.85
CAPS_6 = 8.45
CAPS_8 = 11.25
CAPS_9 = 12.66
CAPS_13 = 18.30
RULE_RISE = 4           # height of a caption's hairlines above its base line
RULE_GAP = 6            # between hairline and caption
RULE_HOOK = 4           # length of a hairline's bent end
RULE_INK = 0.6

# ---- Grain of the brushed plates -----------------------------------------------------------------
GRAIN_LENGTHS = (7, 28, 110)
GRAIN_DEPTH = 0.030

# ---- Plates ------------------------------------------------------------------------------------
EDGE_GAP = 0.9          # dark gap around a plate
EDGE_DEPTH = 2.5
EDGE_CHAMFER = (1.2, 0.8)   # width and depth
HAIRLINE_DEPTH = 0.55
HAIRLINE_INK = 0.8
HAIRLINE_LIP = (0.9, 0.35)  # below a hairline, the lit wall's width and brightness
CONTACT_SHADE = 0.45    # darkening of the plate around a knob
CONTACT_REACH = 2.2
COUNTERSINK = (0.9, 1.1)    # width and depth
SCREW_CROWN = 0.5
SCREW_EDGE = (0.9, 0.7)     # width and depth of the chamfer on its head
SOCKET_SHARE = 0.52     # socket size as a share of the head's radius
SOCKET_DEPTH = 2.0
SOCKET_WALL = 0.7       # width of the lit wall inside a socket

# ---- Parts turned on a lathe ---------------------------------------------------------------------
RINGS_PER_PIXEL = 2.5
TURNED_DEPTH = 0.075    # slope of the lathe rings on a knob's face

# ---- Frame -------------------------------------------------------------------------------------
FRAME = (940, 505)
WINDOW_WIDTHS = (394, 644, 644, 894)    # by layout mode
STRIP = (125, 448)
STRIP_TOP = 7
FIRST_STRIP = 42
SEPARATOR_WIDTH = 13
PRESET_TOP = 487
CHEEK_MIDDLE = 20.5
CHEEK_SCREWS = (25.0, 462.0)
CHEEK_SCREW_RADIUS = 6.5
BRAND_BASE = 27         # columns of the two upright lines, and rows of their middles
BRAND_MIDDLE = 352
BRAND_LINE_BASE = 24
BRAND_LINE_MIDDLE = 190

# ---- Strips ------------------------------------------------------------------------------------
SEPARATOR_SLOT = (3.5, 6, 6, 436)       # left, top, width, height
SEPARATOR_DEPTH = 2.0
STRIP_MIDDLE = 62.5
STRIP_SCREWS = ((9.5, 9.5), (115.5, 9.5), (9.5, 438.5), (115.5, 438.5))
STRIP_SCREW_RADIUS = 3.6
TITLE_BASE = 20
NAME_BASES = (40, 142, 244)     # of the knobs' names, each on a hairline
NAME_RULE_RISE = 4.5    # height of the hairline above the base line
NAME_RULE_GAP = 5
NAME_LEFT = 9           # of a band's or knob's name, at the upper left of its knob
STEP_DOT = 0.85         # radius of the mark of a step
TICK_LENGTH = 3.6
TICK_WIDTH = 1.1
LABEL_GAP = 3.0         # between a mark and its label
COAX_LABEL_GAP = 4.2    # wider: the click areas are farther out

# Coaxial knob: the view is 121 by 101, with the image at (25, 12)
COAX_VIEWS = dict(high=(2, 36), mid=(2, 138), low=(2, 240))
COAX_VIEW = (121, 101)
COAX_IMAGE_AT = (25, 12)
COAX_IMAGE = 71
COAX_CENTRE = (60.5, 47.5)
COAX_FRAMES = 129
COAX_RING_FRAMES = 24
COAX_STEP_DEGREES = 30
COAX_RECTS = click_areas("CAnimCoaxT46CustomKnob")
COAX_LABELS = dict(
    high=("OFF", "28k", "24k", "20k", "17k5", "14k", "12k", "10k", "8k2", "6k8"),
    mid=("OFF", "5k6", "4k6", "3k8", "3k", "2k5", "1k8", "1k2", "800", "680"),
    low=("OFF", "550", "430", "370", "300", "200", "120", "82", "63", "33"))
COAX_DOT_RADIUS = 34.8
RING_RADIUS = 32.6
RING_INNER = 26.8
RING_NOTCHES = 48
RING_HEIGHT = 8.0
# profiles: (radius, height)
RING_PROFILE = ((26.8, 7.2), (27.5, 8.0), (29.6, 8.0), (30.6, 7.25), (32.6, 3.65))
RING_BRIGHT = (29.6, 30.6)  # the polished chamfer
RING_FLOOR = 4.5        # height under the cap
GROOVE_FLOOR = -1.6     # of the groove that holds a lamp
KNURL_WIDTH = 2.6
KNURL_DEPTH = 0.9
CAP_RADIUS = 18.4
CAP_FACE = 13.6
CAP_FLUTES = 18
FLUTE_DEPTH = 1.5
FLUTE_BITE = 0.75       # depth of a flute in the cap's outline
CAP_HEIGHT = 9.0        # above the ring
CAP_DISH = 0.5          # depth of the face's hollow
CAP_CHAMFER = (1.1, 0.6)    # width and depth
CAP_TAPER = 0.42        # drop of the cap's side, as a share of its height
POINTER_START = 0.40    # share of the face's radius
CAP_SHADOW_HEIGHT = 5.5  # for the shadow on the ring; low, so that the ring's pointer stays legible
CAP_SHADOW = 0.48
GAIN_CAP_RADIUS = 13.2
GAIN_CAP_FACE = 9.7
GAIN_GROOVE = 15.4
GAIN_ARC_INNER = 13.5
GAIN_ARC_OUTER = 15.2
GAIN_NEEDLE = 19.6      # outer end of the pointer
GAIN_MARKS = 16.4       # inner ends of the scale's marks, 1 dB apart
GAIN_MARK_LENGTHS = (3.4, 2.7, 1.8)     # at the figures, at the other even decibels, at odd ones
GAIN_MARK_INKS = (1.0, 0.95, 0.85)
GAIN_FIGURES = (0, 4, 8, 12, 16)    # dB
GAIN_FIGURE_GAP = 1.3   # between a mark and its figure
GAIN_SIGNS = (-4.5, 4.5, 22.0)  # from the centre: minus, plus, and down
GAIN_DISC = 26.7        # radius of the scale's disc
ARC_INNER = 19.0       # the lamp in the groove around a knob
ARC_OUTER = 20.9
POINTER_WIDTH = 1.8
POINTER_SEAM = (0.55, 0.35)  # darkness of the seam around it, and its width
ARC_GLOW = 0.55
ARC_GLOW_REACH = 1.3
GAIN_SWEEP = 300        # rotation of a gain knob; 0 dB is straight up

# Level knob and high-pass dial: the view is 112 by 112, with the image at (15, 15)
DIAL_VIEWS = dict(drive=(7, 29), hpf=(7, 128), output=(7, 230))
DIAL_VIEW = 112
DIAL_INSET = 15
DIAL_IMAGE = 82
DIAL_CENTRE = 56.0
LEVEL_FRAMES = 101
HPF_STEP_DEGREES = 30
HPF_RECTS = click_areas("CAnimFreqKnob")
HPF_LABELS = ("OFF", "20", "30", "50", "70", "100", "140", "200", "280", "400", "560", "800")
COLLAR_PROFILE = ((23.5, 2.2), (24.2, 3.0), (25.4, 3.0), (26.8, 2.35), (27.6, 0.35), (27.7, 0.0))
COLLAR_INNER = 23.5
DIAL_BRIGHT = (25.4, 26.8)  # the polished chamfer of collar and skirt
SKIRT_PROFILE = ((0.0, 4.6), (24.2, 4.6), (25.7, 3.9), (27.6, 1.3), (27.7, 0.0))
SKIRT_FLOOR = 3.0       # height of the cap's base
DIAL_CAP_RADIUS = 20.6
DIAL_CAP_FACE = 15.0
DIAL_ARC_INNER = 21.3
DIAL_ARC_OUTER = 23.1
DIAL_NEEDLE = 27.3      # outer end of the level knob's pointer
DIAL_RADIUS = 27.6
DIAL_TICK_RADIUS = 29.2
DIAL_DOT_RADIUS = 30.4
LEVEL_LABELS = (0, 2, 4, 6, 8, 12, 16)      # dB, positive and negative; their ticks are long
LEVEL_FINE_TICK = 2.0   # length of the ticks between, 1 dB apart
LEVEL_HALVES = (0.5, 1.5, 2.5)      # marked by dots, where a decibel is wide
LEVEL_RANGE = 16        # dB at either end

# Keys: (left, top, width, height) inside a frame of the bitmap
KEY_ROUND = 2.6
KEY_GAP = 1.3           # of the slot around a key
KEY_HEIGHT = 3.2        # above the plate when released
KEY_PRESSED = -2.2      # below it, so that the slot shades its upper edge
KEY_CHAMFER = (1.2, 1.0)    # width and depth
KEY_SHADOW = 0.55       # darkness of a released key's shadow on the plate
KEY_SHADOW_FADE = 2.5   # width in which it fades out, at most 2 pixels right of the key
SLOT_DEPTH = 3.2
SLOT_LIP = (0.7, 0.5)       # width and depth of the chamfer around a slot
TALL_DISH = 1.6         # depth of a key's hollow
WIDE_DISH = 1.0
LOW_DISH = 0.5
LAMP_GLOW = 0.75
LAMP_GLOW_REACH = 1.6
LEGEND_GLOW = 0.375
LEGEND_GLOW_REACH = 1.3
HOVER_GLOW = 0.25
HELD_WASH = 0.32        # light on the face of a held key
HOVER_WASH = 0.08
LOW_SHELF_KEY = (5, 3, 29, 38)
HIGH_SHELF_KEY = (3, 3, 29, 38)
PROCESS_KEY = (2, 3, 29, 38)
SHELF_LEGEND_BASE = 424
SHELF_GROUP_BASE = 361
SHELF_GROUP = (14, 77)
KEY_28K = (4, 4, 35, 27)
KEY_PHASE = (4, 4, 35, 27)
KEY_TRANSFORMER = (3, 4, 35, 27)
KEY_AMPLIFIER = (5, 4, 35, 27)
LED_RADIUS = 5.0
LED_RIM = 7.2
LED_PROFILE = ((5.0, -0.2), (5.7, 1.4), (6.0, 1.4), (7.2, 0.0))
LED_FLOOR = -0.8
LED_DOME = 0.55         # height over radius
LED_CORE = (2.6, 0.7)   # radius and strength of the white core
LED_GLINT = (-1.7, -2.0, 1.1, 0.45)     # in the unlit dome: place, size, strength
LED_GLOW = 0.9
LED_GLOW_REACH = 1.8
LED_MIDDLE = (10.5, 11.0)

# ---- Main panel --------------------------------------------------------------------------------
MAIN_PANEL = (89, 487)
PANEL_LEGEND_LEFT = 51
PANEL_LEGEND_BASE = 11  # below a key's top
BYPASS_AT = (8, 282)    # its caption's left edge and base line
POWER_BASE = 451
SWITCH_SIZE = (47, 92)
PANEL_RULE_INSET = 6
PANEL_KEY = (3, 3, 37, 14)
PANEL_KEYS = dict(link=12, second=49, preamp=86, ms=123, left=286, right=305)
CHANNEL_AT = (6, 172)
CHANNEL_PITCH = 18      # of the keys; the switch itself divides its 92 rows by five
CHANNEL_KEY = (2, 3, 37, 14)
BOTH_KEY = (3, 2, 37, 12)       # in its click area
BOTH_AT = (5, 329)
BOTH_BASE = 11
PANEL_RULES = (165.5, 270.5, 349.5)
POWER_MIDDLE = (24.5, 30.0)
POWER_RADIUS = 20.0
POWER_HEIGHT = 2.6
POWER_FACE = 15.2
POWER_GROOVE = 16.6
POWER_FACE_PROFILE = ((0.0, 2.2), (6.8, 2.5), (10.0, 2.85), (13.6, 3.4), (15.2, 2.0))
POWER_COLLAR_PROFILE = ((16.6, 2.6), (18.6, 2.6), (20.0, 0.2), (20.1, 0.0))
POWER_SUNK = 2.2        # how much lower its face is when on
POWER_INK = (0x14, 0x17, 0x1A)
POWER_AT = (3, 387)
PANEL_SCREWS = ((79.5, 9.5), (79.5, 477.5))
INFO_KEY = (3, 2, 37, 15)

# ---- Channel label -----------------------------------------------------------------------------
LABEL_AT = (33, 455)
LABEL = (771, 32)
LABEL_BASE = 20
LABEL_INSET = 6         # from the strips' edges to the ends of a rule
# Left and right ends, in the frame, of the strips of each channel
LABEL_GROUPS = (((42, 167), (180, 305)), ((42, 292), (305, 555)), ((42, 417), (430, 805)))
LABEL_NAMES = (("LEFT", "RIGHT"), ("MID", "SIDE"))

# ---- Preset row --------------------------------------------------------------------------------
NAME_FIELD = (139, 489, 255, 503)
FIELD_POCKET = 1.5      # margin of the pocket around the name field
FIELD_DEPTH = 1.2
FIELD_ROUND = 1.5
FIELD_SHADE = (0.20, 3.0)   # shade of the pocket's wall at the field's top: strength and rows
MENU_KEY_AT = (258, 489)
MENU_KEY = (12, 14)
SLOT_A_MIDDLE = 321.5
SLOT_B_MIDDLE = 361.0
PRESET_BASE = 499
PRESET_KEY_HEIGHT = 12
PRESET_KEY_BASE = 9     # of a legend, below the key's top
PRESET_KEY_ROUND = 1.8
PRESET_KEYS = {989: (3, 2, 8, 12), 992: (1, 2, 34, 12), 993: (3, 2, 36, 12)}
