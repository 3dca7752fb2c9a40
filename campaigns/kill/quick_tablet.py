"""A tablet for many short runs: places are looked for once, and what is waited for is heard."""

import re
import signal
import threading
import time

from tablet import TIMEOUT_SECONDS, Atspi, NotSeen, Program, wait_for


class Killed(Exception):
    """The program was killed."""


class QuickTablet(Program):
    """The program on a screen. `places` remembers, from one program to the next, where things are
    on it; so a touch has to wait, by what is heard, until that is there. Ends with this process."""

    def __init__(self, listener, places, screen, executable, *options):
        self._listener = listener
        self._places = places
        self._notifications = None
        self._kill = None
        super().__init__(screen, "setpriv", "--pdeathsig", "KILL", "--", executable, *options)
        self._name_on_bus = self._application.app.bus_name

    # The hand.

    def knows(self, role, name):
        return (role, name) in self._places

    def remember(self, role, name, place=None):
        """Looks where that is, unless it is known: by role and name, or as `place`."""
        key = (role, name) if place is None else place
        if key not in self._places:
            self._places[key] = self.wait_until_still(role, name)
        return self._places[key]

    def touch(self, role, name, place=None):
        self._click(self.remember(role, name, place))

    def touch_buttons(self, names):
        """One after the other."""
        self._click(*(self.remember("push button", name) for name in names))

    def _click(self, *places):
        self._screen.run("xdotool", *(word for x, y in places for word in
                                      ("mousemove", str(x), str(y), "click", "--delay", "1", "1")))

    def scan(self, code):
        self._screen.run("xdotool", "type", "--delay", "1", "--args", "1", code, "key", "Return")

    # Ways.

    def enter_picking(self):
        """Returns the field that has the keyboard then."""
        self.touch("push button", "Picking")
        return self.expect_focused("text", "Delivery number")

    def start_picking(self, delivery):
        field = self.enter_picking()
        self.type(delivery)
        # A key takes a turn to the screen reader, on which a touch would overtake it.
        wait_for(lambda: Atspi.Text.get_text(field, 0, -1) == delivery, f"{delivery} to be typed")
        self.touch("push button", "Search")
        self.expect_showing("label", "Customer: .*")
        self.touch("push button", "Start Picking")
        self.expect_focused("text", "Box")

    # The ear.

    def expect_showing(self, role, name):
        """Waits until something with that role, and a name that matches the pattern, comes into
        sight."""
        self._expect("showing", role, name)

    def expect_focused(self, role, name):
        """The same for the keyboard. Returns what has it."""
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
            # Who is too dead to say its name is known by the place that it spoke from before.
            return role == "notification" and found.source.path == self._notifications
        if found.role == "notification":
            self._notifications = found.source.path
        return found.role == role and re.fullmatch(name, found.name) is not None

    # The end.

    def kill_after(self, seconds):
        """The program will be killed then, whatever is waited for meanwhile."""
        self._kill = threading.Timer(seconds, self._process.send_signal, [signal.SIGKILL])
        self._kill.start()

    def wait_for_kill(self):
        """Returns how the program ended."""
        self._kill.join()
        self._end()
        return self._process.returncode
