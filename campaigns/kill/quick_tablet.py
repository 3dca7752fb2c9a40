"""A tablet for many short runs: looks up each control only once, and waits for events."""

import re
import signal
import threading
import time

from tablet import QUIET_SECONDS, TIMEOUT_SECONDS, Atspi, NotSeen, Program, wait_for


class Killed(Exception):
    """The program was killed."""


class QuickTablet(Program):
    """The program on a screen. It ends with this process.

    `places` caches the positions of controls across programs. A touch therefore does not wait for
    its control; the caller must wait for an event first.
    """

    def __init__(self, listener, places, screen, executable, *options):
        self._listener = listener
        self._places = places
        self._notifications = None
        self._kill = None
        super().__init__(screen, "setpriv", "--pdeathsig", "KILL", "--", executable, *options)
        self._name_on_bus = self._application.app.bus_name

    # Input.

    def knows(self, role, name):
        return (role, name) in self._places

    def remember(self, role, name, place=None):
        """Returns the position of a control, which is looked up once and then cached. The key is
        `place`, or the role and the name."""
        key = (role, name) if place is None else place
        if key not in self._places:
            self._places[key] = self.wait_until_still(role, name)
        return self._places[key]

    def touch(self, role, name, place=None):
        self._click(self.remember(role, name, place))

    def touch_buttons(self, names):
        """Touches push buttons in this order."""
        self._click(*(self.remember("push button", name) for name in names))

    def _click(self, *places):
        time.sleep(QUIET_SECONDS)
        self._screen.run("xdotool", *(word for x, y in places for word in
                                      ("mousemove", str(x), str(y), "click", "--delay", "1", "1")))

    def scan(self, code):
        self._screen.run("xdotool", "type", "--delay", "1", "--args", "1", code, "key", "Return")

    # Navigation.

    def enter_picking(self):
        """Opens the picking screen. Returns the field that has the focus afterwards."""
        self.touch("push button", "Picking")
        return self.expect_focused("text", "Delivery number")

    def start_picking(self, delivery):
        field = self.enter_picking()
        self.type(delivery)
        # Keys pass through the accessibility bus, so a touch could arrive before them.
        wait_for(lambda: Atspi.Text.get_text(field, 0, -1) == delivery, f"{delivery} to be typed")
        self.touch("push button", "Search")
        self.expect_showing("label", "Customer: .*")
        self.touch("push button", "Start Picking")
        self.expect_focused("text", "Box")

    # Events.

    def expect_showing(self, role, name):
        """Waits until a control with this role, and a name that matches the pattern, is shown."""
        self._expect("showing", role, name)

    def expect_focused(self, role, name):
        """Waits until such a control has the focus, and returns the control."""
        return self._expect("focused", role, name)

    def _expect(self, event, role, name):
        deadline = time.monotonic() + TIMEOUT_SECONDS
        while True:
            has_ended = self._process.poll() is not None
            while found := self._listener.next_of(self._name_on_bus):
                if found.event == event and self._is(found, role, name):
                    return found.source
            if has_ended:
                raise Killed
            if time.monotonic() > deadline:
                raise NotSeen(f"{role} {name} to be {event}, where there is: {self.description()}")
            time.sleep(0.001)

    def _is(self, found, role, name):
        if found.role is None:
            # The program has ended, so only the path of the object is known.
            return role == "notification" and found.source.path == self._notifications
        if found.role == "notification":
            self._notifications = found.source.path
        return found.role == role and re.fullmatch(name, found.name) is not None

    # Kills.

    def kill_after(self, seconds):
        """Kills the program after this number of seconds, even during a wait."""
        self._kill = threading.Timer(seconds, self._process.send_signal, [signal.SIGKILL])
        self._kill.start()

    def wait_for_kill(self):
        """Waits until the program is killed, and returns its exit code."""
        self._kill.join()
        self._end()
        return self._process.returncode
