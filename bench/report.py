"""Writes the results of a benchmark run as a page, with charts of the cost by size.

Usage: python3 report.py PAGE PICTURES RESULTS.json...

PAGE is the Markdown file, PICTURES the folder for the charts. RESULTS.json is written by Google
Benchmark, samples.py or Samples.cpp. All figures and ratios are from one run. The name of a
benchmark is "work/way/size"; the way starts with "floor:" or "peer:", or is "CartonPick".
"""

import collections
import json
import math
import os
import subprocess
import sys

OURS = "CartonPick"
# Times are converted to milliseconds, memory to MiB.
FACTORS = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3, "MiB": 1.0}
MEDIAN, SLOWEST = 0.5, 0.99

# A target at a quantile, by the value of `of`. "floor": at most `limit` times the floor; "peer": at
# least `limit` times as fast as the best peer; "time": at most `limit` milliseconds.
Aim = collections.namedtuple("Aim", "of limit quantile", defaults=[MEDIAN])
Work = collections.namedtuple("Work", "title text size aims unit", defaults=["ms"])
WORKS = {
    "catalogue": Work(
        "Reload of the catalogue",
        "From the body in memory, {size} articles of about 100 bytes, to the committed and indexed "
        "catalogue.",
        1_000_000, [Aim("floor", 1.0), Aim("peer", 2.0)]),
    "reload memory": Work(
        "Memory of a reload",
        "The peak memory of the program after the touch of the button, with {size} articles received "
        "over HTTP.",
        1_000_000, [Aim("floor", 1.0)], "MiB"),
    "reload frames": Work(
        "Frames during a reload",
        "The longest time between two frames of a window that is drawn continuously, while {size} "
        "articles are loaded.",
        1_000_000, [Aim("time", 50)]),
    "import": Work(
        "Import of a delivery",
        "From the body in memory, {size} lines in boxes of twenty, to boxes and item lines with the "
        "earlier picks of every fifth line restored.",
        100_000, [Aim("peer", 1.0)]),
    "confirm": Work(
        "A confirmed quantity",
        "From the keypad's OK to a new pick on disk and updated totals and counters, with {size} "
        "boxes loaded.",
        10_000, [Aim("floor", 1.2), Aim("floor", 1.5, SLOWEST)]),
    "scan": Work(
        "Scan of a code",
        "The code is not in the open box of 1,000 lines, but in a catalogue of {size} articles.",
        1_000_000, [Aim("floor", 1.5)]),
    "keypad": Work(
        "The keypad's first frame",
        "From the Return key that ends a scan to the keypad drawn, in a box of {size} lines.",
        20, [Aim("floor", 1.5)]),
    "history": Work(
        "List of all deliveries",
        "{size} picks, fifty per delivery.",
        1_000_000, [Aim("floor", 1.2), Aim("peer", 20.0)]),
    "start warm": Work(
        "Start, warm",
        "From the start of the process to the first frame, with all files in the system's cache.",
        1, [Aim("floor", 1.5)]),
    "start cold": Work(
        "Start, cold",
        "The same, after the programs and their libraries were removed from the system's cache.",
        1, [Aim("floor", 1.5)]),
    "start memory": Work(
        "Memory at the start",
        "The memory that would become free if the process ended after its first frame.",
        1, [Aim("floor", 1.5)], "MiB"),
    "scroll lines": Work(
        "Scrolling lines",
        "One frame of the pick table of a box of {size} lines, scrolled by three rows per frame.",
        100_000, [Aim("floor", 2.0, SLOWEST)]),
    "scroll boxes": Work(
        "Scrolling boxes",
        "One frame of the list of {size} boxes, scrolled by three rows per frame.",
        10_000, [Aim("floor", 2.0, SLOWEST)]),
    "scroll memory": Work(
        "Memory of scrolling",
        "The memory that 1,000 frames of the pick table of a box of {size} lines add.",
        100_000, [], "MiB"),
    "service lookup": Work(
        "The order service: lookups",
        "The average time between two answers, for {size} tablets that look up deliveries of twelve "
        "lines.",
        64, [Aim("floor", 2.0)]),
    "service send": Work(
        "The order service: sends",
        "The same for sends of twelve lines, each on disk before its answer. After the run the "
        "service was killed; every accepted send was in its store.",
        64, []),
    "fleet lookup": Work(
        "A fleet: lookups",
        "On PostgreSQL, the average time between two answers, for 64 tablets and {size} deliveries of "
        "twelve lines in the store.",
        1_000_000, []),
    "fleet lookup p99": Work(
        "A fleet: slow lookups",
        "The p99 of the time of a lookup, for 64 tablets and {size} deliveries.",
        1_000_000, []),
    "fleet send": Work(
        "A fleet: sends",
        "On PostgreSQL, the average time between two answers, for 64 tablets that send twelve lines "
        "each and {size} deliveries in the store. After the run every accepted send was in it.",
        1_000_000, []),
    "fleet send p99": Work(
        "A fleet: slow sends",
        "The p99 of the time of a send, for 64 tablets and {size} deliveries.",
        1_000_000, []),
}


def read(paths):
    """Reads the files `paths`. Returns the sorted values by work, way and size, and Google
    Benchmark's description of the machine."""
    values = collections.defaultdict(lambda: collections.defaultdict(lambda: collections.defaultdict(list)))
    machine = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            results = json.load(file)
        machine.update(results.get("context", {}))
        for run in results["benchmarks"]:
            if run.get("error_occurred"):
                raise SystemExit(f"{run['name']}: {run['error_message']}")
            if run["run_type"] == "iteration":
                work, way, size = run["name"].split("/")[:3]
                values[work][way][int(size)].append(run["real_time"] * FACTORS[run["time_unit"]])
    for ways in values.values():
        for sizes in ways.values():
            for sample in sizes.values():
                sample.sort()
    return values, machine


def at(sample, quantile):
    """Returns the given quantile (0 to 1) of a sorted sample, interpolated linearly."""
    place = quantile * (len(sample) - 1)
    low = sample[math.floor(place)]
    return low + (sample[math.ceil(place)] - low) * (place % 1)


def shown(value, unit):
    if unit == "MiB":
        return f"{value:.3g} MiB"
    for name, factor in (("s", 1e-3), ("ms", 1.0), ("µs", 1e3)):
        if value * factor >= 1:
            return f"{value * factor:.3g} {name}"
    return f"{value * 1e6:.3g} ns"


def verdict(work, ways, aim):
    """Returns the target in words, the figure in words, and True if the target is reached."""
    def least(kind):
        return min(at(sizes[work.size], aim.quantile) for way, sizes in ways.items()
                   if way.startswith(kind))

    ours = at(ways[OURS][work.size], aim.quantile)
    which = "" if all(a.quantile == MEDIAN for a in work.aims) else f"p{aim.quantile * 100:g} "
    if aim.of == "time":
        return f"at most {aim.limit} ms", shown(ours, work.unit), ours <= aim.limit
    if aim.of == "peer":
        ratio = least("peer") / ours
        return f"at least {aim.limit:g} × as fast as the best peer", f"{ratio:.2f} ×", ratio >= aim.limit
    ratio = ours / least("floor")
    return f"{which}at most {aim.limit:g} × the floor", f"{ratio:.2f} ×", ratio <= aim.limit


def verdicts(work, ways):
    return [verdict(work, ways, aim) for aim in work.aims]


def draw(name, work, ways, folder):
    """Draws a chart of the medians by size, with logarithmic axes. Returns its file name."""
    picture = name.replace(" ", "-") + ".svg"
    plots, data = [], []
    for way, sizes in ways.items():
        width = 3 if way == OURS else 1.5
        plots.append(f"'-' using 1:2 with linespoints lw {width} pt 7 title \"{way}\" noenhanced")
        data += [f"{size} {at(sample, MEDIAN)}" for size, sample in sorted(sizes.items())] + ["e"]
    unit = "milliseconds" if work.unit == "ms" else work.unit
    script = ["set terminal svg size 760,420 font 'sans,13' background 'white'",
              f"set output '{os.path.join(folder, picture)}'", "set logscale xy", "set grid",
              "set key top left", "set xlabel 'size'", f"set ylabel '{unit}'",
              "set format x '10^{%L}'", "plot " + ", ".join(plots), *data]
    subprocess.run(["gnuplot"], input="\n".join(script), text=True, check=True)
    return picture


def table(work, ways):
    ours = at(ways[OURS][work.size], MEDIAN)
    many = any(len(sizes[work.size]) >= 100 for sizes in ways.values())
    lines = ["| way | median |" + (" p99 |" if many else "") + " ratio to CartonPick |",
             "| --- | ---: |" + (" ---: |" if many else "") + " ---: |"]
    for way, sizes in ways.items():
        sample = sizes[work.size]
        slowest = f" {shown(at(sample, SLOWEST), work.unit)} |" if many else ""
        median = at(sample, MEDIAN)
        lines.append(f"| {way} | {shown(median, work.unit)} |{slowest} {median / ours:.2f} |")
    return lines


def section(name, ways, folder, page):
    work = WORKS[name]
    lines = [f"## {work.title}", "", work.text.format(size=f"{work.size:,}"), "",
             *table(work, ways), ""]
    lines += [f"- {'reached' if ok else '**missed**'}: {aim}; measured: {figure}"
              for aim, figure, ok in verdicts(work, ways)]
    lines += [""] if work.aims else []
    if len(ways[OURS]) > 1:
        picture = os.path.relpath(os.path.join(folder, draw(name, work, ways, folder)),
                                  os.path.dirname(page))
        lines += [f"![{work.title}: by size]({picture})", ""]
    return lines


def overview(values):
    lines = ["| task | target | result | |", "| --- | --- | ---: | --- |"]
    for name, work in WORKS.items():
        for aim, figure, ok in verdicts(work, values[name]):
            lines.append(f"| {work.title} | {aim} | {figure} | {'reached' if ok else '**missed**'} |")
    return lines


def main():
    page, folder, *results = sys.argv[1:]
    values, machine = read(results)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(os.path.dirname(__file__), "performance.head.md"),
              encoding="utf-8") as file:
        lines = [file.read().rstrip(), "",
                 f"The benchmarks ran on {machine['num_cpus']} cores at {machine['mhz_per_cpu']} MHz, on "
                 f"{machine['date'][:10]}.", "", *overview(values), ""]
    for name in WORKS:
        lines += section(name, values[name], folder, page)
    with open(page, "w", encoding="utf-8") as file:
        file.write("\n".join(lines).rstrip() + "\n")


main()
