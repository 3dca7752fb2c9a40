"""Measurements of whole processes, in the JSON format of Google Benchmark."""

import json


class Samples:
    """A collection of single measurements, each for a work, a way to do it and a data size."""

    def __init__(self):
        self._runs = []

    def add(self, work, way, size, value, unit):
        """Adds a measurement; `unit` is "s", "ms", "us", "ns" or "MiB"."""
        self._runs.append({"name": f"{work}/{way}/{size}", "run_type": "iteration",
                           "real_time": value, "time_unit": unit})

    def write(self, path):
        with open(path, "w", encoding="utf-8") as file:
            json.dump({"benchmarks": self._runs}, file)
