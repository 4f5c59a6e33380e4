#!/usr/bin/python3
"""Places an audio file on tracks of a saved Ardour session, without fades, after some silence, and
ends the session's range with it.
Usage: place_audio.py FOLDER AUDIO SILENCE TRACK...       SILENCE in samples"""
import shutil
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
from audio import shape_of  # noqa: E402

SUPERCLOCKS_PER_SECOND = 282240000

folder, audio = Path(sys.argv[1]), Path(sys.argv[2])
silence, tracks = int(sys.argv[3]), sys.argv[4:]
document = folder / f"{folder.name}.ardour"
tree = ElementTree.parse(document)
session = tree.getroot()
next_id = int(session.get("id-counter"))
channels, rate, frames = shape_of(audio)
assert rate == int(session.get("sample-rate")), f"the rate of {audio} is not the session's"


def clocks(samples):
    """A time in the session's notation."""
    return f"a{samples * SUPERCLOCKS_PER_SECOND // rate}"


def add(parent, kind, **attributes):
    """Adds a child with a new id, which is returned; underscores in names become hyphens."""
    global next_id
    next_id += 1
    names = {name.replace("_", "-"): str(value) for name, value in attributes.items()}
    ElementTree.SubElement(parent, kind, {"id": str(next_id), **names})
    return next_id


files = folder / "interchange" / folder.name / "audiofiles"
files.mkdir(parents=True, exist_ok=True)
shutil.copy(audio, files)
sources = [add(session.find("Sources"), "Source", name=audio.name, type="audio", flags="",
               channel=channel, origin="", gain=1) for channel in range(channels)]
of_sources = {f"{role}_{n}": source for n, source in enumerate(sources)
              for role in ("source", "master_source")}
for track in tracks:
    playlist, = (p for p in session.find("Playlists") if p.get("name") == track)
    add(playlist, "Region", name=audio.stem, type="audio", channels=channels, **of_sources,
        start="a0", length=f"{clocks(frames)}@{clocks(silence)}", opaque=1, muted=0,
        scale_amplitude=1, fade_in_active=0, fade_out_active=0, default_fade_in=0,
        default_fade_out=0, envelope_active=0, first_edit="nothing", layering_index=0, stretch=1,
        shift=1)
add(session.find("Locations"), "Location", name="session", start="a0",
    end=clocks(silence + frames), flags="IsSessionRange", locked=0, cue=0, timestamp=0)
session.set("id-counter", str(next_id + 1))
tree.write(document, encoding="UTF-8", xml_declaration=True)
