"""A tablet for end-to-end runs: a screen, the program, an input driver and a screen reader.

The screen is a separate X server (Xvfb). xdotool sends real pointer and key events. AT-SPI finds
controls by role and name. Must run in a separate session (own-session). A program with another
screen or input driver is another subclass of Tablet.
"""

import os
import signal
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

TIMEOUT_SECONDS = 60
# What has just appeared takes no touch for 0.4 seconds.
QUIET_SECONDS = 0.5


class NotSeen(AssertionError):
    """Something did not appear in time."""


def wait_for(look, what):
    """Calls `look` until it returns a truthy value, and returns that value. Raises NotSeen after
    TIMEOUT_SECONDS."""
    deadline = time.monotonic() + TIMEOUT_SECONDS
    while True:
        try:
            seen = look()
        except GLib.Error:
            seen = None  # The tree changed while `look` walked it.
        if seen:
            return seen
        if time.monotonic() > deadline:
            raise NotSeen(what)
        time.sleep(0.05)


class Screen:
    """An X server with one screen of this size in pixels. It exits with this process, but keeps
    running when its last client disconnects."""

    def __init__(self, width, height):
        self.width, self.height = width, height
        read_end, write_end = os.pipe()
        self._server = subprocess.Popen(
            ["setpriv", "--pdeathsig", "TERM", "--", "Xvfb", "-displayfd", str(write_end),
             "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.display = ":" + pipe.readline().strip()

    def run(self, *command):
        environment = dict(os.environ, DISPLAY=self.display)
        return subprocess.run(command, env=environment, check=True, capture_output=True, text=True)

    def save_picture(self, path):
        self.run("import", "-window", "root", path)

    def close(self):
        self._server.terminate()
        self._server.wait()


class OrderService:
    """The order service as a process, on a free loopback port."""

    def __init__(self, executable, *options):
        self._process = subprocess.Popen([executable, "--port", "0", *options],
                                         stdout=subprocess.PIPE, text=True)
        self.host = "127.0.0.1:" + self._process.stdout.readline().strip()

    def close(self):
        self._process.terminate()
        self._process.wait()
        self._process.stdout.close()


class Tablet:
    """The program with this process id, used through AT-SPI and an input driver.

    A subclass is the input driver: it implements click(x, y), type(text) and press(key).
    """

    def __init__(self, process_id):
        self._application = wait_for(lambda: self._find_application(process_id),
                                     "the program to appear")

    @staticmethod
    def _find_application(process_id):
        desktop = Atspi.get_desktop(0)
        # The cached list of applications may be out of date.
        desktop.clear_cache()
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == process_id:
                return application
        return None

    def _nodes(self):
        self._application.clear_cache()
        waiting = [self._application]
        while waiting:
            node = waiting.pop()
            yield node
            children = [node.get_child_at_index(i) for i in range(node.get_child_count())]
            waiting.extend(child for child in reversed(children) if child)

    def showing(self):
        """Returns all nodes on the screen, the topmost last."""
        return (node for node in self._nodes()
                if node.get_state_set().contains(Atspi.StateType.SHOWING))

    def seen(self, role=None, name=None, description=None):
        """Returns the topmost node on the screen with this role, name and description, or None.
        An argument that is None matches everything."""
        found = None
        for node in self.showing():
            if ((role is None or node.get_role_name() == role)
                    and (name is None or node.get_name() == name)
                    and (description is None or node.get_description() == description)):
                found = node
        return found

    def find(self, role=None, name=None, description=None):
        return self._wait_for(lambda: self.seen(role, name, description),
                              f"{role} {name or description} to be on the screen")

    def _wait_for(self, look, what):
        try:
            return wait_for(look, what)
        except NotSeen as not_seen:
            raise NotSeen(f"{not_seen}, where there is: {self.description()}") from None

    def description(self):
        """Returns the roles and names of all nodes on the screen."""
        return "; ".join(f"{node.get_role_name()} {node.get_name()}" for node in self.showing())

    def expect_value(self, caption, value):
        """Waits until the node with this caption as its description has the name `value`."""
        self._wait_for(lambda: self.seen(None, value, caption), f"{caption} to be {value}")

    def expect_gone(self, role=None, name=None):
        self._wait_for(lambda: self.seen(role, name) is None, f"{role} {name} to be gone")

    def names(self, role, part):
        """Returns the names of all nodes on the screen with this role whose names contain
        `part`."""
        return [node.get_name() for node in self.showing()
                if node.get_role_name() == role and part in node.get_name()]

    def wait_until_still(self, role, name):
        """Waits until the node with this role and name stops moving, and returns its centre."""
        def resting_place():
            place = self._place(role, name)
            time.sleep(0.05)
            return place if place and place == self._place(role, name) else None

        return self._wait_for(resting_place, f"{role} {name} to stand still")

    def touch(self, role, name):
        place = self.wait_until_still(role, name)
        time.sleep(QUIET_SECONDS)
        self.click(*place)

    def _place(self, role, name):
        node = self.seen(role, name)
        if node is None:
            return None
        box = node.get_extents(Atspi.CoordType.SCREEN)
        return box.x + box.width // 2, box.y + box.height // 2

    def expect_focus_in(self, name):
        def has_focus():
            node = self.seen("text", name)
            return node and node.get_state_set().contains(Atspi.StateType.FOCUSED)

        self._wait_for(has_focus, f"the focus to be in {name}")

    def answer_alert(self, title, button):
        self.find("dialog", title)
        self.touch("push button", button)
        self.expect_gone("dialog", title)


class Program(Tablet):
    """The program as a process, on a screen."""

    def __init__(self, screen, executable, *options):
        self._screen = screen
        environment = dict(os.environ, DISPLAY=screen.display, QT_QPA_PLATFORM="xcb",
                           QT_QUICK_BACKEND="software", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        self._process = subprocess.Popen([executable, *options], env=environment,
                                         stderr=subprocess.PIPE, text=True)
        try:
            super().__init__(self._process.pid)
        except NotSeen:
            self.kill()
            raise NotSeen(f"the program to appear, which said: {self.log}") from None
        window = screen.run("xdotool", "search", "--sync", "--onlyvisible", "--name",
                            "CartonPick").stdout.split()[0]
        screen.run("xdotool", "windowsize", "--sync", window, str(screen.width),
                   str(screen.height))
        screen.run("xdotool", "windowmove", window, "0", "0")
        screen.run("xdotool", "windowfocus", "--sync", window)

    def click(self, x, y):
        self._screen.run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def type(self, text):
        self._screen.run("xdotool", "type", "--delay", "1", text)

    def press(self, key):
        self._screen.run("xdotool", "key", key)

    def set_disk_full(self, is_full):
        """While the disk is full, the program can write to no file. It must ignore SIGXFSZ."""
        limit = "0" if is_full else "unlimited"
        subprocess.run(["prlimit", f"--pid={self._process.pid}", f"--fsize={limit}:"], check=True)

    def kill(self):
        """Kills the program at once, as an empty battery would."""
        self._process.send_signal(signal.SIGKILL)
        self._end()

    def close(self):
        self._process.terminate()
        self._end()

    def _end(self):
        self._process.wait()
        self.log = self._process.stderr.read()
        self._process.stderr.close()
