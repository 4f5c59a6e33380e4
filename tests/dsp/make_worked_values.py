#!/usr/bin/python3
"""Writes worked_values.txt: what the band models, the interactions and the update must give.

The curves stand here a second time, apart from the C++, so that a slip in either of the two shows
as a difference. Run by hand; the result is committed.

Throughout: g is a gain in dB, w = log10(|g| + 1) / log10(17), u = g / 16.
"""
from math import log, log10, sqrt
from pathlib import Path


def table(columns, text):
    """The rows of a table by their first number."""
    rows = [[float(word) for word in line.split()] for line in text.strip().splitlines()]
    return {row[0]: dict(zip(columns.split(), row[1:], strict=True)) for row in rows}


# P: output gain, dB per w, or per w cubed. D: damping, per w. The cut's are marked with a c, the
# boost's with a b.
LOW_SHELF = table("F cP cD bP bD", """
    300     1  -0.79  0.85  1.21  -0.79
    200  0.98  -0.95  0.92  1.55  -0.79
    120  0.81  -1.41  0.75  1.55  -0.76
     82     1   -1.1  0.92  1.55  -0.79
     63  0.92     -1  0.88  1.85  -0.79
""")
# S: factor of the gain. bP is per w cubed.
HIGH_SHELF = table("F cS cP cD bS bP bD", """
    28000  0.96   0.93    0  -0.23    1.04     0  0.33
    24000  0.96  0.958    0  -0.23    1.06     0  0.33
    20000  0.96   0.94    0  -0.23    1.06     0  0.33
    17500  0.92  0.955    0  -0.23    1.06     0  0.27
    14000     1  0.978    0  -0.23    1.06     0  0.23
    12000  0.94  0.978    0  -0.23  1.0544     0  0.23
    10000     1  0.978  0.1  -0.33  1.0544  0.32  0.33
     8200  0.94      1  0.2  -0.23    1.07     0  0.23
     6800     1      1  0.2  -0.23  1.0611     0  0.23
""")
# Filter frequency over step: C for a cut, B * w + A for a boost (at 120 Hz another curve, below).
LOW_BELL = table("C B A cP cD bP bD", """
    550  0.834  0.13   0.83   -1.1  0.75  1.12  -0.79
    430  0.901  0.14  0.901  -0.79  0.83  1.12  -0.79
    370   0.84  0.08    0.9  -0.79  1.02  1.12  -0.79
    300   0.84  0.08    0.9  -0.79  1.02  1.21  -0.79
    200   0.82   0.1    0.9  -0.95  0.92  1.55  -0.79
    120    0.7     0      0  -1.41  0.75  1.55  -0.76
     82   0.82  0.12   0.84   -1.1  0.92  1.55  -0.79
     63   0.74  0.12   0.78     -1  0.88  1.85  -0.79
     33    0.7  0.08   0.74  -1.18  1.02  1.55  -0.79
""")
# cD is per u, bP per w cubed. D0: damping at 0 dB; 0.8 in the other tables.
MID_BELL = table("C B A cS bS cP cD bP bD D0", """
    5600   0.9  0.04  0.92    1.01  0.986    0.2  -0.26  0.92    0.9   0.8
    4600   0.9  0.04  0.92    1.01  0.986    0.2  -0.26  0.52    0.1   0.8
    3800   0.9  0.04  0.92    1.01  0.993      0  -0.16  0.53  -0.01   0.8
    3000  0.96  0.04  0.96    1.02   0.97      0  -0.46  1.66  -0.09  0.75
    2500  0.94  0.08  0.94  1.0608   1.02      0  -0.71   1.2  -0.09  0.75
    1800  0.88  0.08  0.88  1.0608   1.02      0  -1.07  0.52  -0.49  0.75
    1200  0.88  0.08  0.88  1.0608   1.02      0  -1.07  0.52  -0.69  0.75
     800  0.88  0.08  0.91  1.0608   0.98  -0.54   -0.9  1.09  -0.74  0.75
     680  0.88  0.08  0.89  1.0608   0.98  -0.54   -0.9  1.09  -0.74  0.75
""")
# R: factor of Q.
HIGH_BELL = table("C B A cS bS cP cD bP bD cR bR", """
    28000   0.96      0   0.96   0.93       1    0  -0.26     0  -0.08  1.1   0.99
    24000   0.93  0.018   0.93  0.958    1.02    0  -0.26     0  -0.08  1.1   0.99
    20000   0.92   0.04   0.92   0.94    1.02    0  -0.26     0  -0.08  1.1      1
    17500   0.88   0.04   0.88  0.955    1.02    0  -0.26     0  -0.08  1.1      1
    14000   0.92   0.04   0.92  0.978   1.039    0  -0.26     0  -0.08  1.1   1.05
    12000  0.876   0.04  0.876  0.978  1.0544    0  -0.26     0  -0.07  1.1  0.999
    10000    0.9   0.04   0.92  0.998    0.99  0.2  -0.26  0.52   0.65  1.1   0.97
     8200    0.9   0.04   0.92   1.04    0.99  0.2  -0.26  0.52   0.65  1.1   0.97
     6800  0.925  0.041  0.925   1.02  1.0611  0.2  -0.24     0    0.2  1.1      1
""")

# Ratio of the steps, own dB, other dB: both sides of every boundary of the curves, gains that push
# together and against each other, and gains beyond 16 dB.
SHELF_CASES = [
    (0.004, 5, 4), (0.004, 12, 13.5), (0.004, -11, -12), (0.02, 17, 18), (0.02, -6, -3),
    (0.02, -11, -12), (0.025, 12, 13.5), (0.025, -9, 9), (0.025, -11, -12), (0.06, -6, -3),
    (0.06, 5, 4), (0.06, -11, -12), (0.166, -9, 9), (0.166, 17, 18), (0.166, -11, -12),
    (0.167, 5, 4), (0.167, 12, 13.5), (0.167, -11, -12), (0.4, 17, 18), (0.4, -6, -3),
    (0.4, -11, -12), (0.8, 12, 13.5), (0.8, -9, 9), (0.8, -11, -12), (0.1, 17, -8), (0.1, -17, 8),
    (0.1, -8, 17), (0.1, 8, -17), (0.1, 0, 16)]
BELL_CASES = [
    (0.002, -6, -3), (0.002, 5, 4), (0.002, -11, -12), (0.03, -9, 9), (0.03, 17, 18),
    (0.03, -11, -12), (0.064, 5, 4), (0.064, 12, 13.5), (0.064, -11, -12), (0.065, 17, 18),
    (0.065, -6, -3), (0.065, -11, -12), (0.15, 12, 13.5), (0.15, -9, 9), (0.15, -11, -12),
    (0.2, -6, -3), (0.2, 5, 4), (0.2, -11, -12), (0.21, -9, 9), (0.21, 17, 18), (0.21, -11, -12),
    (0.5, 5, 4), (0.5, 12, 13.5), (0.5, -11, -12), (0.8, 17, 18), (0.8, -6, -3), (0.8, -11, -12),
    (1.3, 12, 13.5), (1.3, -9, 9), (1.3, -11, -12), (0.5, 0, 16)]

# Band mode; step in Hz (0 out of circuit) and knob in dB of the low, the mid and the high band.
UPDATE_CASES = """
     0      0     0      0     0      0     0
     1     82    15      0     0      0     0
     2      0     0      0     0   8200  11.5
     4     33 -1.75      0     0      0     0
     8      0     0   3800    15      0     0
    16      0     0      0     0   8200    -4
     3     82    -4      0     0  28000    15
     3    200   -14      0     0   8200  6.25
     6     63 -1.75      0     0   6800 -1.75
     6    200  11.5      0     0  28000  -9.5
     9     82     3   1200    15      0     0
     9    300     3   1800 -1.75      0     0
    10      0     0    680     3  28000  -9.5
    10      0     0   4600     8  24000     3
    12     82  -9.5   5600   -14      0     0
    12    300 -1.75   5600  11.5      0     0
    17     82     8      0     0  10000  -9.5
    17     63 -1.75      0     0  14000  6.25
    20    430     3      0     0  12000   -14
    20     82  -9.5      0     0  20000 -1.75
    24      0     0   4600   -14  28000  11.5
    24      0     0    800    -4   6800 -1.75
    11     82    15   3000    -4  10000     8
    11    300     8   1200 -1.75  28000     3
    14    200   -14   3000    -4  10000  -9.5
    14    550    -4   3000  11.5  14000   -14
    25     63  6.25   2500     8  24000  -9.5
    25    300 -1.75   3000   -14  12000  6.25
    28     63    -4    800    -4  10000    -4
    28    370     3   3000 -1.75  17500    -4
"""

HEAD = """\
# Values that the band models, the interactions and the update must give, to ten digits. Written by
# make_worked_values.py, which evaluates the curves apart from the code. A line is the kind of a row
# and its numbers.

# NAMEModel: step, Hz; at -10 dB: dB, Hz, Q, output gain, damping; the same at +10 dB
"""
SHELF_HEAD = """
# shelf: ratio of the steps, own dB, other dB; mix, ratio, scale
"""
BELL_HEAD = """
# bell: ratio of the steps, own dB, other dB; mix, ratio, factor of Q, own dB after it
"""
UPDATE_HEAD = """
# update: band mode, output gain, damping; then of the low, the mid and the high band: step in Hz (0
# out of circuit), knob in dB; Hz, Q, mix and ratio of the high-pass skirt, of the low-pass skirt
# (a shelf's only one), dB
"""


class Band:
    """A band in circuit: what its model gives, and its skirts."""

    def __init__(self, step, knob, db, hz, q, output_db, damping):
        self.step, self.knob, self.db, self.hz, self.q = step, knob, db, hz, q
        self.output, self.damping = 10 ** (output_db / 20), damping
        self.is_shelf = False
        self.high_skirt = self.low_skirt = (0, 1)

    def model_row(self):
        return [self.db, self.hz, self.q, self.output, self.damping]

    def update_row(self):
        return [self.step, self.knob, self.hz, self.q, *self.high_skirt, *self.low_skirt, self.db]


def w_of(g):
    return log10(abs(g) + 1) / log10(17)


def shelf(step, g, hz, db, output_db, damping):
    band = Band(step, g, db, hz, 1, output_db, damping)
    band.is_shelf = True
    return band


def corner(g):
    return 6.54894 - 2.00016 * log(g) if g > 0 else 6.75


def bell_q(g, cut_base):
    u = g / 16
    return 0.96 * (cut_base if g < 0 else 1.36 * u ** 2 - 0.66 * u + 0.31)


def low_shelf(step, g):
    row, side, w = LOW_SHELF[step], "b" if g > 0 else "c", w_of(g)
    return shelf(step, g, step * corner(g) * row["F"], g, row[side + "P"] * w,
                 0.8 + row[side + "D"] * w)


def high_shelf(step, g):
    row, side, w = HIGH_SHELF[step], "b" if g > 0 else "c", w_of(g)
    return shelf(step, g, step / corner(g) * row["F"], g * row[side + "S"],
                 row[side + "P"] * (w ** 3 if g > 0 else w), 0.8 + row[side + "D"] * w)


def low_bell(step, g):
    row, side, w, u = LOW_BELL[step], "b" if g > 0 else "c", w_of(g), g / 16
    boosted = 0.16 * u ** 2 + 1e-7 * u + 0.7 if step == 120 else row["B"] * w + row["A"]
    return Band(step, g, g * (0.97 if g > 0 else 1.02), step * (row["C"] if g < 0 else boosted),
                bell_q(g, 0.13), row[side + "P"] * w, 0.8 + row[side + "D"] * w)


def upper_bell(row, step, g):
    w = w_of(g)
    hz = step * (row["C"] if g < 0 else row["B"] * w + row["A"])
    db = g * row["cS" if g < 0 else "bS"]
    start = row.get("D0", 0.8)
    if g > 0:
        return Band(step, g, db, hz, bell_q(g, 0.1378), row["bP"] * w ** 3, start + row["bD"] * w)
    return Band(step, g, db, hz, bell_q(g, 0.1378), row["cP"] * w, start + row["cD"] * g / 16)


def mid_bell(step, g):
    return upper_bell(MID_BELL[step], step, g)


def high_bell(step, g):
    row = HIGH_BELL[step]
    band = upper_bell(row, step, g)
    band.q *= row["cR" if g < 0 else "bR"]
    return band


def limited(x, lowest, highest):
    return max(lowest, min(highest, x))


def push(own, other):
    """How far two bands push together: 1 is a summed 16 dB."""
    return limited(abs(limited(own, -16, 16) + limited(other, -16, 16)) / 16, 0, 2)


def shelf_interaction(x, own, other):
    """Mix and ratio of the skirt, scale of the frequency."""
    cut = own < 0
    if x < 0.025:
        mix = 20.8716 * x - 0.0240826
        ratio = 1 if cut else 238.095 * x ** 2 - 22.8571 * x + 2.02262
        scale = -238.095 * x ** 2 + 22.8571 * x + 0.977381
    elif x < 0.167:
        mix = 0.0286114 * log(x) + 0.615374
        ratio = -0.273109 * log(1.03646 * x) if cut else -0.512777 * log(1.92941 * x)
        scale = 1.41891 - 0.833567 * x
    else:
        mix = (-1.39553 * x ** 2 + 1.03096 * x + 0.416749 if cut
               else 1.63263 * x ** 2 - 1.54008 * x + 0.761662)
        ratio = (0.474206 * x ** 2 - 1.01824 * x + 0.636822 if cut
                 else 1.22163 * x ** 2 - 1.91064 * x + 0.885006)
        scale = -2.16859 * x ** 2 + 2.92434 * x + 0.852115
    s = push(own, other)
    p = 0.2 + 0.8 * s if s <= 1 else 1.34 * (s - 1) + 2 - s
    v = min(1, 0.1 + 0.9 * s)
    return mix * p, 1 + (ratio - 1) * v, 1 + (scale - 1) * v


def bell_interaction(x, own, other):
    """Mix and ratio of the skirt, factor of Q, own dB after it."""
    cut, x = own <= 0, limited(x, 0, 1)
    narrower = 0.481178 * x ** 2 - 0.84529 * x + 1.14981
    q = db = 1
    if x <= 0.064:
        mix, ratio = 0.100494 * log(373.844 * x), 1
    elif x <= 0.2:
        mix = -2.93607 * x ** 2 + 1.14277 * x + 0.238889
        ratio = 3.82966 * x ** 2 - 4.09926 * x + 1.24667
        db = 3.82966 * x ** 2 - 1.59926 * x + 1.06667 if cut else 1
    elif cut:
        mix = 1.29121 * x ** 2 - 1.83502 * x + 0.665356
        ratio = -0.505388 * x ** 2 - 0.41197 * x + 0.682609
        q, db = 2 - narrower, 0.465542 * x ** 2 - 0.685048 * x + 1.01839
    else:
        mix = 0.384056 - 0.175833 * x
        ratio = 1.83191 * x ** 2 - 2.6451 * x + 1.03574
        q, db = narrower, 0.30061 * x ** 2 - 0.500132 * x + 1.088
    s = push(own, other)
    v = min(1, 0.2 + 0.8 * s)
    p = v if s <= 1 else (-2.73452 * x ** 2 + 3.47681 * x + 0.818196) * (s - 1) + 2 - s
    return mix * p, 1 + (ratio - 1) * v, 1 + (q - 1) * v, own * (1 + (db - 1) * v)


def interact(band, x, other):
    """The band's mix, ratio and scale; corrects a bell's Q and dB."""
    if band.is_shelf:
        return shelf_interaction(x, band.db, other)
    mix, ratio, q, band.db = bell_interaction(x, band.db, other)
    band.q *= q
    return mix, ratio, 1


# A bell's skirts never go inwards of its edges. A shelf's only one is printed as a low skirt.
def shape_lower(band, skirt):
    mix, ratio, scale = skirt
    band.hz *= scale
    band.low_skirt = (limited(mix, 0, 1), ratio if band.is_shelf else min(ratio, 1))


def shape_upper(band, skirt, inverted=True):
    mix, ratio, scale = skirt
    if inverted:
        ratio = 1 / ratio
    band.hz /= scale
    if band.is_shelf:
        band.low_skirt = (limited(mix, 0, 1), ratio)
    else:
        band.high_skirt = (limited(mix, 0, 1), max(ratio, 1))


def update(mode, low, mid, high):
    """Output gain and damping; shapes the bands, of which those out of circuit are None."""
    bands = [band for band in (low, mid, high) if band]
    if not bands:
        return 1, 0.6
    if len(bands) == 1:
        return bands[0].output, bands[0].damping
    if len(bands) == 2:
        lower, upper = bands
        x = lower.step / upper.step
        lower_db, upper_db = (lower.db, upper.db) if mode == 3 else (lower.knob, upper.knob)
        shape_lower(lower, interact(lower, x, upper_db))
        shape_upper(upper, interact(upper, x, lower_db), inverted=mode != 24)
        output = (lower.output * 0.8 + upper.output * 0.2 if mode == 9
                  else sqrt(lower.output * upper.output))
        return output, lower.damping * 0.7 + upper.damping * 0.4
    across = low.step * 0.5 / high.step
    shape_lower(mid, interact(mid, mid.step / high.step, high.knob))
    shape_upper(mid, interact(mid, low.step / mid.step, low.knob))
    shape_lower(low, interact(low, low.step / mid.step + across, mid.knob))
    shape_upper(high, interact(high, mid.step / high.step + across, mid.knob))
    return sum(band.output for band in bands) * 0.33, sum(band.damping for band in bands) * 0.33


def update_row(line):
    mode, *knobs = [float(word) for word in line.split()]
    models = (low_shelf if int(mode) & 1 else low_bell, mid_bell,
              high_shelf if int(mode) & 2 else high_bell)
    bands = [model(step, db) if step else None
             for model, step, db in zip(models, knobs[0::2], knobs[1::2])]
    row = [mode, *update(int(mode), *bands)]
    for band in bands:
        row += band.update_row() if band else [0] * 9
    return row


def lines(kind, rows):
    return "".join(" ".join([kind] + [f"{x:.10g}" for x in row]) + "\n" for row in rows)


def model_lines(name, model, rows):
    return lines(name, [[step, *model(step, -10).model_row(), *model(step, 10).model_row()]
                        for step in rows])


def main():
    text = (HEAD + model_lines("lowShelfModel", low_shelf, LOW_SHELF)
            + model_lines("highShelfModel", high_shelf, HIGH_SHELF)
            + model_lines("lowBellModel", low_bell, LOW_BELL)
            + model_lines("midBellModel", mid_bell, MID_BELL)
            + model_lines("highBellModel", high_bell, HIGH_BELL)
            + SHELF_HEAD + lines("shelf", [case + shelf_interaction(*case) for case in SHELF_CASES])
            + BELL_HEAD + lines("bell", [case + bell_interaction(*case) for case in BELL_CASES])
            + UPDATE_HEAD + lines("update", map(update_row, UPDATE_CASES.strip().splitlines())))
    Path(__file__).with_name("worked_values.txt").write_text(text)


if __name__ == "__main__":
    main()
