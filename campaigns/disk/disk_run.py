"""A run of disk_worker and its outcome."""

import os
import signal
import subprocess

import store_contents
from owned_process import start_owned

TIMEOUT_SECONDS = 300
NOTHING, UNREAD, ENDED = "nothing noticed", "not read, left undone", "not saved, ended"
OUTCOMES = [NOTHING, UNREAD, ENDED]

_SHELL_SIGNALS = 128


class Worker:
    """The worker program. Its temporary files are in `scratch`."""

    def __init__(self, executable, scratch):
        self._executable = executable
        self._scratch = scratch

    def run(self, home, *options, around=()):
        """Runs the worker until it ends, and returns a Run. `around` is a command prefix."""
        environment = dict(os.environ, TMPDIR=self._scratch, TZ="Europe/Athens",
                           LC_ALL="C.UTF-8")
        # Python ignores SIGXFSZ. The worker inherits this, so it gets an error instead of a signal.
        process = start_owned([*around, self._executable, "--home", home, *options], "KILL",
                              env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True, encoding="utf-8", errors="replace",
                              restore_signals=False)
        try:
            said, log = process.communicate(timeout=TIMEOUT_SECONDS)
        finally:
            process.kill()
        return Run(process.returncode, said.splitlines(), log.splitlines())


class Run:
    def __init__(self, code, said, log):
        self._code = code
        self.said = said
        self._log = log

    @property
    def fault(self):
        """The number and kind of the first failed operation, or None."""
        return next((line.split(" ", 2)[1:] for line in self.said if line.startswith("fault ")),
                    None)

    @property
    def has_ended_by_itself(self):
        return self._code in (-signal.SIGABRT, _SHELL_SIGNALS + signal.SIGABRT)

    def replay(self, promised, at_power_loss=None):
        """Passes the lines of the run to `promised`. For each power loss, calls `at_power_loss`
        with the folder of the resulting files."""
        for line in self.said:
            if at_power_loss and line.startswith("power-loss "):
                at_power_loss(line.removeprefix("power-loss "))
            else:
                promised.take(line)

    def outcome(self, promised):
        """Returns one of OUTCOMES, and a list of messages about what is wrong. The run must have
        been replayed to `promised`."""
        unresolved = [line for line in self._log if line.startswith("Unresolved error ")]
        wrong = list(promised.wrong)
        if self.has_ended_by_itself:
            if len(unresolved) != 1 or unresolved != self._log[-1:]:
                wrong.append(f"it ended, saying {self._log[-3:]}")
            return ENDED, wrong
        if self._code != 0 or self.said[-1:] != ["end"] or unresolved:
            wrong.append(f"it came to an end with {self._code}, saying {self._log[-3:]}")
        is_unread = any(line.startswith("Fetch failed: ") for line in self._log)
        if promised.undone and not is_unread:
            wrong.append("something was left undone without a word")
        return (UNREAD if is_unread else NOTHING), wrong


def contents_violations(promised, folder):
    """Recovers the store in the folder with plain SQLite, and returns a list of messages about what
    is wrong."""
    try:
        return promised.violations(store_contents.read(folder))
    except store_contents.BrokenStore as error:
        return [f"the store is broken: {error}"]
