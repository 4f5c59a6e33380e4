"""Checks of figures that are typed in the text: a wrong one ends the build."""
import json
import subprocess

from situations import SITUATIONS
from tables import width
from values import drive, glide, level_at, require, thd, tone

FACTS = []


def fact(function):
    FACTS.append(function)
    return function


@fact
def bands_glide_in_150_ms(tool, folder):
    level = glide(tool, folder, "band", ["MFreqL=1800"], "MGainL 12")
    first, last = level(0.49), level(1.4)

    def share(time):
        return (level(0.5 + time) - first) / (last - first)
    require(0.45 < share(0.075) < 0.55 and share(0.14) < 0.97 < share(0.156) < 1.02,
            "a change of gain glides in 150 ms")


@fact
def switches_have_no_glide(tool, folder):
    level = glide(tool, folder, "ring", ["MFreqL=680", "MGainL=12"], "MFreqL 1800")
    require(abs(level(0.51) / level(1.4) - 1) < 0.05 < level(1.4) / level(0.49) - 1,
            "frequencies switch at once")


@fact
def only_polarity_depends_on_blocks(tool, folder):
    source, moves = folder / "polarity.wav", folder / "polarity.txt"
    tone(source, hertz=97)
    moves.write_text("1.0 PhaseL On\n")
    results = set()
    for block in (64, 640):
        result = folder / f"polarity-{block}.wav"
        tool.run("render", "--set", "QB11=On", "--automate", str(moves), "--block", str(block),
                 "--bits", "32f", str(source), str(result))
        results.add(result.read_bytes())
    require(len(results) == 2, "the moment of a change of polarity depends on the block")


@fact
def ranges(tool, _):
    for row in tool.parameters():
        title = row["title"]
        if title.startswith(("Drive", "Output")) or "Gain" in title:
            require(row["values"].strip() == "-16.00 to 16.00", f"{title} runs from -16 to +16 dB")
        if "Freq" in title:
            require(row["steps"] == 9, f"{title} has nine frequencies")
        if title.startswith("Hpf"):
            require(row["steps"] == 11, "HPF has eleven frequencies")


@fact
def sizes_of_files(tool, folder):
    preset, bank = folder / "size.zkr", folder / "size.zkb"
    tool.run("preset", "export", "Vox", "-o", str(preset))
    tool.run("bank", "export", "-o", str(bank))
    require((preset.stat().st_size, bank.stat().st_size) == (2065, 48617),
            "a preset has 2065 bytes and a bank 48617")


@fact
def names_of_23_bytes(tool, folder):
    path = folder / "name.json"
    tool.run("preset", "export", "Vox", "-o", str(path))
    preset = json.loads(path.read_text())
    for length in (23, 24):
        path.write_text(json.dumps(preset | {"name": "n" * length}))
        done = subprocess.run([str(tool.program), "check", str(path)], capture_output=True,
                              timeout=60)
        require((done.returncode == 0) == (length == 23), "a name has up to 23 bytes")


@fact
def high_pass_starts_two_octaves_above(tool, _):
    for corner in (20, 100, 800):
        loss = (level_at(tool, ["QB11=On", f"HpfL={corner}"], 4 * corner)
                - level_at(tool, ["QB11=On"], 4 * corner))
        require(-0.8 < loss < -0.3, "HPF begins to act two octaves above its mark")


@fact
def amplifier(tool, _):
    rows = {level: tool.harmonics([], 1000, f"{level}:{level}:1")[0][0]
            for level in (-13, -11, 8, 9, 11)}
    require(rows[-13][3] < -130 and rows[-11][3] > -95, "the third harmonic joins at -12 dBFS")
    require(rows[8][7] < -80 and rows[9]["thd"] < 0.2 and rows[11]["thd"] > 1,
            "the amplifier's knee is at +9 dBFS")
    whole = drive(16)
    for hertz in (200, 1000):
        require(thd(tool, [*whole, "AmpDsbL=On"], hertz, -6) < 0.1 * thd(tool, whole, hertz, -6),
                "above the lows the amplifier makes most of the distortion")


@fact
def cuts_lie_below_boosts(tool, _):
    for band, first, last in (("L", 10, 2000), ("M", 200, 15000)):
        for mark in tool.values(f"{band}FreqL")[1:]:
            band_at = f"{band}FreqL={mark}"
            hertz, (flat, up, down) = tool.left(
                [[], [band_at, f"{band}GainL=6"], [band_at, f"{band}GainL=-6"]], rate=96000,
                first=first, last=last, points=100)
            boost, cut = (width(hertz, [a - b for a, b in zip(levels, flat)])[1]
                          for levels in (up, down))
            require(cut < boost, f"a cut at {mark} lies below a boost")


@fact
def shelf_of_20k_opens_from_2k(tool, _):
    settings = SITUATIONS["weight-and-air"][0]
    high = [s for s in settings if s[:6] in ("HShelf", "HFreqL", "HGainL")]
    lift = [level_at(tool, high, hertz) - level_at(tool, [], hertz)
            for hertz in (1000, 2000, 4000, 8000, 16000)]
    require(lift[0] < 0.3 and lift[1] > 0.5 and lift == sorted(lift),
            "the HIGH shelf at 20k opens everything above 2 kHz")
