"""Kills the program repeatedly at random moments, and checks the store after each kill.

Usage: own-session python3 kill_worker.py --kills N --seed TEXT BIN

BIN is the folder with the programs. Prints a line of JSON for each kill, and a line with counts at
the end.
"""

import argparse
import collections
import itertools
import json
import math
import os
import random
import signal
import statistics
import sys

from picking_work import PickingWork
from reload_work import ReloadWork
from sending_work import SendingWork
from start_up import ExistingStoreStartUp, NewStoreStartUp, OlderStoreStartUp
from workplace import Workplace

# Each task gets the same number of kills, which its variants share.
WORKS = [[PickingWork], [ReloadWork], [SendingWork],
         [NewStoreStartUp, ExistingStoreStartUp, OlderStoreStartUp]]
# A task's duration is measured every KILLS_A_MEASUREMENT kills; the median of the last LATEST
# measurements is used.
KILLS_A_MEASUREMENT, LATEST = 20, 3


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("bin")
    parser.add_argument("--kills", type=int, required=True)
    parser.add_argument("--seed", required=True)
    return parser.parse_args()


def own_output():
    """Returns a private copy of standard output, and makes child processes write to standard error
    instead, so that the output is closed when this process ends, even if a child still runs."""
    output = os.fdopen(os.dup(sys.stdout.fileno()), "w", buffering=1)
    os.dup2(sys.stderr.fileno(), sys.stdout.fileno())
    return output


def plan(kills, chance):
    """Returns the tasks to kill, in random order."""
    variants = [itertools.cycle(works) for works in WORKS]
    works = [next(variants[number % len(WORKS)]) for number in range(kills)]
    chance.shuffle(works)
    return works


class Target:
    """A task and its measured duration."""

    def __init__(self, work):
        self.name = work.name
        self._work = work
        self._seconds = collections.deque(maxlen=LATEST)
        self._kills = 0
        for _ in range(work.rehearsals):
            self._finish()

    def _finish(self):
        attack = self._work.attack()
        if attack.wrong:
            raise AssertionError(f"{self.name}, killed at its end: {attack.wrong}")
        return attack.seconds

    def kill(self, chance):
        """Kills the program at a uniformly random moment of the task. Returns a report."""
        if self._kills % KILLS_A_MEASUREMENT == 0:
            self._seconds.append(self._finish())
        self._kills += 1
        duration = statistics.median(self._seconds)
        moment = chance.uniform(0, duration)
        attack = self._work.attack(moment)
        return dict(work=self.name, moment=moment, duration=duration, state=attack.state,
                    unfinished=attack.is_unfinished, wrong=attack.wrong)


def sends(order):
    """Returns the maximum number of deliveries that the tasks can send."""
    kills = order.count(SendingWork)
    return SendingWork.rehearsals + kills + math.ceil(kills / KILLS_A_MEASUREMENT)


def tell(output, **what):
    print(json.dumps(what), file=output)


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    output = own_output()
    chance = random.Random(options.seed)
    order = plan(options.kills, chance)
    with Workplace(options.bin, sends(order)) as workplace:
        targets = {Work: Target(Work(workplace, chance)) for Work in dict.fromkeys(order)}
        for Work in order:
            told = targets[Work].kill(chance)
            tell(output, **told)
            if told["wrong"]:
                return  # From now on, the expected contents are unknown.
        workplace.start_once(workplace.home)
        tell(output, counts=workplace.counts)


if __name__ == "__main__":
    main()
