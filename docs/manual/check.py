"""Completeness checks on the manual's text."""
import re


def fail(words, missing):
    if missing:
        raise SystemExit(f"manual: {words}: {', '.join(missing)}")


def pictures(text, made):
    """Every generated picture is shown, and every shown picture is generated."""
    shown = set(re.findall(r"\]\((\S+?\.(?:svg|png))\)", text))
    fail("these pictures are made and not shown", sorted(set(made) - shown - {"cover.png"}))
    fail("these pictures are shown and not made", sorted(shown - set(made)))


def names(text, tool):
    """The text names every parameter and every command of the program."""
    named = set(re.findall(r"`([^`\n]+)`", text))
    fail("these parameters are not named",
         [row["title"] for row in tool.parameters() if row["title"] not in named])
    fail("these commands are not named", [name for name in tool.commands()
                                          if name not in named and name not in {"preset", "bank"}])
