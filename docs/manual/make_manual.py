"""Generates the manual's pictures, tables and numbers with the built program, and joins the
chapters to one Markdown file. Usage: make_manual.py PROGRAM FOLDER"""
import html
import math
import os
import re
import struct
import subprocess
import sys
import wave
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import check
import preset_tables  # noqa: F401, for its entries in TABLES
import tables  # noqa: F401, likewise
from facts import FACTS
from figures import FIGURES
from pictures import PICTURES
from table_list import TABLES
from tool import Tool
from values import VALUES, measured

HERE = Path(__file__).resolve().parent
MOVES = "0.0 LGainL 0\n0.0 LGainR 0\n1.0 LGainL 2.5\n1.0 LGainR 2.5\n"


def identifier(heading):
    """The anchor that pandoc gives a heading."""
    text = re.sub(r" \{.*\}$", "", heading).lower()
    text = re.sub(r"[^\w\s.-]", "", text)
    return re.sub(r"\s+", "-", text.strip()).lstrip("0123456789-.")


def fill(text, content):
    """Replaces {{name}} by tables and numbers, and checks that all of them are used."""
    def one(found):
        name = found[1]
        if name.startswith(("ref:", "fig:")):
            return found[0]
        if name not in content:
            raise SystemExit(f"there is no table or value for {found[0]}")
        used.add(name)
        return content[name]
    used = set()
    text = re.sub(r"\{\{([^}]+)\}\}", one, text)
    check.fail("these are made and not used", sorted(set(content) - used))
    return text


def keep_units(text):
    """Joins numbers to their units with no-break spaces, except in code."""
    kept, fenced = [], False
    for line in text.splitlines():
        fenced ^= line.startswith("```")
        if not fenced and not line.startswith("    "):
            words = line.split("`")
            words[::2] = [re.sub(r"(\d) (dBFS|dB|kHz|Hz|ms|%)(?!\w)", "\\1\u00a0\\2", word)
                          for word in words[::2]]
            line = "`".join(words)
        kept.append(line)
    return "\n".join(kept) + "\n"


def number_figures(text):
    """Numbers the captions, and turns {{fig:name}} into links."""
    numbers = {}

    def caption(found):
        numbers[found[3]] = len(numbers) + 1
        return (f"![[Figure {numbers[found[3]]}.]{{.number}} {found[1]}]({found[2]})"
                f"{{#fig-{found[3]}}}")

    def link(found):
        if found[1] not in numbers:
            raise SystemExit(f"there is no figure {found[1]}")
        return f"[Figure\u00a0{numbers[found[1]]}](#fig-{found[1]})"

    text = re.sub(r"!\[(.+?)\]\((\S+?)\)\{#fig:([\w-]+)\}", caption, text)
    return re.sub(r"\{\{fig:([\w-]+)\}\}", link, text)


def link_chapters(text):
    """Turns {{ref:anchor}} into the number of a chapter or section, as a link."""
    numbers, chapter, section, fenced = {}, 0, 0, False
    for line in text.splitlines():
        fenced ^= line.startswith("```")
        found = None if fenced else re.match(r"(#{1,2}) (.+)", line)
        if not found:
            continue
        if len(found[1]) == 1:
            chapter, section = chapter + 1, 0
            words = f"chapter\u00a0{chapter}"
        else:
            section += 1
            words = f"section\u00a0{chapter}.{section}"
        if numbers.setdefault(identifier(found[2]), words) != words:
            raise SystemExit(f"there are two headings {found[2]}")

    def link(found):
        if found[1] not in numbers:
            raise SystemExit(f"there is no heading {found[1]}")
        words = numbers[found[1]]
        before = text[:found.start()].rstrip(" ")
        if before.endswith((".", "\n\n")):
            words = words.capitalize()
        return f"[{words}](#{found[1]})"

    return re.sub(r"\{\{ref:([\w.-]+)\}\}", link, text)


def make_mix(folder):
    """A short stereo file for the examples: two tones with slow swells."""
    samples = []
    for n in range(2 * 44100):
        t = n / 44100
        swell = 0.6 + 0.4 * math.sin(2 * math.pi * 1.5 * t)
        low, high = math.sin(2 * math.pi * 80 * t), math.sin(2 * math.pi * 2400 * t)
        samples += [0.3 * swell * low + 0.1 * high, 0.3 * swell * low - 0.05 * high]
    with wave.open(str(folder / "mix.wav"), "wb") as out:
        out.setnchannels(2)
        out.setsampwidth(3)
        out.setframerate(44100)
        out.writeframes(b"".join(struct.pack("<i", round(s * 8388607))[:3] for s in samples))
    (folder / "moves.txt").write_text(MOVES)


def run_examples(text, program, folder):
    """Runs the code blocks marked "run" or "refused" and adds the output of their commands; the
    commands of "refused" blocks must fail."""
    folder.mkdir()
    make_mix(folder)
    environment = dict(os.environ, PATH=f"{program.parent}:{os.environ['PATH']}", COLUMNS="100")

    def block(found):
        shown = []
        commands = re.findall(r"^\$ ((?:.*\\\n)*.+)", found[2], re.MULTILINE)
        if not commands:
            raise SystemExit(f"an example without a command:\n{found[2]}")
        for command in commands:
            done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, text=True,
                                  capture_output=True, stdin=subprocess.DEVNULL, timeout=60)
            output = (done.stdout + done.stderr).rstrip("\n")
            if str(program.parent) in output:
                raise SystemExit(f"a path of this machine in: {command}")
            if (done.returncode == 0) != (found[1] == "run"):
                raise SystemExit(f"the example does not do what the text says: {command}\n{output}")
            shown.append(f'<span class="typed">$ {html.escape(command)}</span>'
                         + ("\n" + html.escape(output) if output else ""))
        return '<pre class="terminal"><code>' + "\n".join(shown) + "</code></pre>"

    return re.sub(r"^```(run|refused)\n(.*?)^```$", block, text, flags=re.MULTILINE | re.DOTALL)


def make_content(tool, folder):
    """Draws all pictures, checks all facts, and returns the tables and numbers by name."""
    jobs = [(draw, (tool, folder / f"{name}.svg")) for name, draw in FIGURES.items()]
    jobs += [(work, (tool, folder)) for work in (*PICTURES.values(), *FACTS)]
    with ThreadPoolExecutor(os.cpu_count()) as workers:
        made = [workers.submit(function, *arguments) for function, arguments in jobs]
        content = {name: workers.submit(make, tool) for name, make in TABLES.items()}
        content |= {name: workers.submit(measured, name, tool, folder) for name in VALUES}
        for number, job in enumerate([*made, *content.values()], start=1):
            try:
                job.result()
            except BaseException:
                workers.shutdown(cancel_futures=True)
                raise
            if number % 20 == 0:
                print(f"  {number} of {len(made) + len(content)} made", flush=True)
    return {name: job.result() for name, job in content.items()}


def write_text(tool, folder, content):
    """Fills in and checks the chapters, and writes them to manual.md."""
    chapters = sorted(HERE.glob("[0-9][0-9]-*.md"))
    source = "\n\n".join(chapter.read_text() for chapter in chapters)
    check.pictures(source, [*(f"{name}.svg" for name in FIGURES), *PICTURES, "signal-path.svg"])
    text = run_examples(keep_units(fill(source, content)), tool.program, folder / "examples")
    check.names(text, tool)
    text = link_chapters(number_figures(text))
    head = f"---\ntitle: ZKR T46 manual\nversion: {content['version']}\n---\n\n"
    (folder / "manual.md").write_text(head + text)


if __name__ == "__main__":
    program, target = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    command = Tool(program)
    write_text(command, target, make_content(command, target))
