#!/usr/bin/python3
"""Works out the results in worked_values.txt from the inputs of each row, apart from the code that
is tested, and writes them; with --check it tells the rows that differ. A new row needs its inputs
alone; an update's stand in their columns, with anything in the others.

Usage: make_worked_values.py [--check] FILE
"""
import math
import sys
from pathlib import Path

# By step: factor of the frequency, then for a cut and for a boost the output gain in dB and the
# damping, as polynomials of w.
LOW_SHELF = {
    63: (0.92, (0, -1.0), (0.8, 0.88), (0, 1.85), (0.8, -0.79)),
    82: (1, (0, -1.1), (0.8, 0.92), (0, 1.55), (0.8, -0.79)),
    120: (0.81, (0, -1.41), (0.8, 0.75), (0, 1.55), (0.8, -0.76)),
    200: (0.98, (0, -0.95), (0.8, 0.92), (0, 1.55), (0.8, -0.79)),
    300: (1, (0, -0.79), (0.8, 0.85), (0, 1.21), (0.8, -0.79)),
}
# Factors of the frequency, of a cut's and of a boost's gain; then as above.
HIGH_SHELF = {
    6800: (1, 1, 1.0611, (0, 0.2), (0.8, -0.23), (0,), (0.8, 0.23)),
    8200: (0.94, 1, 1.07, (0, 0.2), (0.8, -0.23), (0,), (0.8, 0.23)),
    10000: (1, 0.978, 1.0544, (0, 0.1), (0.8, -0.33), (0, 0, 0, 0.32), (0.8, 0.33)),
    12000: (0.94, 0.978, 1.0544, (0,), (0.8, -0.23), (0,), (0.8, 0.23)),
    14000: (1, 0.978, 1.06, (0,), (0.8, -0.23), (0,), (0.8, 0.23)),
    17500: (0.92, 0.955, 1.06, (0,), (0.8, -0.23), (0,), (0.8, 0.27)),
    20000: (0.96, 0.94, 1.06, (0,), (0.8, -0.23), (0,), (0.8, 0.33)),
    24000: (0.96, 0.958, 1.06, (0,), (0.8, -0.23), (0,), (0.8, 0.33)),
    28000: (0.96, 0.93, 1.04, (0,), (0.8, -0.23), (0,), (0.8, 0.33)),
}
# Factor of the frequency in a cut, and as a polynomial of w in a boost; then as for the low shelf.
LOW_BELL = {
    33: (0.7, (0.74, 0.08), (0, -1.18), (0.8, 1.02), (0, 1.55), (0.8, -0.79)),
    63: (0.74, (0.78, 0.12), (0, -1.0), (0.8, 0.88), (0, 1.85), (0.8, -0.79)),
    82: (0.82, (0.84, 0.12), (0, -1.1), (0.8, 0.92), (0, 1.55), (0.8, -0.79)),
    120: (0.7, None, (0, -1.41), (0.8, 0.75), (0, 1.55), (0.8, -0.76)),  # by u, below
    200: (0.82, (0.9, 0.1), (0, -0.95), (0.8, 0.92), (0, 1.55), (0.8, -0.79)),
    300: (0.84, (0.9, 0.08), (0, -0.79), (0.8, 1.02), (0, 1.21), (0.8, -0.79)),
    370: (0.84, (0.9, 0.08), (0, -0.79), (0.8, 1.02), (0, 1.12), (0.8, -0.79)),
    430: (0.901, (0.901, 0.14), (0, -0.79), (0.8, 0.83), (0, 1.12), (0.8, -0.79)),
    550: (0.834, (0.83, 0.13), (0, -1.1), (0.8, 0.75), (0, 1.12), (0.8, -0.79)),
}
# Factors of the frequency, the cut's and the boost's factors of the gain, the cut's output gain by
# w and damping by u, the boost's output gain by w cubed and damping by w; in the high band then the
# cut's and the boost's factors of Q.
MID_BELL = {
    680: (0.88, (0.89, 0.08), 1.0608, 0.98, -0.54, (0.75, -0.9), 1.09, (0.75, -0.74)),
    800: (0.88, (0.91, 0.08), 1.0608, 0.98, -0.54, (0.75, -0.9), 1.09, (0.75, -0.74)),
    1200: (0.88, (0.88, 0.08), 1.0608, 1.02, 0, (0.75, -1.07), 0.52, (0.75, -0.69)),
    1800: (0.88, (0.88, 0.08), 1.0608, 1.02, 0, (0.75, -1.07), 0.52, (0.75, -0.49)),
    2500: (0.94, (0.94, 0.08), 1.0608, 1.02, 0, (0.75, -0.71), 1.2, (0.75, -0.09)),
    3000: (0.96, (0.96, 0.04), 1.02, 0.97, 0, (0.75, -0.46), 1.66, (0.75, -0.09)),
    3800: (0.9, (0.92, 0.04), 1.01, 0.993, 0, (0.8, -0.16), 0.53, (0.8, -0.01)),
    4600: (0.9, (0.92, 0.04), 1.01, 0.986, 0.2, (0.8, -0.26), 0.52, (0.8, 0.1)),
    5600: (0.9, (0.92, 0.04), 1.01, 0.986, 0.2, (0.8, -0.26), 0.92, (0.8, 0.9)),
}
HIGH_BELL = {
    6800: (0.925, (0.925, 0.041), 1.02, 1.0611, 0.2, (0.8, -0.24), 0, (0.8, 0.2), 1.1, 1),
    8200: (0.9, (0.92, 0.04), 1.04, 0.99, 0.2, (0.8, -0.26), 0.52, (0.8, 0.65), 1.1, 0.97),
    10000: (0.9, (0.92, 0.04), 0.998, 0.99, 0.2, (0.8, -0.26), 0.52, (0.8, 0.65), 1.1, 0.97),
    12000: (0.876, (0.876, 0.04), 0.978, 1.0544, 0, (0.8, -0.26), 0, (0.8, -0.07), 1.1, 0.999),
    14000: (0.92, (0.92, 0.04), 0.978, 1.039, 0, (0.8, -0.26), 0, (0.8, -0.08), 1.1, 1.05),
    17500: (0.88, (0.88, 0.04), 0.955, 1.02, 0, (0.8, -0.26), 0, (0.8, -0.08), 1.1, 1),
    20000: (0.92, (0.92, 0.04), 0.94, 1.02, 0, (0.8, -0.26), 0, (0.8, -0.08), 1.1, 1),
    24000: (0.93, (0.93, 0.018), 0.958, 1.02, 0, (0.8, -0.26), 0, (0.8, -0.08), 1.1, 0.99),
    28000: (0.96, (0.96, 0), 0.93, 1, 0, (0.8, -0.26), 0, (0.8, -0.08), 1.1, 0.99),
}


def poly(coefficients, x):
    """The constant comes first."""
    return sum(c * x ** power for power, c in enumerate(coefficients))


def linear(db):
    return 10 ** (db / 20)


def width(db):
    """w: 0 at 0 dB and 1 at 16 dB, on either side."""
    return math.log10(abs(db) + 1) / math.log10(17)


def corner(db):
    return 6.75 if db <= 0 else 6.54894 - 2.00016 * math.log(db)


def low_shelf(hz, db):
    """Like the other models: dB, Hz, Q, output gain and damping of the filter."""
    factor, *sides = LOW_SHELF[hz]
    gain, damping = sides[2 * (db > 0):][:2]
    return [db, hz * corner(db) * factor, 1, linear(poly(gain, width(db))),
            poly(damping, width(db))]


def high_shelf(hz, db):
    factor, *scales = HIGH_SHELF[hz][:3]
    gain, damping = HIGH_SHELF[hz][3 + 2 * (db > 0):][:2]
    return [db * scales[db > 0], hz / corner(db) * factor, 1, linear(poly(gain, width(db))),
            poly(damping, width(db))]


def bell_q(db, cut):
    return (cut if db < 0 else poly((0.31, -0.66, 1.36), db / 16)) * 0.96


def low_bell(hz, db):
    cut, boost, *sides = LOW_BELL[hz]
    gain, damping = sides[2 * (db > 0):][:2]
    curve = poly(boost, width(db)) if boost else poly((0.7, 0.0000001, 0.16), db / 16)
    return [db * (0.97 if db > 0 else 1.02), hz * (cut if db < 0 else curve), bell_q(db, 0.13),
            linear(poly(gain, width(db))), poly(damping, width(db))]


def bell(table, hz, db):
    cut, boost, cut_gain, boost_gain, cut_out, cut_damping, boost_out, boost_damping, *q = table[hz]
    w, u = width(db), db / 16
    out = linear(boost_out * w ** 3 if db > 0 else cut_out * w)
    damping = poly(boost_damping, w) if db > 0 else poly(cut_damping, u)
    return [db * (cut_gain if db < 0 else boost_gain), hz * (cut if db < 0 else poly(boost, w)),
            bell_q(db, 0.1378) * (q[db >= 0] if q else 1), out, damping]


def mid_bell(hz, db):
    return bell(MID_BELL, hz, db)


def high_bell(hz, db):
    return bell(HIGH_BELL, hz, db)


def common_gain(own, other):
    """s: 0 where two bands are opposed, 2 where both are at 16 dB."""
    def limited(db):
        return min(max(db, -16), 16)
    return min(abs(limited(own) + limited(other)) / 16, 2)


def shelf_interaction(x, own, other):
    """Mix, ratio and scale."""
    cut = own < 0
    if x < 0.025:
        mix, scale = poly((-0.0240826, 20.8716), x), poly((0.977381, 22.8571, -238.095), x)
        ratio = 1 if cut else poly((2.02262, -22.8571, 238.095), x)
    elif x < 0.167:
        mix, scale = 0.0286114 * math.log(x) + 0.615374, 1.41891 - 0.833567 * x
        ratio = -0.273109 * math.log(1.03646 * x) if cut else -0.512777 * math.log(1.92941 * x)
    else:
        mix = poly((0.416749, 1.03096, -1.39553) if cut else (0.761662, -1.54008, 1.63263), x)
        ratio = poly((0.636822, -1.01824, 0.474206) if cut else (0.885006, -1.91064, 1.22163), x)
        scale = poly((0.852115, 2.92434, -2.16859), x)
    s = common_gain(own, other)
    p, v = (0.2 + 0.8 * s, 0.1 + 0.9 * s) if s <= 1 else ((s - 1) * 1.34 + 2 - s, 1)
    return mix * p, (ratio - 1) * v + 1, (scale - 1) * v + 1


def bell_interaction(x, own, other):
    """Mix, ratio, the factor of Q, and the band's gain in dB after it."""
    x = min(max(x, 0), 1)
    cut = own <= 0
    q = gain = 1
    if x <= 0.064:
        mix, ratio = 0.100494 * math.log(373.844 * x), 1
    elif x <= 0.2:
        mix = poly((0.238889, 1.14277, -2.93607), x)
        ratio = poly((1.24667, -4.09926, 3.82966), x)
        if cut:
            gain = poly((1.06667, -1.59926, 3.82966), x)
    else:
        q = poly((1.14981, -0.84529, 0.481178), x)
        if cut:
            mix, q = poly((0.665356, -1.83502, 1.29121), x), 2 - q
            ratio = poly((0.682609, -0.41197, -0.505388), x)
            gain = poly((1.01839, -0.685048, 0.465542), x)
        else:
            mix, ratio = 0.384056 - 0.175833 * x, poly((1.03574, -2.6451, 1.83191), x)
            gain = poly((1.088, -0.500132, 0.30061), x)
    s = common_gain(own, other)
    v = min(0.2 + 0.8 * s, 1)
    p = v if s <= 1 else poly((0.818196, 3.47681, -2.73452), x) * (s - 1) + 2 - s
    return mix * p, (ratio - 1) * v + 1, 1 + (q - 1) * v, own * (1 + (gain - 1) * v)


class Band:
    """A band in circuit, with the skirts as its section holds them."""

    def __init__(self, model, hz, knob):
        self.step, self.knob, self.shelf = hz, knob, model in (low_shelf, high_shelf)
        self.db, self.hz, self.q, self.out, self.damping = model(hz, knob)
        self.high_skirt = self.low_skirt = (0, 1)

    def meet(self, x, other, upper, inverted=True):
        """Follows the neighbour: an upper band on its lower side, a lower one on its upper side."""
        if self.shelf:
            mix, ratio, scale = shelf_interaction(x, self.db, other)
            self.hz *= 1 / scale if upper else scale
        else:
            mix, ratio, q, self.db = bell_interaction(x, self.db, other)
            self.q *= q
        if upper and inverted:
            ratio = 1 / ratio
        mix = min(max(mix, 0), 1)
        if self.shelf:
            self.low_skirt = mix, ratio
        elif upper:
            self.high_skirt = mix, max(ratio, 1)
        else:
            self.low_skirt = mix, min(ratio, 1)

    def row(self):
        return [self.hz, self.q, *self.high_skirt, *self.low_skirt, self.db]


def update(mode, steps, knobs):
    """Output gain and damping, and the rows of the low, the mid and the high band."""
    models = (low_shelf if mode & 1 else low_bell if mode & 4 else None,
              mid_bell if mode & 8 else None,
              high_shelf if mode & 2 else high_bell if mode & 16 else None)
    bands = [Band(model, hz, db) if model else None
             for model, hz, db in zip(models, steps, knobs)]
    present = [band for band in bands if band]
    if not present:
        out, damping = 1, 0.6
    elif len(present) == 1:
        out, damping = present[0].out, present[0].damping
    elif len(present) == 2:
        a, b = present
        out = a.out * 0.8 + b.out * 0.2 if mode == 9 else math.sqrt(a.out * b.out)
        damping = a.damping * 0.7 + b.damping * 0.4
        x = a.step / b.step
        # The neighbour's knob, but two shelves see each other's model.
        of_a, of_b = (a.db, b.db) if mode == 3 else (a.knob, b.knob)
        a.meet(x, of_b, upper=False)
        b.meet(x, of_a, upper=True, inverted=mode != 24)
    else:
        low, mid, high = present
        out, damping = (sum(each) * 0.33 for each in ((low.out, mid.out, high.out),
                                                      (low.damping, mid.damping, high.damping)))
        mid.meet(mid.step / high.step, high.knob, upper=False)
        mid.meet(low.step / mid.step, low.knob, upper=True)
        far = low.step * 0.5 / high.step
        low.meet(low.step / mid.step + far, mid.knob, upper=False)
        high.meet(mid.step / high.step + far, mid.knob, upper=True)
    return out, damping, [band.row() if band else [0] * 7 for band in bands]


MODELS = dict(lowShelfModel=low_shelf, highShelfModel=high_shelf, lowBellModel=low_bell,
              midBellModel=mid_bell, highBellModel=high_bell)


def worked(words):
    """The words of a row, its results anew."""
    def texts(values):
        return [f"{value:.10g}" for value in values]
    kind, *given = words
    if kind in MODELS:
        hz = int(given[0])
        return [kind, given[0], *texts(MODELS[kind](hz, -10)), *texts(MODELS[kind](hz, 10))]
    if kind in ("shelf", "bell"):
        function = shelf_interaction if kind == "shelf" else bell_interaction
        return [kind, *given[:3], *texts(function(*map(float, given[:3])))]
    mode, columns = int(given[0]), (given[3:5], given[12:14], given[21:23])
    out, damping, rows = update(mode, *zip(*((int(hz), float(db)) for hz, db in columns)))
    cells = [[*column, *texts(row)] for column, row in zip(columns, rows)]
    return [kind, given[0], *texts((out, damping)), *sum(cells, [])]


if __name__ == "__main__":
    check, path = "--check" in sys.argv, Path(sys.argv[-1])
    lines = path.read_text("utf-8").splitlines()
    results = [" ".join(worked(line.split())) if line and not line.startswith("#") else line
               for line in lines]
    if not check:
        path.write_text("\n".join(results) + "\n", "utf-8")
    for line, result in zip(lines, results):
        if check and line != result:
            print(f"{path.name} has\n  {line}\nand should have\n  {result}")
    sys.exit(check and lines != results)
