"""Runs the zkrt46 command for the manual: responses, harmonics, parameters and pictures."""
import csv
import io
import re
import subprocess

from names import mirrored


class Tool:
    """A build of the program, run without a terminal."""

    def __init__(self, program):
        self.program = program

    def run(self, *arguments):
        """The program's output; a failure ends the build with the program's message."""
        done = subprocess.run([str(self.program), *arguments], capture_output=True, text=True,
                              stdin=subprocess.DEVNULL, timeout=120)
        if done.returncode != 0:
            raise SystemExit(f"zkrt46 {' '.join(arguments)}\n{done.stderr.strip()}")
        return done.stdout

    def commands(self):
        """The names of the subcommands and of their own subcommands."""
        names = []
        for name in self._listed("--help"):
            names.append(name)
            names += [f"{name} {inner}" for inner in self._listed(name, "--help")]
        return names

    def _listed(self, *arguments):
        _, found, text = self.run(*arguments).partition("Commands:\n")
        return re.findall(r"^  (\S+)", text, re.MULTILINE) if found else []

    def parameters(self):
        """One dictionary per parameter: index, title, steps, default, unit, and values as text."""
        head, *lines = self.run("params").splitlines()
        unit, values = head.index("Unit"), head.index("Values")
        rows = []
        for line in lines:
            index, title, steps, default = line[:unit].split()
            rows.append({"index": int(index), "title": title, "steps": int(steps),
                         "default": default, "unit": line[unit:values].strip(),
                         "values": line[values:]})
        return rows

    def values(self, title):
        """Every value that a parameter can be set to, as the plug-in shows it."""
        return self.run("params", title).split(":", 1)[1].split()

    def response(self, curves, *options, rate=44100, level=-40, points=72, first=10, last=None):
        """Measures curves, which are lists of settings. Returns the frequencies and, for each
        curve, the levels in dB of both channels."""
        arguments = ["response", "--rate", str(rate), "--level", str(level), "--points",
                     str(points), "--from", str(first), *options]
        if last:
            arguments += ["--to", str(last)]
        for number, settings in enumerate(curves):
            arguments += ["--curve", f"{number}: {' '.join(settings)}"]
        rows = list(csv.reader(io.StringIO(self.run(*arguments))))[1:]
        hertz = [float(row[0]) for row in rows]
        measured = []
        for number in range(len(curves)):
            columns = (1 + 4 * number, 3 + 4 * number)
            measured.append(tuple([float(row[c]) for row in rows] for c in columns))
        return hertz, measured

    def left(self, curves, **options):
        """As response, for curves of the left channel. Where possible, two curves are measured at
        once, the second in the right channel."""
        runs, places = [], []
        for settings in curves:
            both = mirrored(runs[-1], settings) if runs and places[-1][1] == 0 else None
            if both:
                runs[-1] = both
            else:
                runs.append(settings)
            places.append((len(runs) - 1, 1 if both else 0))
        hertz, measured = self.response(runs, **options)
        return hertz, [measured[run][channel] for run, channel in places]

    def harmonics(self, settings, hz, levels):
        """Measures a tone at levels in dBFS, "FROM:TO:STEP". For each channel, one dictionary per
        level: in, out and thd, and the harmonics by number in dB relative to the fundamental."""
        arguments = ["harmonics", "--freq", str(hz), "--sweep", levels]
        for setting in settings:
            arguments += ["--set", setting]
        channels = []
        for line in self.run(*arguments).splitlines():
            cells = line.split()
            if not cells or cells[0] == "In,":
                continue
            if cells[0] == "Harmonics":
                channels.append([])
                continue
            row = {"in": float(cells[0]), "out": float(cells[1]), "thd": float(cells[-1])}
            for number, cell in enumerate(cells[2:-1], start=2):
                row[number] = float("nan") if cell == "-" else float(cell)
            channels[-1].append(row)
        return channels[0], channels[-1]
