"""Tables of settings in the editor's terms: the factory presets, and the worked examples."""
import re

from names import COLUMN, GLOBAL, decibels, frequency
from situations import SITUATIONS
from table_list import TABLES, rows_of, table
from values import require

KEYS = {"Middle": "MID", "Left": "LEFT", "Stereo": "STEREO", "Right": "RIGHT", "Side": "SIDE"}


@table("presets")
def presets(tool):
    rows = []
    for line in tool.run("preset", "list").splitlines()[1:]:
        index, name = re.match(r"(\d+)\s+(.*\S)\s+\S+$", line).groups()
        rows.append([index, name, summary(tool, index)])
    require(len(rows) == 24, "there are 24 presets")
    require([name for _, name, _ in rows].count("Init") == 3, "three places are named Init")
    return rows_of(["No.", "Name", "What differs from the defaults"], rows, [5, 24, 80])


def summary(tool, index):
    """A preset's settings in the editor's terms; equal values of left and right are given once."""
    text = tool.run("preset", "show", index)
    shown = {}
    for line in text.splitlines():
        found = re.match(r"(\S+)\s+(\S+)( dB| Hz)?\s+\S+$", line)
        if found and found[1] != "Title":
            shown[found[1]] = found[2]
    told = []
    for title in ("MS", "QB11", "2x", "Link", "BpsCh1", "BpsCh2", "Channel"):
        if title not in shown:
            continue
        setting = shown[title]
        name = GLOBAL[title] if title != "Channel" else f"monitor {KEYS[setting]}"
        told.append(f"{name} off" if setting == "Off" else name)
    for second in ("", "2"):
        pairs = {stem: (shown.get(f"{stem}L{second}"), shown.get(f"{stem}R{second}"))
                 for stem in COLUMN}
        pairs = {stem: pair for stem, pair in pairs.items() if pair != (None, None)}
        note = " (2nd)" if second else ""
        for stem in ("Drive", "Hpf", "Output"):
            if stem in pairs:
                told.append(f"{COLUMN[stem]} {two(pairs[stem], stem)}")
        for stem in ("28k", "Phase", "TrfoDs", "AmpDsb", "Proc"):
            if stem in pairs:
                state = "Off" if stem == "Proc" else "On"
                told.append(switch(COLUMN[stem] + note, pairs[stem], state))
        for band, name, shelf in (("L", "LOW", ("LShelf", "LShlf")), ("M", "MID", ()),
                                  ("H", "HIGH", ("HShelf", "HShlf"))):
            if f"{band}Freq" not in pairs and f"{band}Gain" not in pairs:
                continue
            words = [name + note]
            if f"{band}Freq" in pairs:
                words.append(two(pairs[f"{band}Freq"], "Freq"))
            if f"{band}Gain" in pairs:
                words.append(two(pairs[f"{band}Gain"], "Gain"))
            if any(s in pairs for s in shelf):
                words.append("shelf")
            told.append(" ".join(words))
    return "; ".join(told) if told else "nothing"


def two(pair, kind):
    def one(text):
        if text is None:
            return "off" if kind in ("Freq", "Hpf") else "0"
        if kind in ("Freq", "Hpf"):
            return frequency(text)
        return f"{float(text):+g}".replace("-", "\u2212")
    first, second = map(one, pair)
    return first if first == second else f"{first} / {second}"


def switch(name, pair, state):
    sides = [side for side, text in zip("LR", pair) if text == state]
    word = f"{name} off" if state == "Off" else name
    return word if len(sides) == 2 else f"{word} ({sides[0]})"


def settings_table(name):
    def make(tool):
        settings, view = SITUATIONS[name]
        chosen = dict(s.split("=") for s in settings)
        first, second = ("MID", "SIDE") if view == "ms" else ("Left", "Right")
        rows = [[GLOBAL[title], "on", "on"] for title in chosen if title in GLOBAL]
        order = ["Drive", "Hpf", "Output", "LShelf", "LFreq", "LGain", "MFreq", "MGain", "HShelf",
                 "HFreq", "HGain"]
        for stem in order:
            sides = [chosen.get(stem + side) for side in "LR"]
            if sides == [None, None]:
                continue
            rows.append([COLUMN[stem], *(shown_setting(stem, text) for text in sides)])
        return rows_of(["Control", first, second], rows, [20, 14, 14])
    return make


def shown_setting(stem, text):
    if text is None or text == "Off":
        return "off" if "Gain" not in stem and stem not in ("Drive", "Output") else "0 dB"
    if text == "On":
        return "on"
    if stem in ("Hpf",) or "Freq" in stem:
        return frequency(text)
    return decibels(float(text))


for situation in SITUATIONS:
    TABLES["settings-" + situation] = settings_table(situation)
