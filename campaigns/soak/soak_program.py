"""The program on a screen, without an accessibility client."""

import subprocess
import tempfile

from owned_process import start_owned
from soak_screen import TIMEOUT_SECONDS, wait_for
from soak_window import close_window

# Qt Multimedia logs this on a machine without a sound server.
EXPECTED = "PulseAudioService: "


class SoakedProgram:
    """A context manager: the program's window fills the screen."""

    def __init__(self, screen, executable, *options):
        self._screen = screen
        self._command = [executable, *options]
        self._log = tempfile.TemporaryFile("w+")
        self._process = None

    def __enter__(self):
        environment = dict(self._screen.environment, QT_QPA_PLATFORM="xcb",
                           QT_QUICK_BACKEND="software")
        self._process = start_owned(self._command, "KILL", env=environment, stderr=self._log)
        wait_for(lambda: not self.is_running or self._windows(), "the window of the program")
        if not self.is_running:
            raise RuntimeError(f"the program ended: {self.log()}")
        window, = self._windows()
        screen = self._screen
        screen.run("xdotool", "windowsize", window, str(screen.width), str(screen.height))
        screen.run("xdotool", "windowmove", window, "0", "0")
        screen.run("xdotool", "windowfocus", "--sync", window)
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()
        self._log.close()

    def _windows(self):
        search = ["xdotool", "search", "--onlyvisible", "--name", "CartonPick"]
        return subprocess.run(search, env=self._screen.environment, check=False,
                              capture_output=True, text=True).stdout.split()

    @property
    def process_id(self):
        return self._process.pid

    @property
    def is_running(self):
        return self._process.poll() is None

    def log(self):
        """Returns the last 4000 characters of its log, without expected lines."""
        self._log.seek(0)
        lines = (line for line in self._log if line.strip() and not line.startswith(EXPECTED))
        return "".join(lines)[-4000:]

    def end(self):
        """Closes the window and waits for the program to end. Returns a list of messages about its
        exit code and its log."""
        wrong = []
        if self.is_running:
            window, = self._windows()
            close_window(self._screen.display, int(window))
            self._process.wait(TIMEOUT_SECONDS)
        if self._process.returncode != 0:
            wrong.append(f"the program ended with {self._process.returncode}")
        if said := self.log():
            wrong.append(f"the program said: {said}")
        return wrong
