"""Measured numbers for the text, with checks of what the text says about them. Figures that are
typed in the text are checked in facts.py and with the tables and pictures, except those that
follow from the design: the corners of 5, 30 and 50 Hz, the 26 dB between the transformers, the sum
of 16 dB up to which neighbours affect each other more, the effect of a pixel, a notch or a click of
the mouse (0.16, 0.2 and 0.5 dB, 11 pixels, 0.12 and 0.04 dB), the radius in which DRIVE and OUT
take it (21 pixels), and double precision."""
import math
import struct
import wave

from situations import SITUATIONS

VALUES = {}


def value(name):
    def keep(function):
        VALUES[name] = function
        return function
    return keep


def require(truth, words):
    if not truth:
        raise SystemExit(f"the manual's text is wrong: {words}")


def db(number, digits=1):
    """A level with the Unicode minus."""
    text = f"{number:.{digits}f}"
    return ("0" if float(text) == 0 else text).replace("-", "\u2212")


def level_at(tool, settings, hertz, **options):
    """The left channel's level at one frequency, in dB."""
    return tool.left([settings], points=2, first=hertz, last=hertz * 1.0001, **options)[1][0][0]


def thd(tool, settings, hertz, level):
    return tool.harmonics(settings, hertz, f"{level}:{level}:1")[0][0]["thd"]


def drive(gain, *others):
    return ["QB11=On", f"DriveL={gain}", f"DriveR={gain}", *others]


def onset(tool, gain):
    """The level of a 1 kHz tone at which distortion reaches 1 %, in dBFS."""
    rows = tool.harmonics(drive(gain), 1000, "-8:14:1")[0]
    for before, after in zip(rows, rows[1:]):
        if before["thd"] < 1 <= after["thd"]:
            share = math.log(1 / before["thd"]) / math.log(after["thd"] / before["thd"])
            return before["in"] + share * (after["in"] - before["in"])
    raise SystemExit(f"distortion does not reach 1 % at DRIVE {gain}")


def percent(number):
    digits = 3 if number < 0.1 else 2 if number < 1 else 1
    return f"{number:.{digits}f} %"


def tone(path, hertz=2205, seconds=2):
    """Writes a mono file at 44.1 kHz with a soft tone."""
    with wave.open(str(path), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(44100)
        out.writeframes(b"".join(
            struct.pack("<h", round(300 * math.sin(2 * math.pi * hertz * n / 44100 + 0.3)))
            for n in range(44100 * seconds)))


def samples_of(path):
    """The samples of a WAV file of 32-bit floats."""
    data = path.read_bytes()
    start = data.index(b"data") + 8
    size = struct.unpack("<I", data[start - 4:start])[0]
    return struct.unpack(f"<{size // 4}f", data[start:start + size // 4 * 4])


def glide(tool, folder, name, settings, move):
    """Changes one parameter at 0.5 s. Returns the level of a tone as a function of time in
    seconds."""
    source, moves, result = (folder / f"glide-{name}.{end}" for end in ("wav", "txt", "out.wav"))
    tone(source)
    moves.write_text(f"0.5 {move}\n")
    tool.run("render", "--bits", "32f", "--block", "16", "--automate", str(moves),
             *[w for s in settings for w in ("--set", s)], str(source), str(result))
    samples = samples_of(result)

    def level(time):
        first = round(time * 44100)
        return math.sqrt(sum(s * s for s in samples[first:first + 20]) / 10)
    return level


@value("lift")
def lift(tool):
    return db(level_at(tool, ["LFreqL=82", "LGainL=6"], 10000) - level_at(tool, [], 10000))


@value("sink")
def sink(tool):
    return db(level_at(tool, ["LFreqL=82", "LGainL=-6"], 10000) - level_at(tool, [], 10000))


@value("power-off-level")
def power_off_level(tool):
    return db(level_at(tool, ["Power=Off"], 1000), 2)


@value("plain-level")
def plain_level(tool):
    return db(level_at(tool, [], 1000), 2)


@value("plain-20k")
def plain_20k(tool):
    return db(level_at(tool, [], 20000, rate=96000), 2)


@value("eq-out-20k")
def eq_out_20k(tool):
    require(level_at(tool, ["ProcL=Off"], 20000, rate=96000)
            < level_at(tool, [], 20000, rate=96000), "EQ IN off is duller")
    return db(level_at(tool, ["ProcL=Off"], 20000, rate=96000), 2)


@value("plain-20")
def plain_20(tool):
    return db(level_at(tool, [], 20), 2)


@value("two-20")
def two_20(tool):
    return db(level_at(tool, ["2x=On"], 20), 2)


@value("ripple")
def ripple(tool):
    _, [levels] = tool.left([["Power=Off"]], first=20, last=20000, points=200)
    return f"{max(levels) - min(levels):.2f}"


@value("drive-rest")
def drive_rest(tool):
    high = level_at(tool, drive(16), 1000) - level_at(tool, drive(0), 1000)
    low = level_at(tool, drive(-16), 1000) - level_at(tool, drive(0), 1000)
    require(abs(high + low) < 0.05, "DRIVE raises and lowers alike")
    return db(high)


@value("drive-share")
def drive_share(tool):
    """The part of the drive that is not compensated, as a percentage of its dB."""
    high = level_at(tool, drive(16), 1000) - level_at(tool, drive(0), 1000)
    return f"{high / 16 * 100:.1f} %"


@value("drive-time")
def drive_time(tool, folder):
    """Measured with OUT, which glides as DRIVE does but is not compensated."""
    level = glide(tool, folder, "out", ["QB11=On"], "OutputL -16")
    start, end, early, late = level(0.49), level(1.4), level(0.52), level(0.58)
    require(start > early > late > end, "OUT glides")
    return f"{60 / math.log((early - end) / (late - end)):.0f} ms"


@value("drive-0-thd")
def drive_0_thd(tool):
    return percent(thd(tool, drive(0), 1000, -12))


@value("drive-minus-thd")
def drive_minus_thd(tool):
    return percent(thd(tool, drive(-16), 1000, -12))


@value("drive-16-loud-thd")
def drive_16_loud_thd(tool):
    return percent(thd(tool, drive(16), 1000, -6))


@value("drive-16-full-thd")
def drive_16_full_thd(tool):
    return percent(thd(tool, drive(16), 1000, 0))


@value("drive-16-full-loss")
def drive_16_full_loss(tool):
    soft, full = (tool.harmonics(drive(16), 1000, f"{level}:{level}:1")[0][0] for level in (-24, 0))
    return db((soft["out"] - soft["in"]) - (full["out"] - full["in"]))


@value("onset-0")
def onset_0(tool):
    return db(onset(tool, 0))


@value("onset-8")
def onset_8(tool):
    return db(onset(tool, 8))


@value("onset-16")
def onset_16(tool):
    return db(onset(tool, 16))


@value("thd-amp-off")
def thd_amp_off(tool):
    return percent(thd(tool, drive(16, "AmpDsbL=On"), 40, -6))


@value("thd-all-40")
def thd_all_40(tool):
    return percent(thd(tool, drive(16), 40, -6))


@value("second-only")
def second_only(tool):
    low = tool.harmonics([], 1000, "-18:-18:1")[0][0]
    require(low[2] > -80 > low[3] + 20, "below -12 dBFS there is only a second harmonic")
    return db(low[2])


def bell_peak(tool, mark):
    """The peak frequency in Hz of a HIGH bell at +6 dB, including the later stages."""
    hertz, [levels] = tool.left([[f"HFreqL={mark}", "HGainL=6"]], rate=96000, first=4000,
                                last=40000, points=300)
    return hertz[levels.index(max(levels))]


@value("bell-28k")
def bell_28k(tool):
    for mark in (17500, 20000, 24000, 28000):
        require(0.63 < bell_peak(tool, mark) / mark < 0.77,
                "HIGH bells from 17k5 up peak a quarter to a third below the mark")
    return f"{bell_peak(tool, 28000) / 1000:.0f}"


@value("bell-12k")
def bell_12k(tool):
    return f"{bell_peak(tool, 12000) / 1000:.0f}"


@value("hpf-at-corner")
def hpf_at_corner(tool):
    def gain(corner, hertz):
        return (level_at(tool, ["QB11=On", f"HpfL={corner}"], hertz)
                - level_at(tool, ["QB11=On"], hertz))
    require(11.5 < gain(800, 100) - gain(800, 50) < 12.5, "HPF falls by 12 dB per octave")
    return db(gain(100, 100))


@value("28k-10k")
def at_10k(tool):
    return db(level_at(tool, ["QB11=On", "28kL=On"], 10000) - level_at(tool, ["QB11=On"], 10000))


@value("28k-20k")
def at_20k(tool):
    return db(level_at(tool, ["QB11=On", "28kL=On"], 20000) - level_at(tool, ["QB11=On"], 20000))


@value("28k-28k")
def at_28k(tool):
    return db(level_at(tool, ["QB11=On", "28kL=On"], 28000, rate=96000)
              - level_at(tool, ["QB11=On"], 28000, rate=96000))


@value("idle-loss")
def idle_loss(tool):
    mid = ["MFreqL=1200", "MGainL=8"]
    return db(level_at(tool, mid, 1200) - level_at(tool, mid + ["LFreqL=300", "HFreqL=6800"], 1200))


@value("together")
def together(tool):
    """Peak of two boosted neighbours: measured, and as the sum of each alone."""
    low, mid = ["LFreqL=300", "LGainL=8"], ["MFreqL=1200", "MGainL=8"]
    _, (none, a, b, both) = tool.left([[], low, mid, low + mid])
    total = max(x + y - z for x, y, z in zip(a, b, none))
    require(max(both) < total - 2, "boosted neighbours hold each other back")
    return f"{db(max(both))} dB and not {db(total)} dB"


@value("split")
def split(tool):
    _, [levels] = tool.left([["2x=On", "LFreqL=300", "LGainL=8", "MFreqL2=1200", "MGainL2=8"]])
    return db(max(levels))


@value("mid-hotter")
def mid_hotter(tool):
    stereo = thd(tool, [], 1000, -18)
    coded = thd(tool, ["MS=MidSide"], 1000, -18)
    require(1.9 < coded / stereo < 2.1, "M/S works 6 dB hotter")
    return f"from {percent(stereo)} to {percent(coded)}"


@value("density-thd")
def density_thd(tool):
    return percent(thd(tool, SITUATIONS["density"][0], 1000, -12))


@value("density-loud-thd")
def density_loud_thd(tool):
    return percent(thd(tool, SITUATIONS["density"][0], 1000, -3))


@value("version")
def version(tool):
    return next(line.split()[-1] for line in tool.run("info").splitlines()
                if line.startswith("Vendor's version"))


@value("parameter-count")
def parameter_count(tool):
    return str(len(tool.parameters()))


@value("silence")
def silence(tool, folder):
    """With silent input and everything on, every output sample must be zero."""
    source, result = folder / "silence.wav", folder / "silent.wav"
    with wave.open(str(source), "wb") as out:
        out.setnchannels(2)
        out.setsampwidth(2)
        out.setframerate(44100)
        out.writeframes(bytes(4 * 44100))
    settings = drive(16, "2x=On", "28kL=On", "28kR=On", "LFreqL=82", "LGainL=16", "LFreqR=82",
                     "LGainR=16")
    tool.run("render", "--bits", "32f", *[w for s in settings for w in ("--set", s)],
             str(source), str(result))
    samples = samples_of(result)
    require(len(samples) == 2 * 44100 and all(s == 0 for s in samples), "silence stays silence")
    return "digital silence"


@value("blocks")
def blocks(tool, folder):
    """A noisy signal in blocks of several sizes must give the same file."""
    sizes = ("1", "16", "64", "1000")
    source = folder / "tone.wav"
    with wave.open(str(source), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(44100)
        out.writeframes(b"".join(struct.pack("<h", (n * n // 7919) % 20000 - 10000)
                                 for n in range(22050)))
    results = set()
    for size in sizes:
        result = folder / f"blocks-{size}.wav"
        tool.run("render", "--preset", "R101", "--channels", "2", "--bits", "32f", "--block", size,
                 str(source), str(result))
        results.add(result.read_bytes())
    require(len(results) == 1, "the output does not depend on the size of blocks")
    return f"{', '.join(sizes[:-1])} and {sizes[-1]}"


def measured(name, tool, folder):
    function = VALUES[name]
    return (function(tool, folder) if name in ("silence", "blocks", "drive-time")
            else function(tool))
