"""The home folders that runs start with: new, with an older store, and used."""

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
    """A home folder before a run, and the schemas that its store can have after a run."""

    def __init__(self, name, worker, folder):
        """`folder` is the home folder. It must not change afterwards, because runs get copies."""
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
        """A context manager with a copy of the home. `purpose` is part of its name. On exit, the
        copy and all paths that start with its name and "-" are removed."""
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
        """The kinds of operations in a run without faults, in order."""
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
