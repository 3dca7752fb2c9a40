"""A task on the screen during which the program is killed."""

import contextlib
import time

from store_examination import IDLE, LOST, STORED, Attack, end_violations, examine
from quick_tablet import Killed


class ScreenWork:
    """A subclass implements the task. It reports each change to the expected store: before it
    confirms the change on the screen, and after the screen says that the change is saved."""

    # The first run finds the positions of the controls.
    rehearsals = 1

    def __init__(self, workplace, chance):
        self.workplace = workplace
        self.expected = workplace.expected
        self.chance = chance

    def service(self):
        """Returns the order service for the task."""
        return self.workplace.services[0]

    def prepare(self, tablet):
        """Prepares the task. The program is not killed during the preparation."""
        raise NotImplementedError

    def run(self, tablet):
        raise NotImplementedError

    def violations(self, contents):
        """Returns a list of messages about what is wrong with these contents."""
        return self.expected.violations(contents)

    def attack(self, moment=None):
        """Runs the task and kills the program `moment` seconds after the task begins, or at the end
        of the task if `moment` is None. Returns an Attack."""
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
