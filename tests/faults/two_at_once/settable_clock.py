"""A clock that a test sets while a program runs, and a program that uses it."""

import glob
import os
import subprocess

from tablet import Program


class SettableClock:
    """Does not advance between calls of set(), so that a test can predict every recorded time."""

    def __init__(self, path, time):
        self._path = path
        # faketime sets LD_PRELOAD to the path of its library.
        library = subprocess.run(["faketime", "-f", "+0", "printenv", "LD_PRELOAD"], check=True,
                                 stdout=subprocess.PIPE, text=True).stdout.strip()
        # Timers keep running, as they do when a real clock is set.
        self.environment = [f"LD_PRELOAD={library}", f"FAKETIME_TIMESTAMP_FILE={path}",
                            "FAKETIME_NO_CACHE=1", "FAKETIME_DONT_FAKE_MONOTONIC=1",
                            "NO_FAKE_STAT=1"]
        self.set(time)

    def set(self, time):
        """Sets the clock atomically to `time`, which is in the program's time zone."""
        with open(self._path + "-new", "w", encoding="ascii") as file:
            file.write(f"{time:%Y-%m-%d %H:%M:%S}\n")
        os.replace(self._path + "-new", self._path)


class ProgramByClock(Program):
    """The program, for which this is the only clock."""

    def __init__(self, clock, screen, *command):
        super().__init__(screen, "env", *clock.environment, *command)

    def _end(self):
        super()._end()
        # The library does not remove these if a signal ends the program.
        for path in glob.glob(f"/dev/shm/*faketime_s?m_{self._process.pid}"):
            os.unlink(path)
