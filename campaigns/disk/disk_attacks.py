"""Disk faults during runs of disk_worker. The store is checked with plain SQLite."""

import collections
import os
import shutil

import store_contents
from disk_homes import documents
from disk_run import contents_violations

# `what` is the kind of attack; `again` has the options that reproduce it.
Attack = collections.namedtuple("Attack", "what outcome wrong again")

FAULTS = ["once", "for-good", "full"]
# Causes several checkpoints in a run, not just one at its end.
_OFTEN = ["--pages-between-checkpoints", "8"]


class Attacks:
    """Runs each attack in a separate subfolder of `folder`."""

    def __init__(self, worker, folder):
        self._worker = worker
        self._folder = folder

    def fault(self, start, number, fault):
        """Makes the operation with this number fail. Returns an Attack."""
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
        """Simulates power losses during a run without other faults, on average before one in
        `chance` operations. Returns a list of attacks."""
        options = ["--seed", str(seed), "--chance", str(chance), *more, *_OFTEN[:2 * (seed % 2)]]
        with start.copy(self._folder, f"power-{seed}") as home:
            promised = start.promised()
            run = self._worker.run(home, "--power-losses", home + "-lost", *options)
            attacks = self._judge_losses(run, promised, start, options)
            outcome, wrong = run.outcome(promised)
            wrong = wrong + contents_violations(promised, documents(home))
        return attacks + [Attack("run", outcome, wrong, f"{start.name}: {' '.join(options)}")]

    def restart(self, start, number, seed, chance):
        """Makes the operation with this number, a sync, fail, restarts the program on the visible
        files, and simulates power losses during the second run. Returns a list of attacks, which is
        empty if the program did not abort."""
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
    """The expectations after a restart. From the restarted program's first action on, they are
    based on the contents that it has read."""

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
