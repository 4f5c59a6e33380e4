#!/usr/bin/python3
"""Designs the two decimation filters and writes shell/oversampling/DecimationTables.cpp.

Both are symmetric 255-tap equiripple (Parks-McClellan) low-passes. Another build of SciPy may
differ in a design's last digits: eight taps at the centre of each table and three at its end are
fixed here in full precision, and the design must meet them to 3e-8. Needs SciPy; run by hand, the
result is committed.
"""
from pathlib import Path

from scipy.signal import remez

TAPS = 255
CENTRE = 127

# name, purpose, pass edge and stop edge relative to the input rate, stop-band weight, fixed taps
TABLES = [
    ("down2xCoeffs", "twice oversampling: keeps every second output",
     0.24166696646951444, 0.26146254309948297, 23.548580015675643,
     {127: "0.5008973513207254", 126: "0.3182404979182361", 125: "-0.0008964083749538523",
      124: "-0.10589529166210374", 123: "0.0008935847935306259", 122: "0.0633158475569329",
      121: "-0.0008888983615124295", 120: "-0.0449893974887747", 2: "5.336438149995856e-05",
      1: "6.450443441051257e-05", 0: "2.4234479444189413e-05"}),
    ("down4xCoeffs", "four times oversampling: keeps every fourth output",
     0.11979206377765936, 0.13437588901959985, 23.578492098073124,
     {127: "0.2520075516092188", 126: "0.2264599339448374", 125: "0.15904622159086873",
      124: "0.07349378892170595", 123: "-0.002001883629095488", 122: "-0.04623722785925243",
      121: "-0.052726305640184934", 120: "-0.03047876874841836", 2: "0.00011356958741892228",
      1: "2.938923986703578e-05", 0: "-4.8663899718994306e-05"}),
]

HEAD = """\
// The decimation filters: symmetric equiripple low-passes of 255 taps, of which the first half and
// the centre stand here. Written by scripts/make_decimation_tables.py.
//
//                         down2xCoeffs    down4xCoeffs
//   pass-band edge        0.2417          0.1198          of the filter's input rate
//   stop-band edge        0.2620          0.1344
//   pass-band ripple      0.000236        0.00229
//   stop-band peak        -100 dB         -80 dB
//   sum of all taps       1.00023459      1.00228389
#include "DecimationTables.h"

// clang-format off
"""


def design(pass_edge, stop_edge, weight):
    return remez(TAPS, [0, pass_edge, stop_edge, 0.5], [1, 0], weight=[1, weight], fs=1.0,
                 grid_density=21, maxiter=500)


def table_text(name, purpose, pass_edge, stop_edge, weight, fixed):
    taps = design(pass_edge, stop_edge, weight)
    worst = max(abs(taps[k] - float(text)) for k, text in fixed.items())
    assert worst < 3e-8, f"{name}: the design differs from a fixed tap by {worst}"
    rows = [fixed.get(k, f"{taps[k]:.17g}") for k in range(CENTRE + 1)]
    lines = [f"// For {purpose}.", f"const double {name}[kDecimationTaps] = {{"]
    for first in range(0, len(rows), 4):
        row = " ".join(f"{text + ',':<25}" for text in rows[first:first + 4])
        lines.append("    " + row.rstrip())
    return "\n".join(lines + ["};", ""])


def main():
    root = Path(__file__).resolve().parent.parent
    target = root / "shell" / "oversampling" / "DecimationTables.cpp"
    target.write_text(HEAD + "\n".join(table_text(*table) for table in TABLES)
                      + "// clang-format on\n")


if __name__ == "__main__":
    main()
