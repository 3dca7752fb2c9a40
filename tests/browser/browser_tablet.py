"""A tablet whose screen is a page in a headless Chromium, as scripts/serve-in-browser serves it."""

import os
import signal
import subprocess

from hand import Hand
from tablet import Tablet, wait_for

HERE = os.path.dirname(os.path.abspath(__file__))
SERVE_IN_BROWSER = os.path.join(HERE, "..", "..", "scripts", "serve-in-browser")


def read(path):
    with open(path) as file:
        return file.read()


class ServedProgram:
    """scripts/serve-in-browser with the program, in a process session of its own."""

    def __init__(self, temporary_folder, executable, *options):
        environment = dict(os.environ, TMPDIR=temporary_folder,
                           QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        environment.pop("DISPLAY", None)
        self._script = subprocess.Popen(
            [SERVE_IN_BROWSER, executable, *options], env=environment, text=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, start_new_session=True)
        self.address = next(line.strip() for line in self._script.stdout if "http://" in line)
        name = os.path.basename(executable)
        self.program_id = wait_for(lambda: self.processes(name), f"{name} to run")[0]

    def processes(self, name=None):
        """The ids of the session's processes, or of those with that name, that have not ended."""
        found = []
        for process_id in filter(str.isdigit, os.listdir("/proc")):
            try:
                start, _, rest = read(f"/proc/{process_id}/stat").rpartition(")")
            except (FileNotFoundError, ProcessLookupError):
                continue  # It has just ended.
            state, _, _, session = rest.split()[:4]
            if (int(session) == self._script.pid and state != "Z"
                    and name in (None, start.partition("(")[2])):
                found.append(int(process_id))
        return found

    def environment(self):
        """The environment of the program, its display included."""
        variables = read(f"/proc/{self.program_id}/environ").rstrip("\0").split("\0")
        return dict(variable.split("=", 1) for variable in variables)

    def end_program(self):
        os.kill(self.program_id, signal.SIGTERM)
        self._script.wait()

    def close(self):
        self._script.terminate()
        self._script.wait()
        self._script.stdout.close()


class BrowserTablet(Tablet):
    """A served program, and a hand that has nothing of it but the page."""

    def __init__(self, served):
        self.hand = Hand(os.path.join(HERE, "hand.mjs"), served.address)
        self.hand.do("waitForScreen")
        super().__init__(served.program_id)

    def click(self, x, y):
        self.hand.do("click", x, y)

    def type(self, text):
        self.hand.do("type", text)

    def press(self, key):
        self.hand.do("press", key)

    def close(self):
        self.hand.close()
