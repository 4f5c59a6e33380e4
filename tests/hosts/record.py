#!/usr/bin/python3
"""Puts the results of scripts/hosts.sh into the table of hosts in a Markdown file. Rows of hosts
that were not run stay.
Usage: record.py RESULTS FILE"""
import datetime
import re
import sys
from pathlib import Path

HEADING = "| Host | Version | Format | Date | Checks | Largest difference in sound | Seen |"


def table_rows(lines):
    """The rows behind the heading as lists of cells, and where they begin and end."""
    start = end = lines.index(HEADING) + 2
    while end < len(lines) and lines[end].startswith("|"):
        end += 1
    return [[cell.strip() for cell in line.strip("|").split("|")] for line in lines[start:end]], \
        start, end


def row_of(key, checks):
    """A host's row, from its checks: (result, words, figures)."""
    host, version, form = key
    faults = [words for result, words, _ in checks if result == "fault"]
    differences = [float(match[1]) for _, _, figures in checks
                   for match in re.finditer(r"largest difference ([-+.e\d]+)", figures)]
    seen = list(dict.fromkeys(words for result, words, _ in checks if result == "seen"))
    return [host, version, form, datetime.date.today().isoformat(),
            f"{len(checks) - len(faults)} passed, {len(faults)} failed",
            f"{max(differences):.2g}" if differences else "–",
            "; ".join(seen + ["FAULT: " + words for words in faults])]


def main():
    results, file = map(Path, sys.argv[1:])
    hosts = {}
    for line in results.read_text().splitlines():
        *key, result, words, figures = line.split("\t")
        hosts.setdefault(tuple(key), []).append((result, words, figures))
    made = [row_of(key, checks) for key, checks in hosts.items()]
    lines = file.read_text().splitlines()
    rows, start, end = table_rows(lines)
    run = {(row[0], row[2]) for row in made}
    rows = [row for row in rows if (row[0], row[2]) not in run] + made
    lines[start:end] = ["| " + " | ".join(row) + " |"
                        for row in sorted(rows, key=lambda row: (row[0], row[2]))]
    file.write_text("\n".join(lines) + "\n")


main()
