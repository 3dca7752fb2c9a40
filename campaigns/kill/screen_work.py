"""Work at the screen that can be killed."""

import contextlib
import time

from store_examination import IDLE, LOST, STORED, Attack, end_violations, examine
from quick_tablet import Killed


class ScreenWork:
    """A subclass says what is done. It tells the workplace's expected store of each change before
    it is confirmed at the screen, and once the screen says that it is on disk."""

    # The first time finds out where things are.
    rehearsals = 1

    def __init__(self, workplace, chance):
        self.workplace = workplace
        self.expected = workplace.expected
        self.chance = chance

    def service(self):
        """The order service to work with."""
        return self.workplace.services[0]

    def prepare(self, tablet):
        """What comes before the work; no kill falls into it."""
        raise NotImplementedError

    def run(self, tablet):
        raise NotImplementedError

    def violations(self, contents):
        """What is wrong, beside the expected store, with these contents."""
        return self.expected.violations(contents)

    def attack(self, moment=None):
        """Does the work, and kills the program so many seconds after its beginning; at its end if
        nothing is given."""
        since = time.time()
        tablet = self.workplace.start_tablet(self.service())
        self.prepare(tablet)
        began = time.monotonic()
        if moment is not None:
            tablet.kill_after(moment)
        with contextlib.suppress(Killed):
            self.run(tablet)
        seconds = time.monotonic() - began
        if moment is None:
            tablet.kill_after(0)
        ended = end_violations(tablet.wait_for_kill(), tablet.log)
        finding = examine(self.workplace.documents(self.workplace.home), since,
                          self.violations)
        wrong = ended + finding.wrong
        state = None if wrong else self._state(finding.contents)
        if not wrong:
            self.expected.settle(finding.contents)
        return Attack(seconds, state, finding.is_unfinished, wrong)

    def _state(self, contents):
        if not self.expected.is_changing:
            return IDLE
        return STORED if self.expected.is_changed(contents) else LOST
