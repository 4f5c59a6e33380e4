"""The editor's names of the parameters."""
import re

GLOBAL = {
    "Power": "POWER",
    "BpsCh1": "BYPASS L",
    "BpsCh2": "BYPASS R",
    "Channel": "MID to SIDE, the monitor keys",
    "MS": "M/S",
    "QB11": "QB11",
    "2x": "2×T46",
    "Link": "LINK",
}
COLUMN = {
    "Drive": "DRIVE",
    "Hpf": "HPF",
    "Output": "OUT",
    "28k": "28k",
    "Phase": "Ø",
    "TrfoDs": "TRAFO OFF",
    "AmpDsb": "AMP OFF",
    "Proc": "EQ IN",
    "LShelf": "SHELF LOW",
    "LShlf": "SHELF LOW",
    "LFreq": "LOW, ring",
    "LGain": "LOW, knob",
    "MFreq": "MID, ring",
    "MGain": "MID, knob",
    "HShelf": "SHELF HIGH",
    "HShlf": "SHELF HIGH",
    "HFreq": "HIGH, ring",
    "HGain": "HIGH, knob",
}


def parts(title):
    """Stem and channel (L or R) of a column's parameter, and whether it is of the second T46."""
    stem, channel, second = re.fullmatch(r"(.+?)([LR])(2?)", title).groups()
    return stem, channel, bool(second)


def mirrored(left, right):
    """Combines two lists of left-channel settings: the first for the left channel, the second
    moved to the right one. None if they need different global settings."""
    def split(settings):
        shared, own = set(), []
        for setting in settings:
            title, value = setting.split("=")
            if title in GLOBAL or parts(title)[0] in ("TrfoDs", "AmpDsb"):
                shared.add(setting)
            else:
                stem, channel, second = parts(title)
                own.append((stem, channel, "2" if second else "", value))
        return shared, own
    (shared, first), (others, second) = split(left), split(right)
    if shared != others or any(own[1] != "L" for own in first + second):
        return None
    return [*sorted(shared), *(f"{stem}L{end}={value}" for stem, _, end, value in first),
            *(f"{stem}R{end}={value}" for stem, _, end, value in second)]


def control(title):
    """The name of the control that edits a parameter; an unknown parameter ends the build."""
    if title in GLOBAL:
        return GLOBAL[title]
    stem, _, second = parts(title)
    if stem not in COLUMN:
        raise SystemExit(f"names.py does not know the parameter {title}")
    return COLUMN[stem] + (" (2nd T46)" if second else "")


def frequency(text):
    """A frequency in the editor's notation: 6800.00 becomes 6k8."""
    hertz = float(text)
    if hertz < 1000:
        return f"{hertz:g}"
    whole, _, part = f"{hertz / 1000:g}".partition(".")
    return f"{whole}k{part}"


def decibels(gain):
    """A gain with its sign, using the Unicode minus."""
    return f"{gain:+g} dB".replace("-", "\u2212") if gain else "0 dB"
