"""Writes the figures of a run of the benchmarks as a page, and draws how cost grows.

Usage: python3 report.py RESULTS.json PAGE PICTURES

RESULTS.json is what Google Benchmark writes, PAGE the Markdown file, PICTURES the folder of the
pictures. Every figure is a median over the repetitions of one run; every ratio is between figures of
that run. Names of benchmarks are "work/way/size": the way begins with "floor:" or "peer:", or is
the program's own.
"""

import collections
import json
import os
import statistics
import subprocess
import sys

OURS = "CartonPick"
TO_MS = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}

# What is measured, what of, and what it must reach, as a part of the floor and of a peer.
Work = collections.namedtuple("Work", "title text size most_of_floor least_of_peer")
WORKS = {
    "catalogue": Work(
        "Reload of the catalogue",
        "From the body in memory, {size} articles of some 100 bytes, to committed and indexed.",
        1_000_000, 1.0, 2.0),
    "import": Work(
        "Import of a delivery",
        "From the body in memory, {size} lines in boxes of twenty, to boxes and item lines with the "
        "earlier picks of every fifth line.",
        100_000, None, 1.0),
    "scan": Work(
        "Scan of a code",
        "No line of an open box of 1,000 lines, found in a catalogue of {size} articles.",
        1_000_000, 1.5, None),
    "history": Work(
        "List of all deliveries",
        "{size} picks, fifty in each delivery.",
        1_000_000, 1.2, 20.0),
}


def read(path):
    """The median milliseconds by work, way and size, and the machine."""
    with open(path, encoding="utf-8") as file:
        results = json.load(file)
    times = collections.defaultdict(list)
    for run in results["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        if run.get("error_occurred"):
            raise SystemExit(f"{run['name']}: {run['error_message']}")
        work, way, size = run["name"].split("/")[:3]
        times[work, way, int(size)].append(run["real_time"] * TO_MS[run["time_unit"]])
    medians = collections.defaultdict(lambda: collections.defaultdict(dict))
    for (work, way, size), values in times.items():
        medians[work][way][size] = statistics.median(values)
    return medians, results["context"]


def shown(milliseconds):
    for unit, factor in (("s", 1e-3), ("ms", 1.0), ("µs", 1e3)):
        if milliseconds * factor >= 1:
            return f"{milliseconds * factor:.3g} {unit}"
    return f"{milliseconds * 1e6:.3g} ns"


def verdict(work, ways):
    """What was to be reached, and whether it was."""
    ours = ways[OURS][work.size]
    lines = []
    if work.most_of_floor:
        floor = next(sizes[work.size] for way, sizes in ways.items() if way.startswith("floor"))
        lines.append((f"at most {work.most_of_floor:g} × the floor", ours / floor,
                      ours / floor <= work.most_of_floor))
    if work.least_of_peer:
        peer = min(sizes[work.size] for way, sizes in ways.items() if way.startswith("peer"))
        lines.append((f"at least {work.least_of_peer:g} × as fast as the best peer", peer / ours,
                      peer / ours >= work.least_of_peer))
    return [f"- {'reached' if ok else '**missed**'}: {aim}; it is {ratio:.2f} ×"
            for aim, ratio, ok in lines]


def draw(name, ways, folder):
    """A picture of the times by size, both logarithmic. Returns its file name."""
    plots, data = [], []
    for way, sizes in ways.items():
        width = 3 if way == OURS else 1.5
        plots.append(f"'-' using 1:2 with linespoints lw {width} pt 7 title \"{way}\" noenhanced")
        data += [f"{size} {time}" for size, time in sorted(sizes.items())] + ["e"]
    script = ["set terminal svg size 760,420 font 'sans,13' background 'white'",
              f"set output '{os.path.join(folder, name)}.svg'", "set logscale xy", "set grid",
              "set key top left", "set xlabel 'size'", "set ylabel 'milliseconds'",
              "set format x '10^{%L}'", "plot " + ", ".join(plots), *data]
    subprocess.run(["gnuplot"], input="\n".join(script), text=True, check=True)
    return f"{name}.svg"


def section(name, ways, folder, page):
    work = WORKS[name]
    ours = ways[OURS][work.size]
    picture = os.path.relpath(os.path.join(folder, draw(name, ways, folder)), os.path.dirname(page))
    rows = [f"| {way} | {shown(sizes[work.size])} | {sizes[work.size] / ours:.2f} |"
            for way, sizes in ways.items()]
    return [f"## {work.title}", "", work.text.format(size=f"{work.size:,}"), "",
            "| way | time | of CartonPick's |", "| --- | ---: | ---: |", *rows, "",
            *verdict(work, ways), "", f"![{work.title}: time by size]({picture})", ""]


def main():
    results, page, folder = sys.argv[1:]
    medians, machine = read(results)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(os.path.dirname(__file__), "performance.head.md"),
              encoding="utf-8") as file:
        lines = [file.read().rstrip(), "",
                 f"The run was on {machine['num_cpus']} cores of {machine['mhz_per_cpu']} MHz, on "
                 f"{machine['date'][:10]}.", ""]
    for name in WORKS:
        lines += section(name, medians[name], folder, page)
    with open(page, "w", encoding="utf-8") as file:
        file.write("\n".join(lines).rstrip() + "\n")


main()
