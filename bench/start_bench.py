"""Measures the program's startup, with an empty window as the baseline: the time from the start of
the process to its first frame, with a warm and a cold page cache, and the memory used by then. Runs
without a display; the two programs take turns.

Usage: python3 start_bench.py BIN RESULTS.json

BIN is the folder with the programs.
"""

import os
import subprocess
import sys
import tempfile
import time

from samples import Samples

WARM, COLD = 15, 7
OURS, FLOOR = "CartonPick", "floor: an empty window"


class Start:
    """Starts a process and waits for its first frame, which took `seconds`."""

    def __init__(self, command, home):
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software",
                           QT_LOGGING_RULES="qt.scenegraph.time.renderloop=true",
                           QT_FORCE_STDERR_LOGGING="1", XDG_RUNTIME_DIR=home)
        begin = time.perf_counter()
        self._process = subprocess.Popen(command, env=environment, stderr=subprocess.PIPE)
        for line in self._process.stderr:
            if b"Frame rendered" in line:
                self.seconds = time.perf_counter() - begin
                return
        raise SystemExit(f"{command[0]} ended without a frame")

    def memory(self):
        """Returns the private memory of the process in MiB."""
        with open(f"/proc/{self._process.pid}/smaps_rollup", encoding="ascii") as file:
            return sum(int(line.split()[1]) for line in file
                       if line.startswith(("Private_Clean:", "Private_Dirty:"))) / 1024

    def files(self):
        """Returns the paths of all mapped files."""
        with open(f"/proc/{self._process.pid}/maps", encoding="utf-8") as file:
            return {fields[5] for fields in map(str.split, file)
                    if len(fields) > 5 and fields[5].startswith("/")}

    def end(self):
        self._process.terminate()
        self._process.communicate()


def drop_from_cache(files):
    """Removes `files` from the page cache, except pages that a process has mapped."""
    for name in files:
        if os.path.isfile(name):
            descriptor = os.open(name, os.O_RDONLY)
            os.posix_fadvise(descriptor, 0, 0, os.POSIX_FADV_DONTNEED)
            os.close(descriptor)


def main():
    folder, results = sys.argv[1:]
    samples = Samples()
    with tempfile.TemporaryDirectory() as home:
        ways = {FLOOR: [os.path.join(folder, "empty-window")],
                OURS: [os.path.join(folder, "cartonpick"), "--home", os.path.join(home, "picks")]}
        files = set()
        for command in ways.values():
            start = Start(command, home)
            files |= start.files()
            start.end()
        for run in range(WARM + COLD):
            work = "start warm" if run < WARM else "start cold"
            for way, command in ways.items():
                if work == "start cold":
                    drop_from_cache(files)
                start = Start(command, home)
                samples.add(work, way, 1, start.seconds, "s")
                if work == "start warm":
                    samples.add("start memory", way, 1, start.memory(), "MiB")
                start.end()
    samples.write(results)


main()
