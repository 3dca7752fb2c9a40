"""Samples a process's memory, descriptors and threads."""

import collections
import csv
import os
import time

# Memory and the size of the store are in KiB.
Sample = collections.namedtuple("Sample", "seconds picks deliveries reloads rss pss private_dirty "
                                          "descriptors threads store")


def _figures(path):
    """Returns the numbers in a file of /proc by name."""
    with open(path, encoding="ascii") as file:
        parts = (line.split() for line in file)
        return {part[0].rstrip(":"): int(part[1]) for part in parts if part[1:2] and
                part[1].isdigit()}


class Meter:
    """Takes samples of a process. `store` is the path of its store."""

    def __init__(self, process_id, store):
        self._folder = f"/proc/{process_id}"
        self._store = store
        self._began = time.monotonic()
        self.samples = []

    def take(self, counts):
        memory = _figures(f"{self._folder}/smaps_rollup")
        self.samples.append(Sample(
            round(time.monotonic() - self._began, 1), counts["picks"], counts["deliveries"],
            counts["reloads"], memory["Rss"], memory["Pss"], memory["Private_Dirty"],
            len(os.listdir(f"{self._folder}/fd")), _figures(f"{self._folder}/status")["Threads"],
            os.path.getsize(self._store) // 1024))

    def write(self, path):
        with open(path, "w", encoding="ascii", newline="") as file:
            writer = csv.writer(file)
            writer.writerow(Sample._fields)
            writer.writerows(self.samples)
