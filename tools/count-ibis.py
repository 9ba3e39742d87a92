#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Counts components, pins, models, tables and points of IBIS files from their text alone, and compares
them with what `zov ibis tree --json` counts.

    tools/count-ibis.py ZOV FILE...      a table; status 1 when a count differs
"""
import json
import re
import subprocess
import sys

NAMES = ["components", "pins", "models", "tables", "points"]
TABLES = {
    "pulldown", "pullup", "gnd clamp", "power clamp", "isso pu", "isso pd", "series current", "series mosfet",
    "rising waveform", "falling waveform", "composite current", "power pulse table", "gnd pulse table",
    "rising waveform near", "falling waveform near", "rising waveform far", "falling waveform far",
    "diff rising waveform near", "diff falling waveform near", "diff rising waveform far",
    "diff falling waveform far",
}
FREE_TEXT = {"source", "notes", "disclaimer", "copyright"}
NUMBER = re.compile(r"[-+]?(\d+\.?\d*|\.\d+)([eE][-+]?\d+)?[A-Za-z]*$")


def count(path):
    counts = dict.fromkeys(NAMES, 0)
    comment, current = "|", ""
    with open(path, encoding="latin-1", newline="\n") as file:
        for raw in file:
            line = raw.rstrip("\r\n")
            match = re.match(r"\s*\[([^\]]*)\](.*)", line)
            if match and not (line[0] != "[" and current in FREE_TEXT):
                name = match[1].replace("_", " ").lower()
                if name == "comment char":
                    char = re.match(r"\s*(.)_char\b", match[2], re.I)
                    comment = char[1] if char else comment
                    continue
                current = name
                counts["components"] += name == "component"
                counts["models"] += name == "model"
                counts["tables"] += name in TABLES
                if name == "end":
                    break
                continue
            words = line.split(comment)[0].split()
            if not words:
                continue
            counts["pins"] += current == "pin"
            if current in TABLES and NUMBER.match(words[0]):
                counts["points"] += 1
    return counts


def told(zov, path):
    out = subprocess.run([zov, "ibis", "tree", path, "--json", "--no-check", "--depth", "1"], capture_output=True)
    counts = json.loads(out.stdout)["counts"]
    return {name: counts[name] for name in NAMES}


def main():
    zov, files = sys.argv[1], sys.argv[2:]
    differ = 0
    print("| file |", " | ".join(NAMES), "| |")
    print("|---|" + "---|" * (len(NAMES) + 1))
    for path in files:
        ours, theirs = told(zov, path), count(path)
        differ += ours != theirs
        cells = [str(ours[n]) if ours[n] == theirs[n] else f"{ours[n]} (text {theirs[n]})" for n in NAMES]
        print(f"| {'/'.join(path.split('/')[-2:])} | {' | '.join(cells)} | {'differs' if ours != theirs else 'same'} |")
    sys.exit(1 if differ else 0)


main()
