"""Diagrams for print: panels with a few curves, drawn by gnuplot as SVG."""
import subprocess
from dataclasses import dataclass

COLOURS = ("#0B5FA5", "#C8501E", "#22865A", "#8B4A9C", "#303030")
TICKS = [digit * decade for decade in (1, 10, 100, 1000, 10000) for digit in range(1, 10)]


@dataclass
class Line:
    """A curve. `colour` is an index, which begins anew after the last one; lines of one colour can
    differ by their dashes."""
    x: list
    y: list
    label: str = ""
    colour: int = 0
    dashed: bool = False
    width: float = 1.8


@dataclass
class Panel:
    lines: list
    y: tuple  # lowest, highest, tick distance
    title: str = ""
    x: tuple = (10, 20000)
    xlabel: str = "Frequency, Hz"
    ylabel: str = "dB"
    decades: bool = True  # of the x axis
    xticks: float = 6  # tick distance without decades
    log_y: bool = False


def _hertz(value):
    return f"{value / 1000:g}k" if value >= 1000 else f"{value:g}"


def _x_axis(panel, digits):
    lowest, highest = panel.x
    script = f"set xrange [{lowest}:{highest}]\n"
    if not panel.decades:
        return script + f"unset logscale x\nset xtics {panel.xticks}\n"
    ticks = [f"'{_hertz(t) if str(t)[0] in digits else ''}' {t} {0 if str(t)[0] in digits else 1}"
             for t in TICKS if lowest <= t <= highest * 1.001]
    return script + f"set logscale x\nset xtics ({', '.join(ticks)})\n"


def _y_axis(panel):
    lowest, highest, distance = panel.y
    script = f"set yrange [{lowest}:{highest}]\n"
    if panel.log_y:
        return script + "set logscale y\nset ytics add ('0.001' 0.001, '0.01' 0.01, '0.1' 0.1, " \
            "'1' 1, '10' 10, '100' 100)\n"
    return script + f"unset logscale y\nset ytics {distance}\n"


def _text(text):
    return "'" + text.replace("'", "''") + "'"


@dataclass
class Frame:
    """Position of a panel's axes, in pixels from the lower left corner of the picture."""
    left: float
    right: float
    bottom: float
    top: float

    def margins(self, width, height):
        return (f"set lmargin at screen {self.left / width:.5f}\n"
                f"set rmargin at screen {self.right / width:.5f}\n"
                f"set bmargin at screen {self.bottom / height:.5f}\n"
                f"set tmargin at screen {self.top / height:.5f}\n")


def _frames(panels, columns, width, height, key):
    """The frames row by row, with space for labels and key."""
    rows = -(-len(panels) // columns)
    head = 22 if any(panel.title for panel in panels) else 8
    foot, right = 72 if key == "below" else 50, 132 if key == "right" else 20
    between_rows, left = head + 38, 56
    wide = (width - right - left * columns) / columns
    high = (height - head - foot - between_rows * (rows - 1)) / rows
    frames = []
    for number in range(len(panels)):
        row, column = divmod(number, columns)
        x = left + column * (wide + left)
        top = height - head - row * (high + between_rows)
        frames.append(Frame(x, x + wide, top - high, top))
    return frames


def _key_line(line, x, y, width, height):
    """One entry of a key, drawn explicitly, since gnuplot arranges its own keys in columns."""
    return (f"set arrow from screen {x / width:.5f},{y / height:.5f} to screen "
            f"{(x + 24) / width:.5f},{y / height:.5f} nohead lw {line.width} "
            f"lc rgb '{COLOURS[line.colour % len(COLOURS)]}'{' dt (6,4)' if line.dashed else ''}\n"
            f"set label {_text(line.label)} at screen {(x + 30) / width:.5f},{y / height:.5f} "
            "left font ',11'\n")


def _key(lines, place, frame, width, height):
    lines = [line for line in lines if line.label]
    if place == "below":
        needed = [50 + 6.0 * len(line.label) for line in lines]
        x, script = (width - sum(needed)) / 2, ""
        for line, space in zip(lines, needed):
            script += _key_line(line, x, 10, width, height)
            x += space
        return script
    if place == "right":
        step = min(15, (frame.top - frame.bottom) / len(lines)) if lines else 0
        return "".join(_key_line(line, frame.right + 14, frame.top - 7 - step * number, width,
                                 height) for number, line in enumerate(lines))
    if place == "inside":
        return "".join(_key_line(line, frame.right - 70, frame.bottom + 12 + 15 * number, width,
                                 height) for number, line in enumerate(reversed(lines)))
    return ""


def _panel(panel, number, label_below, label_left, digits):
    script = ""
    for index, line in enumerate(panel.lines):
        script += f"$p{number}l{index} << END\n"
        script += "".join(f"{x:.6g} {y:.5g}\n" for x, y in zip(line.x, line.y)) + "END\n"
    script += f"set title {_text(panel.title)} offset 0,-0.6\n" if panel.title else "unset title\n"
    script += _x_axis(panel, digits) + _y_axis(panel)
    script += f"set xlabel {_text(panel.xlabel if label_below else '')} offset 0,0.3\n"
    script += f"set ylabel {_text(panel.ylabel if label_left else '')} offset 1.2,0\n"
    drawn = []
    for index, line in enumerate(panel.lines):
        dashes = " dt (6,4)" if line.dashed else ""
        drawn.append(f"$p{number}l{index} using 1:2 with lines lw {line.width} "
                     f"lc rgb '{COLOURS[line.colour % len(COLOURS)]}'{dashes} notitle")
    return script + "plot " + ", \\\n  ".join(drawn) + "\n"


def draw(path, panels, columns=1, width=680, height=300, key="right"):
    """Draws the panels row by row. The key is to the "right" of each panel, "inside" it, once
    "below" all panels (which must have the same curves), or absent ("none")."""
    # A width of 680 fills the manual's text column; fonts and margins are sized for it.
    script = (f"set terminal svg noenhanced size {width},{height} font 'Liberation Sans,12' "
              "background rgb 'white'\nset encoding utf8\nset border 3 lc rgb '#505050' lw 0.8\n"
              "set tics nomirror out scale 0.5\nset style line 100 lc rgb '#D4D4D4' lw 0.7\n"
              "set style line 101 lc rgb '#ECECEC' lw 0.7\n"
              "set grid xtics mxtics ytics ls 100, ls 101\nset mxtics 1\n"
              "set tics font ',11'\nset title font ',12'\nset multiplot\n")
    frames = _frames(panels, columns, width, height, key)
    for number, (panel, frame) in enumerate(zip(panels, frames)):
        script += "unset arrow\nunset label\n" + frame.margins(width, height)
        if key != "below" or number == len(panels) - 1:
            script += _key(panel.lines, key, frame, width, height)
        script += _panel(panel, number, number >= len(panels) - columns, number % columns == 0,
                         "125" if columns == 1 else "1")
    done = subprocess.run(["gnuplot"], input=script + "unset multiplot\n", capture_output=True,
                          text=True, timeout=60)
    if done.returncode != 0 or done.stderr.strip() or not done.stdout:
        raise SystemExit(f"gnuplot could not draw {path}: {done.stderr.strip()}")
    path.write_text(done.stdout)
