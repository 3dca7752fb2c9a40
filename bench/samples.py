"""What was measured of whole processes, in the form of Google Benchmark."""

import json


class Samples:
    """Single measurements, each of a work done in one way on data of one size."""

    def __init__(self):
        self._runs = []

    def add(self, work, way, size, value, unit):
        """`value` is in `unit`: "s", "ms", "us", "ns" or "MiB"."""
        self._runs.append({"name": f"{work}/{way}/{size}", "run_type": "iteration",
                           "real_time": value, "time_unit": unit})

    def write(self, path):
        with open(path, "w", encoding="utf-8") as file:
            json.dump({"benchmarks": self._runs}, file)
