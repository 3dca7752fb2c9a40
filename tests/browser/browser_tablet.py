"""A tablet whose screen is a page in a headless Chromium, served by scripts/serve-in-browser."""

import os
import signal
import subprocess

from chromium import Chromium
from selenium.webdriver.common.actions.action_builder import ActionBuilder
from selenium.webdriver.common.by import By
from tablet import Tablet, wait_for

HERE = os.path.dirname(os.path.abspath(__file__))
SERVE_IN_BROWSER = os.path.join(HERE, "..", "..", "scripts", "serve-in-browser")


def read(path):
    with open(path) as file:
        return file.read()


class ServedProgram:
    """scripts/serve-in-browser with the program, in a separate process session."""

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
        """Returns the ids of the session's running processes, or of those with this name."""
        found = []
        for process_id in filter(str.isdigit, os.listdir("/proc")):
            try:
                start, _, rest = read(f"/proc/{process_id}/stat").rpartition(")")
            except (FileNotFoundError, ProcessLookupError):
                continue  # The process has just ended.
            state, _, _, session = rest.split()[:4]
            if (int(session) == self._script.pid and state != "Z"
                    and name in (None, start.partition("(")[2])):
                found.append(int(process_id))
        return found

    def environment(self):
        """Returns the environment of the program, including its display."""
        variables = read(f"/proc/{self.program_id}/environ").rstrip("\0").split("\0")
        return dict(variable.split("=", 1) for variable in variables)

    def end_program(self):
        os.kill(self.program_id, signal.SIGTERM)
        self._script.wait()

    def close(self):
        self._script.terminate()
        self._script.wait()
        self._script.stdout.close()


class ProgramPage(Chromium):
    """A browser on the page that shows the program's window."""

    def open(self, address):
        """Opens the page and waits until it shows the program's screen."""
        # The size differs from the program's screen, so that the page must scale it.
        self.clear(1100, 720)
        self.driver.get(address)
        wait_for(lambda: self.message() == "", "the page to show the program's screen")

    def message(self):
        return self.driver.find_element(By.ID, "message").get_property("textContent")

    def click_screen(self, x, y):
        """Clicks the point (x, y) of the program's screen."""
        screen = self._screen()
        place = screen.rect
        scale = place["width"] / screen.get_property("width")
        self._click(place["x"] + x * scale, place["y"] + y * scale)

    def click_beside_screen(self):
        self._click(1, 1)

    def save_picture(self, path):
        """Saves a picture of the program's screen, at the size shown on the page."""
        self._screen().screenshot(path)

    def _screen(self):
        return self.driver.find_element(By.CSS_SELECTOR, "#screen canvas")

    def _click(self, x, y):
        actions = ActionBuilder(self.driver, duration=0)
        actions.pointer_action.move_to_location(round(x), round(y)).click()
        actions.perform()


class BrowserTablet(Tablet):
    """A served program that is used only through its page."""

    def __init__(self, served, page):
        self._page = page
        self._page.open(served.address)
        super().__init__(served.program_id)

    def click(self, x, y):
        self._page.click_screen(x, y)

    def type(self, text):
        self._page.type(text)

    def press(self, key):
        self._page.press(key)
