"""Attacks on the disk below disk_worker. Each is judged by what plain SQLite finds afterwards."""

import collections
import os
import shutil

import store_contents
from disk_homes import documents
from disk_run import contents_violations

# `what` it is counted as; `again` is what to do the same again with.
Attack = collections.namedtuple("Attack", "what outcome wrong again")

FAULTS = ["once", "for-good", "full"]
# So that the log goes into its file several times in a run, not only at its end.
_OFTEN = ["--pages-between-checkpoints", "8"]


class Attacks:
    """Each in a folder of its own below `folder`."""

    def __init__(self, worker, folder):
        self._worker = worker
        self._folder = folder

    def fault(self, start, number, fault):
        """The operation of that number fails."""
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
        """A run without faults, in which the power is lost before one of `chance` operations. A
        list of attacks."""
        options = ["--seed", str(seed), "--chance", str(chance), *more, *_OFTEN[:2 * (seed % 2)]]
        with start.copy(self._folder, f"power-{seed}") as home:
            promised = start.promised()
            run = self._worker.run(home, "--power-losses", home + "-lost", *options)
            attacks = self._judge_losses(run, promised, start, options)
            outcome, wrong = run.outcome(promised)
            wrong = wrong + contents_violations(promised, documents(home))
        return attacks + [Attack("run", outcome, wrong, f"{start.name}: {' '.join(options)}")]

    def restart(self, start, number, seed, chance):
        """The synchronisation of that number fails. The next program shows what can be seen of the
        store, goes on, and the power is lost. A list of attacks; empty if the program did not end
        by the failure."""
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
    """What was promised to a picking whose next program has been started: from its first action on
    it is promised what that program has read."""

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
