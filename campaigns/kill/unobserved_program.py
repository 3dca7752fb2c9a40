"""The program, started without an accessibility client."""

import os
import signal
import subprocess
import threading

from owned_process import start_owned
from tablet import NotSeen, wait_for


class UnobservedProgram:
    def __init__(self, screen, executable, home):
        self._screen = screen
        environment = dict(os.environ, DISPLAY=screen.display, QT_QPA_PLATFORM="xcb",
                           QT_QUICK_BACKEND="software")
        self._process = start_owned([executable, "--home", home], "KILL", env=environment,
                                    stderr=subprocess.PIPE, text=True)

    def wait_for_window(self):
        """Waits until the window is on the screen."""
        search = ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self._process.pid),
                  "--name", "CartonPick"]
        environment = dict(os.environ, DISPLAY=self._screen.display)

        def is_there():
            if self._process.poll() is not None:
                raise NotSeen(f"the program, which ended, saying: {self._process.stderr.read()}")
            return subprocess.run(search, env=environment, check=False,
                                  capture_output=True).returncode == 0

        wait_for(is_there, "the window of the program")

    def kill_after(self, seconds):
        """Kills the program after this number of seconds. Returns its exit code and its log."""
        timer = threading.Timer(seconds, self._process.send_signal, [signal.SIGKILL])
        timer.start()
        _, log = self._process.communicate()
        timer.join()
        return self._process.returncode, log
