"""Disk faults during runs of disk_worker. Plain SQLite reads the store for the checks."""

import collections
import os
import shutil

import store_contents
from disk_homes import documents
from disk_run import contents_violations

# `what` is the kind of the attack; `again` has the options that repeat it.
Attack = collections.namedtuple("Attack", "what outcome wrong again")

FAULTS = ["once", "for-good", "full"]
# Causes several checkpoints in a run, not only one at its end.
_OFTEN = ["--pages-between-checkpoints", "8"]


class Attacks:
    """Runs each attack in a separate folder below `folder`."""

    def __init__(self, worker, folder):
        self._worker = worker
        self._folder = folder

    def fault(self, start, number, fault):
        """Lets the operation with this number fail, and returns an Attack."""
        options = ["--fail-at", str(number), "--fault", fault]
        with start.copy(self._folder, f"fault-{number}-{fault}") as home:
            promised = start.promised()
            run = self._worker.run(home, *options)
            run.replay(promised)
            outcome, wrong = run.outcome(promised)
            wrong = wrong + contents_violations(promised, documents(home))
        kind = run.fault[1] if run.fault else "nothing"
        return Attack(kind, outcome, wrong, f"{start.name}: {' '.join(options)}")

    def power_losses(self, start, seed, chance, *more):
        """Loses power at random during a run without other faults: before one in `chance`
        operations on average. Returns a list of attacks."""
        options = ["--seed", str(seed), "--chance", str(chance), *more, *_OFTEN[:2 * (seed % 2)]]
        with start.copy(self._folder, f"power-{seed}") as home:
            promised = start.promised()
            run = self._worker.run(home, "--power-losses", home + "-lost", *options)
            attacks = self._judge_losses(run, promised, start, options)
            outcome, wrong = run.outcome(promised)
            wrong = wrong + contents_violations(promised, documents(home))
        return attacks + [Attack("run", outcome, wrong, f"{start.name}: {' '.join(options)}")]

    def restart(self, start, number, seed, chance):
        """Lets the synchronisation with this number fail, starts the program again on the visible
        files, and loses power during the second run. Returns a list of attacks, which is empty if
        the program did not abort."""
        with start.copy(self._folder, f"restart-{number}-{seed}") as home:
            promised = start.promised()
            disk = home + "-disk"
            os.makedirs(disk)
            options = ["--fail-at", str(number), "--fault", "once", "--disk-at-fault", disk]
            first = self._worker.run(home, *options)
            first.replay(promised)
            if not first.has_ended_by_itself:
                return []
            seen = home + "-seen"
            shutil.copytree(documents(home), seen)
            settled = store_contents.read(seen)
            options = ["--seed", str(seed), "--chance", str(chance), "--disk", disk]
            second = self._worker.run(home, "--power-losses", home + "-lost", *options)
            return self._judge_losses(second, _Restarted(promised, settled), start,
                                      ["--fail-at", str(number), "and then", *options])

    def _judge_losses(self, run, promised, start, options):
        attacks = []

        def judge(folder):
            wrong = contents_violations(promised, folder)
            shutil.rmtree(folder)
            attacks.append(Attack("power", None, wrong, f"{start.name}: {' '.join(options)}, "
                                                        f"loss {os.path.basename(folder)}"))

        run.replay(promised, judge)
        return attacks


class _Restarted:
    """The expectations after a restart. From the first action of the restarted program on, they
    start from the contents that it has read."""

    def __init__(self, promised, settled):
        self._promised = promised
        self._settled = settled

    def take(self, line):
        if self._settled and line.startswith("try "):
            self._promised.settle(self._settled)
            self._settled = None
        self._promised.take(line)

    def violations(self, contents):
        return self._promised.violations(contents)
