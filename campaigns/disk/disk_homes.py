"""The home folders that a campaign starts from: new, of an older model, and picked in before."""

import contextlib
import glob
import os
import shutil
import sqlite3

import store_contents
from promised_picking import DELIVERY, ORDER, PromisedPicking

_OLDER = """
CREATE TABLE Picking (doc TEXT, box TEXT, item TEXT, barcode TEXT, ordernum TEXT, orderqty INTEGER,
                      pickqty INTEGER, datepicked INTEGER, sent INTEGER);
"""
_PICKED_BEFORE = (DELIVERY, "C1", "A", "bA", ORDER, 5, 3, 1_700_000_000_000, 0)


def documents(home):
    return os.path.join(home, "Documents")


class StartingHome:
    """A home folder as it is before a run, and the schemas that runs may make of its store."""

    def __init__(self, name, worker, folder):
        """`folder` is the home; it is the one to copy from then on."""
        self.name = name
        self._folder = folder
        self._contents = store_contents.read(documents(folder))
        trial = folder + "-trial"
        shutil.copytree(folder, trial)
        self.trial = worker.run(trial, "--list")
        after = store_contents.read(documents(trial))
        self._models = {(contents.version, contents.schema) for contents in (self._contents, after)
                        if contents.version > 0}

    @contextlib.contextmanager
    def copy(self, folder, purpose):
        """A copy for that purpose, gone afterwards with all beside it whose names begin with its
        own."""
        path = os.path.join(folder, f"{self.name}-{purpose}".replace(" ", "-"))
        shutil.copytree(self._folder, path)
        try:
            yield path
        finally:
            for each in path, *glob.glob(glob.escape(path) + "-*"):
                shutil.rmtree(each, ignore_errors=True)

    def promised(self):
        return PromisedPicking(self._contents, self._models)

    @property
    def operations(self):
        """The kinds of the operations of a run on which nothing fails, in their order."""
        return [line.split(" ", 2)[2] for line in self.trial.said if line.startswith("operation ")]


def starting_homes(worker, folder):
    new, older = os.path.join(folder, "new"), os.path.join(folder, "older")
    for home in new, older:
        os.makedirs(documents(home))
    database = sqlite3.connect(os.path.join(documents(older), store_contents.NAME))
    with database:
        database.executescript(_OLDER)
        database.execute(f"INSERT INTO Picking VALUES ({', '.join('?' * len(_PICKED_BEFORE))})",
                         _PICKED_BEFORE)
    database.close()
    homes = [StartingHome("new", worker, new), StartingHome("older", worker, older)]
    return homes + [StartingHome("used", worker, new + "-trial")]
