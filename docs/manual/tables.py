"""Tables from the program's lists and measurements."""
import math
import re

from names import GLOBAL, control, decibels, frequency, parts
from table_list import rows_of, table
from values import db, drive, level_at, require


def short(text):
    """120.00 becomes 120, and a hyphen the Unicode minus."""
    return re.sub(r"(\d+)\.00\b", r"\1", text).replace("-", "\u2212")


def code(text):
    return f"`{text}`"


@table("parameters")
def parameters(tool):
    rows, pending = [], {}
    for row in tool.parameters():
        title, unit = row["title"], row["unit"]
        values = short(row["values"]) + (f" {unit}" if unit else "")
        if row["steps"] > 100:
            values += f", {row['steps']} steps"
        default = short(row["default"]) + (f" {unit}" if unit and row["default"] != "Off" else "")
        entry = [f"{row['index']}", code(title), control(title), values, default]
        if title in GLOBAL:
            rows.append(entry)
            continue
        stem, channel, second = parts(title)
        if channel == "L":
            pending[stem, second] = entry
            continue
        first = pending.pop((stem, second))
        require(first[2:] == entry[2:], f"{title} has the values of its left partner")
        rows.append([f"{first[0]}, {entry[0]}", f"{first[1]}, {entry[1]}", *entry[2:]])
    require(not pending, "every left parameter has a right one")
    return rows_of(["No.", "Titles", "Control", "Values", "Default"], rows, [8, 24, 22, 50, 11])


@table("frequencies")
def frequencies(tool):
    columns = [[frequency(v) for v in tool.values(title) if v != "Off"]
               for title in ("LFreqL", "MFreqL", "HFreqL", "HpfL")]
    shelf = shelving(tool)
    lows = tool.values("LFreqL")[1:]
    columns.insert(1, ["yes" if low in shelf else "no" for low in lows])
    steps = max(map(len, columns))
    rows = [[name, *column, *[""] * (steps - len(column))] for name, column in
            zip(("LOW, Hz", "SHELF LOW", "MID, Hz", "HIGH, Hz", "HPF, Hz"), columns)]
    return rows_of(["Step", *range(1, steps + 1)], rows, [14] + [-8] * steps)


def shelving(tool):
    """The LOW frequencies at which the shelf key changes the response, by measurement."""
    found = []
    for hertz in tool.values("LFreqL")[1:]:
        bell = ["LFreqL=" + hertz, "LGainL=6"]
        if abs(level_at(tool, bell, 10) - level_at(tool, bell + ["LShelfL=On"], 10)) > 0.1:
            found.append(hertz)
    require([float(f) for f in found] == [300, 200, 120, 82, 63],
            "the low shelf works from 63 to 300 Hz")
    return found


@table("gain-steps")
def gain_steps(tool):
    """Displayed and effective gain, measured with the MID band."""
    tenths = range(0, 11)
    _, found = tool.left([["MFreqL=1800", f"MGainL={t / 10}"] for t in tenths], points=2,
                         first=1600, last=1601)
    levels = [curve[0] for curve in found]
    acting, quarter = [], 0.0
    for before, after in zip([levels[0], *levels], levels):
        if after - before > 0.01:
            quarter += 0.25
        acting.append(quarter)
    require(acting[-1] == 1.0, "tenths act in quarters")
    return rows_of(["Shown, dB", *(f"{t / 10:.1f}" for t in tenths)],
                   [["Acts as, dB", *(f"{a:.2f}".rstrip("0").rstrip(".") for a in acting)]],
                   [11] + [-5] * len(tenths))


def width(hertz, levels):
    """The peak, its frequency (parabola through three points), and the octaves between the two
    points at half the gain in dB."""
    peak = max(range(len(levels)), key=lambda i: abs(levels[i]))
    half = levels[peak] / 2

    def crossing(order):
        for a, b in zip(order, order[1:]):
            if abs(levels[b]) < abs(half):
                share = (levels[a] - half) / (levels[a] - levels[b])
                return math.log2(hertz[a]) + share * (math.log2(hertz[b]) - math.log2(hertz[a]))
        return None

    low = crossing(list(range(peak, -1, -1)))
    high = crossing(list(range(peak, len(levels))))
    octaves = f"{high - low:.1f}" if low is not None and high is not None else "over 10"
    before, top, after = levels[peak - 1:peak + 2]
    offset = (before - after) / (before - 2 * top + after) / 2
    return top, hertz[peak] * (hertz[peak + 1] / hertz[peak]) ** offset, octaves


@table("widths")
def widths(tool):
    gains = [2, 4, 8, 12, 16, -2, -4, -8, -12, -16]
    hertz, (flat, *found) = tool.left([[], *(["MFreqL=1800", f"MGainL={g}"] for g in gains)],
                                      rate=96000, last=40000, points=80)
    tops, places, octaves = zip(*(width(hertz, [a - b for a, b in zip(levels, flat)])
                                  for levels in found))
    require(max(places[5:]) < min(places[:5]), "a cut of MID at 1k8 lies below a boost")
    boosts, cuts = (list(map(float, octaves[half])) for half in (slice(5), slice(5, None)))
    require(max(boosts) == boosts[1] and boosts[1:] == sorted(boosts[1:], reverse=True),
            "a boost is broadest around 4 dB")
    require(cuts == sorted(cuts, reverse=True), "a cut narrows with its amount")
    rows = [["Extreme, dB", *map(db, tops)],
            ["at, kHz", *(f"{place / 1000:.2f}" for place in places)],
            ["Width, octaves", *octaves]]
    return rows_of(["MID 1k8, dB", *(decibels(gain).removesuffix(" dB") for gain in gains)], rows,
                   [18] + [-8] * len(gains))


@table("shelf-corners")
def shelf_corners(tool):
    gains = (1, 3, 6, 12, -3, -6, -12)
    rows = []
    for step in (6800, 10000, 14000, 20000, 28000):
        hertz, (flat, *found) = tool.left(
            [[], *(["HShelfL=On", f"HFreqL={step}", f"HGainL={g}"] for g in gains)],
            rate=192000, first=500, last=40000, points=40)
        cells = []
        for gain, levels in zip(gains, found):
            missing = [abs(gain) / 2 - abs(a - b) for a, b in zip(levels, flat)]
            at = next(i for i, lack in enumerate(missing) if lack < 0)
            share = missing[at - 1] / (missing[at - 1] - missing[at])
            corner = hertz[at - 1] * (hertz[at] / hertz[at - 1]) ** share
            cells.append(f"{corner / 1000:.1f}")
        rows.append([frequency(step), *cells])
    return rows_of(["HIGH", *(decibels(g) for g in gains)], rows, [-8] + [-10] * len(gains))


@table("neighbours")
def neighbours(tool):
    """The largest differences between two bands together and the sum of each alone."""
    lows = tool.values("LFreqL")[1:][::-1]
    pairs = ((8, 8), (-8, -8), (8, -8))

    def low(hertz, gain):
        return [f"LFreqL={hertz}", f"LGainL={gain}"]

    def mid(gain):
        return ["MFreqL=1200", f"MGainL={gain}"]

    curves = [[], mid(8), mid(-8)]
    for hertz in lows:
        curves += [low(hertz, 8), low(hertz, -8), *(low(hertz, a) + mid(b) for a, b in pairs)]
    _, found = tool.left(curves, points=32, first=20)
    none, mids = found[0], {8: found[1], -8: found[2]}
    rows = []
    for number, hertz in enumerate(lows):
        up, down, *both = found[3 + 5 * number:8 + 5 * number]
        cells, apart_most = [], []
        for (a, b), together in zip(pairs, both):
            apart = [t - (p + q - n) for t, p, q, n in
                     zip(together, up if a > 0 else down, mids[b], none)]
            apart_most.append(max(apart, key=abs))
            cells.append(db(apart_most[-1]))
        require(0.09 < abs(apart_most[2] / apart_most[0]) < 0.27,
                "beside a cut a boost is held back a quarter to a tenth as much")
        rows.append([frequency(hertz), *cells])
    marks, *kinds = zip(*rows)
    names = ("both +8 dB", "both \u22128 dB", "LOW +8, MID \u22128 dB")
    return rows_of(["LOW, Hz", *marks], [[name, *kind] for name, kind in zip(names, kinds)],
                   [24] + [-8] * len(marks))


@table("distortion")
def distortion(tool):
    levels = (-18, -12, -6, 0)
    kinds = (("as it starts, 50 Hz", [], 50), ("as it starts, 1 kHz", [], 1000),
             ("QB11, DRIVE \u221216 dB, 1 kHz", drive(-16), 1000),
             ("QB11, DRIVE +8 dB, 1 kHz", drive(8), 1000),
             ("QB11, DRIVE +16 dB, 1 kHz", drive(16), 1000),
             ("QB11, TRAFO OFF, 50 Hz", drive(0, "TrfoDsL=On"), 50),
             ("QB11, AMP OFF, 50 Hz", drive(0, "AmpDsbL=On"), 50))
    rows = []
    for name, settings, hertz in kinds:
        found = tool.harmonics(settings, hertz, "-18:0:6")[0]
        rows.append([name, *(f"{row['thd']:.4f}" if row["thd"] < 0.1 else f"{row['thd']:.3f}"
                             if row["thd"] < 1 else f"{row['thd']:.1f}" for row in found)])
    return rows_of(["THD in %", *(f"{db(level, 0)} dBFS" for level in levels)], rows,
                   [30] + [-12] * len(levels))


@table("latency")
def latency(tool):
    text = tool.run("latency")
    require("All as reported" in text, "the delay is what the plug-in reports")
    reported = {}
    for line in text.splitlines():
        found = re.match(r"\s*(\d+)\s+(Power on|Power off|bypassed)\s+(\d+)", line)
        if found:
            samples = reported.setdefault(int(found[1]), int(found[3]))
            require(samples == int(found[3]), "switches do not change the delay")
    rows = []
    for rate, samples in sorted(reported.items()):
        times = 4 if rate < 88200 else 2 if rate < 176400 else 1
        rows.append([f"{rate / 1000:g} kHz", f"{times}\u00d7" if times > 1 else "none",
                     f"{rate * times / 1000:g} kHz", samples,
                     f"{samples / rate * 1000:.2f} ms"])
        require(samples == (96 if rate < 176400 else 0), "the delay is 96 samples below 176.4 kHz")
    require(len(rows) >= 6, "six rates are measured")
    require(rows[0][3:] == [96, "2.18 ms"], "the delay is 2.18 ms at 44.1 kHz")
    return rows_of(["Rate of the host", "Oversampling", "Stages run at", "Latency, samples",
                    "Latency"], rows, [-14, -14, -14, -16, -12])


@table("information")
def information(tool):
    rows = []
    for line in tool.run("info").splitlines():
        found = re.match(r"(\S.*?)\s{2,}(\S.*)", line)
        if found and found[1] in ("Name", "Vendor", "Vendor's version", "Unique id", "Category",
                                  "Channels taken", "Channels refused"):
            rows.append([found[1], found[2]])
    require(len(rows) == 7, "the plug-in reports seven properties")
    return rows_of(["What a host is told", ""], rows, [24, 60])
