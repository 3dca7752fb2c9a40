"""A tablet for whole runs: a screen, the program on it, a hand that touches and types, and an eye.

The screen is an X server of its own (Xvfb); the hand sends real pointer and key events (xdotool);
the eye is a screen reader's (AT-SPI), so it finds things by role and name. Has to run inside a
session of its own (own-session). A program on another screen, under another hand, is another kind
of Tablet.
"""

import os
import signal
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

TIMEOUT_SECONDS = 60


class NotSeen(AssertionError):
    """What was waited for did not come."""


def wait_for(look, what):
    """Looks until there is something to see, and returns it."""
    deadline = time.monotonic() + TIMEOUT_SECONDS
    while True:
        try:
            seen = look()
        except GLib.Error:
            seen = None  # The tree changed while it was walked.
        if seen:
            return seen
        if time.monotonic() > deadline:
            raise NotSeen(what)
        time.sleep(0.05)


class Screen:
    """An X server with one screen of the given size. It ends with this process, and lasts when the
    last program on it has ended."""

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
    """The order service as a process of its own, on a free loopback port."""

    def __init__(self, executable, *options):
        self._process = subprocess.Popen([executable, "--port", "0", *options],
                                         stdout=subprocess.PIPE, text=True)
        self.host = "127.0.0.1:" + self._process.stdout.readline().strip()

    def close(self):
        self._process.terminate()
        self._process.wait()
        self._process.stdout.close()


class Tablet:
    """The program with that process id, as its screen reader and its user's hand know it.

    A subclass is the hand: it has click(x, y), type(text) and press(key).
    """

    def __init__(self, process_id):
        self._application = wait_for(lambda: self._find_application(process_id),
                                     "the program to appear")

    @staticmethod
    def _find_application(process_id):
        desktop = Atspi.get_desktop(0)
        # What the desktop said before may be what is remembered of it.
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
        """Everything that is on the screen, what is on top last."""
        return (node for node in self._nodes()
                if node.get_state_set().contains(Atspi.StateType.SHOWING))

    def seen(self, role=None, name=None, description=None):
        """What is on the screen with that role, name and description; the last one, which is the
        one on top, of several."""
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
        """Everything that is on the screen, in words."""
        return "; ".join(f"{node.get_role_name()} {node.get_name()}" for node in self.showing())

    def expect_value(self, caption, value):
        """Waits until the value with that caption is `value`."""
        self._wait_for(lambda: self.seen(None, value, caption), f"{caption} to be {value}")

    def expect_gone(self, role=None, name=None):
        self._wait_for(lambda: self.seen(role, name) is None, f"{role} {name} to be gone")

    def names(self, role, part):
        """The names, with that part in them, of all that has that role on the screen."""
        return [node.get_name() for node in self.showing()
                if node.get_role_name() == role and part in node.get_name()]

    def wait_until_still(self, role, name):
        """Waits until what has that role and name stands still, and returns its middle."""
        def resting_place():
            place = self._place(role, name)
            time.sleep(0.05)
            return place if place and place == self._place(role, name) else None

        return self._wait_for(resting_place, f"{role} {name} to stand still")

    def touch(self, role, name):
        self.click(*self.wait_until_still(role, name))

    def _place(self, role, name):
        node = self.seen(role, name)
        if node is None:
            return None
        box = node.get_extents(Atspi.CoordType.SCREEN)
        return box.x + box.width // 2, box.y + box.height // 2

    def expect_keyboard_in(self, name):
        def has_keyboard():
            node = self.seen("text", name)
            return node and node.get_state_set().contains(Atspi.StateType.FOCUSED)

        self._wait_for(has_keyboard, f"the keyboard to be in {name}")

    def answer_alert(self, title, button):
        self.find("dialog", title)
        self.touch("push button", button)
        self.expect_gone("dialog", title)


class Program(Tablet):
    """The program as a process of its own, on a screen."""

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

    def kill(self):
        """Ends the program at once, as a flat battery would."""
        self._process.send_signal(signal.SIGKILL)
        self._end()

    def close(self):
        self._process.terminate()
        self._end()

    def _end(self):
        self._process.wait()
        self.log = self._process.stderr.read()
        self._process.stderr.close()
