#!/usr/bin/python3
"""Prints CHANGELOG.md as a Debian changelog.

Usage: changelog.py CHANGELOG.md PACKAGE MAINTAINER DATE
DATE, of the form 2026-11-23, is that of a version that is not released yet."""
import datetime
import email.utils
import re
import sys
import textwrap

text = open(sys.argv[1], encoding="utf-8").read()
package, maintainer, today = sys.argv[2:]


def entry(markdown):
    """Without marks for code, and with links as their text."""
    plain = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", markdown.replace("`", ""))
    return textwrap.fill(" ".join(plain.split()), 80, initial_indent="  * ",
                         subsequent_indent="    ", break_on_hyphens=False)


versions = re.split(r"^## ", text, flags=re.MULTILINE)[1:]
if not versions:
    sys.exit(f"{sys.argv[1]} has no versions")
for one in versions:
    head, body = one.split("\n", 1)
    match = re.fullmatch(r"\[([\d.]+)\] - (not released yet|\d{4}-\d\d-\d\d)", head)
    if not match:
        sys.exit(f"{sys.argv[1]}: a version and its date are expected: {head}")
    version, date = match.groups()
    day = datetime.datetime.fromisoformat(today if date == "not released yet" else date)
    print(f"{package} ({version}) stable; urgency=medium")
    for paragraph in re.split(r"\n\n|\n(?=- )", body.strip()):
        if paragraph.startswith("### "):
            print(f"\n  [ {paragraph[4:]} ]")
        elif paragraph.startswith("- "):
            print(entry(paragraph[2:]))
    stamp = email.utils.format_datetime(day.replace(tzinfo=datetime.timezone.utc))
    print(f"\n -- {maintainer}  {stamp}\n")
