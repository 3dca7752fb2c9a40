"""Kills the program at random moments of its work, one after the other, and looks at what is left.

Usage: python3 kill_worker.py --kills N --seed TEXT BIN, in a session of its own; BIN is the folder
of the programs. Writes a line of JSON for each kill, and one of counts at the end.
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

# Each gets the same share of the kills, which its variants share.
WORKS = [[PickingWork], [ReloadWork], [SendingWork],
         [NewStoreStartUp, ExistingStoreStartUp, OlderStoreStartUp]]
# How often it is measured how long a work takes, and how many of these count.
KILLS_A_MEASUREMENT, LATEST = 20, 3


def arguments():
    parser = argparse.ArgumentParser()
    parser.add_argument("bin")
    parser.add_argument("--kills", type=int, required=True)
    parser.add_argument("--seed", required=True)
    return parser.parse_args()


def own_output():
    """Standard output for this process alone; those that it starts write to standard error. So its
    reader sees the end of it when this process ends."""
    output = os.fdopen(os.dup(sys.stdout.fileno()), "w", buffering=1)
    os.dup2(sys.stderr.fileno(), sys.stdout.fileno())
    return output


def plan(kills, chance):
    """What to kill, one after the other."""
    variants = [itertools.cycle(works) for works in WORKS]
    works = [next(variants[number % len(WORKS)]) for number in range(kills)]
    chance.shuffle(works)
    return works


class Target:
    """A work, and how long it takes as things are."""

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
        """At a moment that is as likely as any other. Returns what there is to tell of it."""
        if self._kills % KILLS_A_MEASUREMENT == 0:
            self._seconds.append(self._finish())
        self._kills += 1
        duration = statistics.median(self._seconds)
        moment = chance.uniform(0, duration)
        attack = self._work.attack(moment)
        return dict(work=self.name, moment=moment, duration=duration, state=attack.state,
                    unfinished=attack.is_unfinished, wrong=attack.wrong)


def sends(order):
    """How many deliveries are sent at most."""
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
                return  # What should be there from now on is unknown.
        workplace.start_once(workplace.home)
        tell(output, counts=workplace.counts)


if __name__ == "__main__":
    main()
