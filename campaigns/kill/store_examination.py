"""Examines the store of a killed program."""

import collections
import os
import signal
import sqlite3
import tempfile

import store_contents
from unfinished_transaction import is_unfinished

# `seconds` is how long the task ran; `state` is the outcome of the unfinished change.
Attack = collections.namedtuple("Attack", "seconds state is_unfinished wrong")
IDLE, LOST, STORED = "nothing under way", "not on disk", "on disk"

Finding = collections.namedtuple("Finding", "contents is_unfinished wrong")


def examine(documents, since, violations):
    """Examines a copy of the store in the folder `documents`, so that the next program still has
    to recover the original.

    `since` is the time at which the killed program was started, `violations` a function that
    returns messages about wrong contents. If something is wrong, the store is kept in a temporary
    folder.
    """
    with tempfile.TemporaryDirectory() as folder:
        store_contents.copy(documents, folder)
        was_unfinished = False
        try:
            was_unfinished = is_unfinished(os.path.join(folder, store_contents.NAME), since)
            contents = store_contents.read(folder)
            wrong = violations(contents)
        except (store_contents.BrokenStore, sqlite3.DatabaseError) as error:
            contents, wrong = None, [f"the store is broken: {error}"]
    if wrong:
        kept = tempfile.mkdtemp(prefix="cartonpick-killed-")
        store_contents.copy(documents, kept)
        wrong = [*wrong, f"the store is kept in {kept}"]
    return Finding(contents, was_unfinished, wrong)


def end_violations(exit_code, log):
    """Returns a message if the program had ended before it was killed."""
    return [] if exit_code == -signal.SIGKILL else [f"it ended with {exit_code}, saying: {log}"]
