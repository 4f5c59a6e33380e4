#!/usr/bin/python3
"""Sends commands to Audacity's scripting module and prints the answers. Exit code 1 if one fails.
Usage: tell.py COMMAND..."""
import os
import sys

user = os.getuid()
with open(f"/tmp/audacity_script_pipe.to.{user}", "w") as commands, \
        open(f"/tmp/audacity_script_pipe.from.{user}") as answers:
    for command in sys.argv[1:]:
        print(command, file=commands, flush=True)
        for line in answers:
            if line.startswith("BatchCommand finished"):
                break
            print(line, end="")
        else:
            sys.exit(f"no answer to {command}")
        answers.readline()  # an empty line ends an answer
        if line.strip() != "BatchCommand finished: OK":
            sys.exit(f"{command}: {line.strip()}")
