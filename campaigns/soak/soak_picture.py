"""Draws a chart of a process's resource use over time."""

import subprocess

from soak_flatness import KIB_A_MIB

CURVES = {"RSS": "rss", "PSS": "pss", "private, dirty": "private_dirty"}
THICK = "private, dirty"


def draw(samples, path):
    """Draws the samples into an SVG file with gnuplot."""
    plots, data = [], []
    for title, figure in CURVES.items():
        width = 3 if title == THICK else 1.5
        plots.append(f"'-' using 1:2 with lines lw {width} title \"{title}\" noenhanced")
        data += [f"{sample.picks} {getattr(sample, figure) / KIB_A_MIB}" for sample in samples]
        data.append("e")
    script = ["set terminal svg size 760,420 font 'sans,13' background 'white'",
              f"set output '{path}'", "set grid", "set key bottom right", "set yrange [0:*]",
              "set xlabel 'confirmed quantities'", "set ylabel 'MiB'",
              "plot " + ", ".join(plots), *data]
    subprocess.run(["gnuplot"], input="\n".join(script), text=True, check=True)
