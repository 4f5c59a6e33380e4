"""The manual's diagrams: their measurements and layout."""
from names import decibels, frequency
from plot import COLOURS, Line, Panel, draw
from situations import SITUATIONS

FIGURES = {}


def figure(name):
    def keep(function):
        FIGURES[name] = function
        return function
    return keep


def frequencies(tool, title):
    """The frequencies of a band, as settings."""
    return [v for v in tool.values(title) if v != "Off"]


def by_drive(tool, drives, hertz, levels, column):
    """Lines over the level of a tone, one per DRIVE; the two channels measure two at a time."""
    lines = []
    for pair in zip(drives[::2], drives[1::2]):
        settings = ["QB11=On", f"DriveL={pair[0]}", f"DriveR={pair[1]}"]
        channels = tool.harmonics(settings, hertz, levels)
        for gain, rows in zip(pair, channels):
            lines.append(Line([r["in"] for r in rows], [column(r) for r in rows],
                              f"DRIVE {decibels(gain)}", len(lines)))
    return lines


def plus(first, second, reference):
    """The response of two bands without interaction: the sum of each alone."""
    return [a + b - r for a, b, r in zip(first, second, reference)]


def many_lines(x, curves, labels):
    """More lines than there are colours: every second round of colours is dashed."""
    return [Line(x, y, label, i, i // len(COLOURS) % 2 == 1)
            for i, (y, label) in enumerate(zip(curves, labels))]


@figure("steps")
def steps(tool, path):
    panels = []
    for band, name in (("L", "LOW"), ("M", "MID"), ("H", "HIGH")):
        steps_of_band = frequencies(tool, f"{band}FreqL")
        curves = [[f"{band}FreqL={hz}", f"{band}GainL=6"] for hz in steps_of_band]
        x, levels = tool.left(curves, rate=96000, last=40000, points=60)
        panels.append(Panel(many_lines(x, levels, map(frequency, steps_of_band)), (-2, 8, 2), name,
                            x=(10, 40000)))
    draw(path, panels, height=530)


@figure("gains")
def gains(tool, path):
    steps_up = [16, 12, 8, 4, 2, -2, -4, -8, -12, -16]
    x, levels = tool.left([["MFreqL=1800", f"MGainL={g}"] for g in steps_up])
    lines = [Line(x, y, decibels(g), i % 5 if g > 0 else 4 - i % 5) for i, (g, y) in
             enumerate(zip(steps_up, levels))]
    draw(path, [Panel(lines, (-18, 20, 4))], height=215)


@figure("shapes")
def shapes(tool, path):
    gains_drawn = [12, 6, 3, -3, -6, -12]
    panels = []
    for band, hz, name in (("L", 120, "LOW 120"), ("H", 10000, "HIGH 10k")):
        for shelf in ("Off", "On"):
            curves = [[f"{band}ShelfL={shelf}", f"{band}FreqL={hz}", f"{band}GainL={g}"]
                      for g in gains_drawn]
            x, levels = tool.left(curves, rate=96000, last=40000, points=60)
            lines = [Line(x, y, f"\u00b1{g} dB" if g > 0 else "", i % 3 if g > 0 else 2 - i % 3)
                     for i, (g, y) in enumerate(zip(gains_drawn, levels))]
            kind = "shelf" if shelf == "On" else "bell"
            panels.append(Panel(lines, (-16, 16, 4), f"{name}, {kind}", x=(10, 40000)))
    draw(path, panels, columns=2, height=405, key="below")


@figure("signs")
def signs(tool, path):
    low, mid = "LFreqL=300", "MFreqL=1200"
    panels = []
    for first, second in ((8, 8), (-8, -8), (8, -8), (-8, 8)):
        a, b = [low, f"LGainL={first}"], [mid, f"MGainL={second}"]
        x, (none, alone_a, alone_b, both) = tool.left([[], a, b, a + b])
        lines = [Line(x, alone_a, "LOW alone", 2, width=1),
                 Line(x, alone_b, "MID alone", 3, width=1),
                 Line(x, both, "both, measured", 0, width=2.4),
                 Line(x, plus(alone_a, alone_b, none), "sum of the two alone", 1, True)]
        panels.append(Panel(lines, (-16, 16, 4),
                            f"LOW 300 {decibels(first)}, MID 1k2 {decibels(second)}"))
    draw(path, panels, columns=2, height=400, key="below")


@figure("idle-neighbour")
def idle_neighbour(tool, path):
    mid = ["MFreqL=1200", "MGainL=8"]
    names = ("alone", "LOW at 0 dB", "HIGH at 0 dB", "both at 0 dB")
    low, high = ["LFreqL=300"], ["HFreqL=6800"]
    x, levels = tool.left([mid, mid + low, mid + high, mid + low + high])
    draw(path, [Panel([Line(x, y, n, i) for i, (n, y) in enumerate(zip(names, levels))],
                      (-2, 10, 2), "MID 1k2 +8 dB")], height=200)


@figure("three-bands")
def three_bands(tool, path):
    panels = []
    for gains_set in ((6, 6, 6), (6, -6, 6)):
        bands = [["LFreqL=120", f"LGainL={gains_set[0]}"],
                 ["MFreqL=1200", f"MGainL={gains_set[1]}"],
                 ["HFreqL=8200", f"HGainL={gains_set[2]}"]]
        x, (none, low, mid, high, all_three) = tool.left(
            [[], *bands, bands[0] + bands[1] + bands[2]])
        total = plus(plus(low, mid, none), high, none)
        title = "LOW 120 {}, MID 1k2 {}, HIGH 8k2 {}".format(*map(decibels, gains_set))
        lines = [Line(x, all_three, "all three, measured", 0, width=2.4),
                 Line(x, total, "sum of the three alone", 1, True)]
        panels.append(Panel(lines, (-8, 16, 4), title))
    draw(path, panels, columns=2, height=220, key="below")


@figure("high-pass")
def high_pass(tool, path):
    steps_up = frequencies(tool, "HpfL")
    x, levels = tool.left([["QB11=On", f"HpfL={hz}"] for hz in steps_up])
    lines = many_lines(x, levels, map(frequency, steps_up))
    draw(path, [Panel(lines, (-36, 3, 6), x=(10, 5000))], height=195)


@figure("28k")
def boost_28k(tool, path):
    x, levels = tool.left([["QB11=On"], ["QB11=On", "28kL=On"]], rate=192000, last=80000)
    lines = [Line(x, levels[1], "28k on", 0), Line(x, levels[0], "28k off", 4)]
    draw(path, [Panel(lines, (-4, 8, 2), x=(100, 80000))], height=200)


@figure("no-bands")
def no_bands(tool, path):
    names = ("EQ IN, bands off", "EQ IN off", "2\u00d7T46, bands off", "POWER off")
    x, levels = tool.left([[], ["ProcL=Off"], ["2x=On"], ["Power=Off"]], rate=192000, first=5,
                          last=80000)
    draw(path, [Panel([Line(x, y, n, i) for i, (n, y) in enumerate(zip(names, levels))],
                      (-6, 1, 1), x=(5, 80000))], height=230)


@figure("distortion")
def distortion(tool, path):
    lines = by_drive(tool, (16, 8, 0, -16), 1000, "-40:18:2", lambda row: row["thd"])
    draw(path, [Panel(lines, (0.001, 100, 0), x=(-40, 18), decades=False,
                      xlabel="Level of a 1 kHz tone, dBFS", ylabel="THD, %", log_y=True)],
         height=200)


@figure("harmonics")
def harmonics(tool, path):
    drives = range(-16, 17)
    found = []
    for drive in drives[::2]:
        both = tool.harmonics(["QB11=On", f"DriveL={drive}", f"DriveR={min(drive + 1, 16)}"], 1000,
                              "-6:-6:1")
        found += [channel[0] for channel in both]
    found = found[:len(drives)]
    lines = [Line(list(drives), [row[n] for row in found], f"H{n}", n - 2) for n in (2, 3, 4, 5)]
    draw(path, [Panel(lines, (-120, -20, 20), x=(-16, 16), decades=False, xticks=4,
                      xlabel="DRIVE, dB", ylabel="dB relative to the tone")], height=190)


@figure("peaks")
def peaks(tool, path):
    lines = by_drive(tool, (16, 12, 8, 0), 1000, "-30:6:1.5", lambda row: row["out"] - row["in"])
    draw(path, [Panel(lines, (-6, 1, 1), x=(-30, 6), decades=False,
                      xlabel="Level of a 1 kHz tone, dBFS", ylabel="Output over input, dB")],
         height=195)


@figure("stages")
def stages(tool, path):
    lines = []
    for number, (name, settings) in enumerate((
            ("all stages", []), ("TRAFO OFF", ["TrfoDsL=On"]), ("AMP OFF", ["AmpDsbL=On"]))):
        rows, _ = tool.harmonics(["QB11=On", "DriveL=16", "DriveR=16", *settings], 40, "-30:6:1.5")
        lines.append(Line([r["in"] for r in rows], [r["thd"] for r in rows], name, number,
                          dashed=number == 1))
    draw(path, [Panel(lines, (0.001, 100, 0), x=(-30, 6), decades=False,
                      xlabel="Level of a 40 Hz tone, dBFS", ylabel="THD, %", log_y=True)],
         height=190)


@figure("two-in-series")
def two_in_series(tool, path):
    low, mid = ["LFreqL=300", "LGainL=8"], ["MFreqL=1200", "MGainL=8"]
    split = ["2x=On", *low, "MFreqL2=1200", "MGainL2=8"]
    x, levels = tool.left([low + mid, split])
    draw(path, [Panel([Line(x, levels[0], "in one T46", 0), Line(x, levels[1], "in two T46s", 1)],
                      (-2, 18, 4), "LOW 300 +8 dB, MID 1k2 +8 dB")], height=200)


@figure("mid-side")
def mid_side(tool, path):
    x, [(mid, side)] = tool.response([[]], "--preset", "Mastering loudness")
    draw(path, [Panel([Line(x, mid, "MID", 0), Line(x, side, "SIDE", 1)], (-2, 6, 1),
                      "Preset \u201cMastering loudness\u201d")], height=205)


def situation(name):
    def draw_situation(tool, path):
        settings, view = SITUATIONS[name]
        x, [(first, second)] = tool.response([settings], "--view", view)
        lines = [Line(x, first, "MID" if view == "ms" else "L and R", 0)]
        lines += [Line(x, second, "SIDE", 1)] if view == "ms" else []
        draw(path, [Panel(lines, (-6 if view == "ms" else -4, 4, 2))], height=240,
             key="inside" if view == "ms" else "none", width=460)
    return draw_situation


for title in SITUATIONS:
    FIGURES[title] = situation(title)
