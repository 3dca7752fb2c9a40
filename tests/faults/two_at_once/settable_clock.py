"""A clock that is set while a program runs, and the program that goes by it."""

import glob
import os
import subprocess

from tablet import Program


class SettableClock:
    """It stands still between two settings, so that what is noted by it is known to the second."""

    def __init__(self, path, time):
        self._path = path
        # Where the library is, the system's own command knows.
        library = subprocess.run(["faketime", "-f", "+0", "printenv", "LD_PRELOAD"], check=True,
                                 stdout=subprocess.PIPE, text=True).stdout.strip()
        # Timers go on at their pace, as they do when a clock is set.
        self.environment = [f"LD_PRELOAD={library}", f"FAKETIME_TIMESTAMP_FILE={path}",
                            "FAKETIME_NO_CACHE=1", "FAKETIME_DONT_FAKE_MONOTONIC=1",
                            "NO_FAKE_STAT=1"]
        self.set(time)

    def set(self, time):
        """Sets it to the time, which is that of the program's zone, at once."""
        with open(self._path + "-new", "w", encoding="ascii") as file:
            file.write(f"{time:%Y-%m-%d %H:%M:%S}\n")
        os.replace(self._path + "-new", self._path)


class ProgramByClock(Program):
    """The program, which knows no other clock."""

    def __init__(self, clock, screen, *command):
        super().__init__(screen, "env", *clock.environment, *command)

    def _end(self):
        super()._end()
        # The library removes these only if no signal ends the program.
        for path in glob.glob(f"/dev/shm/*faketime_s?m_{self._process.pid}"):
            os.unlink(path)
