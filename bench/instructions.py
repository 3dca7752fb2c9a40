"""Counts the instructions of single operations of the program. Unlike times, the counts do not
depend on the machine's load.

Usage: python3 instructions.py --check|--record PROGRAM BASELINE.json

--record writes the counts to the baseline. --check fails if a count exceeds that of the baseline by
more than the tolerance.
"""

import json
import os
import re
import subprocess
import sys
import tempfile

WORKS = ["catalogue", "confirm", "history", "import", "scan"]
# Allows for different builds of the libraries and for code that they select by processor.
TOLERANCE = 0.05


def instructions(program, work):
    with tempfile.NamedTemporaryFile() as counts:
        environment = dict(os.environ, SIMDJSON_FORCE_IMPLEMENTATION="westmere",
                           QT_QPA_PLATFORM="offscreen")
        subprocess.run(["valgrind", "--quiet", "--tool=callgrind", "--instr-atstart=no",
                        f"--callgrind-out-file={counts.name}", program, work],
                       check=True, env=environment)
        totals = re.findall(r"^(?:totals|summary): (\d+)", counts.read().decode(), re.MULTILINE)
    return max(map(int, totals))


def main():
    mode, program, baseline = sys.argv[1:]
    counts = {work: instructions(program, work) for work in WORKS}
    if mode == "--record":
        with open(baseline, "w", encoding="utf-8") as file:
            json.dump(counts, file, indent=2)
            file.write("\n")
        return
    with open(baseline, encoding="utf-8") as file:
        known = json.load(file)
    slower = [work for work in WORKS if counts[work] > known[work] * (1 + TOLERANCE)]
    for work in WORKS:
        print(f"{work:10} {counts[work]:>13,} instructions, {counts[work] / known[work]:.3f} of "
              f"{known[work]:,}{'  TOO MANY' if work in slower else ''}")
    sys.exit(1 if slower else 0)


main()
