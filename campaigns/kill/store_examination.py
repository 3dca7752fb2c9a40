"""Looks at a store as a killed program left it."""

import collections
import os
import signal
import sqlite3
import tempfile

import store_contents
from unfinished_transaction import is_unfinished

# `seconds` is for how long the program worked, `state` what became of the change under way.
Attack = collections.namedtuple("Attack", "seconds state is_unfinished wrong")
IDLE, LOST, STORED = "nothing under way", "not on disk", "on disk"

Finding = collections.namedtuple("Finding", "contents is_unfinished wrong")


def examine(documents, since, violations):
    """What `violations` says of the contents of the store in the folder, in which a program worked
    since that time. It is a copy that is recovered and read: the next program has to recover the
    store itself."""
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
    """A program that was killed had not ended before by itself."""
    return [] if exit_code == -signal.SIGKILL else [f"it ended with {exit_code}, saying: {log}"]
