"""The task of starting the program: without a store, with a store, and with an older store."""

import os
import shutil
import time

import store_contents
from older_store import make_older_store, migration_violations
from store_examination import IDLE, LOST, STORED, Attack, end_violations, examine


class StartUp:
    """A subclass provides the home folder, and checks the store afterwards."""

    rehearsals = 0

    def __init__(self, workplace, _chance):
        self.workplace = workplace

    def attack(self, moment=None):
        """Starts the program and kills it `moment` seconds later, or when its window is shown if
        `moment` is None. A second start must then show the window and leave a complete store.
        Returns an Attack."""
        home = self.make_home()
        since, began = time.time(), time.monotonic()
        program = self.workplace.start_unobserved(home)
        if moment is None:
            program.wait_for_window()
        seconds = time.monotonic() - began
        ended = end_violations(*program.kill_after(moment or 0))
        finding = examine(self.workplace.documents(home), since, self.violations)
        wrong = ended + finding.wrong or self._second_start(home, since)
        state = None if wrong else self.state(finding.contents)
        return Attack(seconds, state, finding.is_unfinished, wrong)

    def _second_start(self, home, since):
        program = self.workplace.start_unobserved(home)
        program.wait_for_window()
        ended = end_violations(*program.kill_after(0))
        return ended + examine(self.workplace.documents(home), since, self.whole_violations).wrong


class ExistingStoreStartUp(StartUp):
    """A start with a current store, which it does not change."""

    name = "start-up, existing store"

    def make_home(self):
        return self.workplace.home

    def violations(self, contents):
        return self.workplace.expected.violations(contents)

    whole_violations = violations

    def state(self, _contents):
        return IDLE


class FirstStartUp(StartUp):
    """A start that creates or migrates the store completely, or leaves it unchanged."""

    def __init__(self, workplace, chance):
        super().__init__(workplace, chance)
        home = self.make_home()
        documents = workplace.documents(home)
        self._before = store_contents.read(documents)
        workplace.start_once(home)
        self._whole = store_contents.read(documents)
        if missing := migration_violations(self._before, self._whole):
            raise AssertionError(missing)

    def make_home(self):
        home = os.path.join(self.workplace.folder, "first")
        shutil.rmtree(home, ignore_errors=True)
        os.makedirs(self.workplace.documents(home))
        return home

    def violations(self, contents):
        return [] if contents == self._before else self.whole_violations(contents)

    def whole_violations(self, contents):
        return [] if contents == self._whole else [f"the store is half made: {contents.schema}"]

    def state(self, contents):
        return LOST if contents == self._before else STORED


class NewStoreStartUp(FirstStartUp):
    name = "start-up, new store"


class OlderStoreStartUp(FirstStartUp):
    name = "start-up, older store"

    def __init__(self, workplace, chance):
        self._original = os.path.join(workplace.folder, "older")
        os.makedirs(self._original)
        make_older_store(self._original)
        super().__init__(workplace, chance)

    def make_home(self):
        home = super().make_home()
        store_contents.copy(self._original, self.workplace.documents(home))
        return home
