"""Makes the program's disk fail in many ways, and checks that no data is lost.

Every operation of a fixed picking fails in turn; power is lost at random moments; a sync fails and
power is lost after the next start; the disk is full or write-protected, or a system call fails.
After each fault, plain SQLite must be able to read the store, which must have everything that was
confirmed, and an unconfirmed change completely or not at all. See docs/reliability.md.
"""

import argparse
import collections
import concurrent.futures
import itertools
import os
import signal
import sys
import tempfile

from disk_attacks import FAULTS, Attacks
from disk_from_outside import OutsideAttacks, can_trace, own_mounts
from disk_homes import starting_homes
from disk_run import OUTCOMES, Worker

SHOWN = 20
# Runs mostly wait for the network and the disk, so more of them run at once than there are cores.
AT_ONCE = 2 + (os.cpu_count() or 1)
# On average, power is lost before one in this number of operations.
CHANCE = 2
# Upper bounds for the bytes that a run needs.
LARGEST_FILE, LARGEST_DISK = 160_000, 280_000
STEP = 512
# System calls and the SQLite operations that use them.
CALLS = {"fdatasync": "sync", "pwrite64": "write", "ftruncate": "truncate"}


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("worker", help="the program disk_worker")
    parser.add_argument("program", help="the program cartonpick")
    parser.add_argument("--seed", type=int, default=1, help="of the power losses")
    parser.add_argument("--power-losses", type=int, default=1000, metavar="N",
                        help="how many power losses, and as many after a failed synchronisation")
    parser.add_argument("--every", type=int, default=25, metavar="N",
                        help="let each N-th operation fail, 1 for all of them")
    return parser.parse_args()


class Campaign:
    def __init__(self, options, folder, pool):
        self._options = options
        self._pool = pool
        mounts = own_mounts()
        worker = Worker(options.worker, folder)
        self._homes = starting_homes(worker, folder)
        self._attacks = Attacks(worker, folder)
        self._outside = OutsideAttacks(worker, options.program, folder, mounts)
        self._can_mount = mounts is not None
        self.wrong = [f"{home.name}: {text}" for home in self._homes
                      for text in home.trial.outcome(home.promised())[1]]

    def run(self):
        self._fail_operations()
        self._lose_power()
        self._lose_power_after_restart()
        self._attack_from_outside()
        self._prove_that_losses_are_found()

    def _numbers(self, count, every):
        """Returns every `every`-th number from 1 to `count`. The seed determines the first."""
        return range(1 + self._options.seed % every, count + 1, every)

    def _all(self, function, cases):
        """Calls `function` with each case, several in parallel, and returns the results."""
        return list(self._pool.map(lambda case: function(*case), cases))

    def _count(self, attacks):
        self.wrong += [f"{attack.what}, {attack.again}: {text}"
                       for attack in attacks for text in attack.wrong]
        return attacks

    def _fail_operations(self):
        cases = [(home, number, fault) for home in self._homes for fault in FAULTS
                 for number in self._numbers(len(home.operations), self._options.every)]
        print_table("operations that failed", self._count(self._all(self._attacks.fault, cases)))

    def _lose_power(self):
        cases = ((home, seed, CHANCE) for seed in itertools.count(self._options.seed)
                 for home in self._homes)
        attacks = self._until_enough(self._attacks.power_losses, cases)
        print_count("power losses", attacks)

    def _lose_power_after_restart(self):
        cases = ((home, number, seed, 2 * CHANCE) for seed in itertools.count(self._options.seed)
                 for home in self._homes
                 for number, kind in enumerate(home.operations, 1) if kind == "sync"
                 if number % 7 == seed % 7)
        attacks = self._until_enough(self._attacks.restart, cases)
        print_count("power losses after a failed synchronisation and a restart", attacks)

    def _until_enough(self, function, cases):
        """Calls `function` with cases until power was lost often enough. Returns all attacks."""
        attacks = []
        while sum(attack.what == "power" for attack in attacks) < self._options.power_losses:
            batch = list(itertools.islice(cases, AT_ONCE))
            attacks += itertools.chain.from_iterable(self._all(function, batch))
        return self._count(attacks)

    def _attack_from_outside(self):
        new, _, used = self._homes
        every = self._options.every
        outside = self._outside
        attacks = self._all(outside.file_limit, [
            (home, size) for home in (new, used) for size in range(0, LARGEST_FILE, every * STEP)])
        attacks.append(outside.start_without_store(new))
        if self._can_mount:
            attacks += self._all(outside.small_disk, [
                (new, size) for size in range(STEP, LARGEST_DISK, every * STEP)])
            attacks += [outside.protected_file(used), outside.start_on_full_disk(new),
                        outside.start_in_protected_folder(used)]
        else:
            print("disk: to mount is not permitted here: no full disk, nothing protected")
        if can_trace():
            attacks += self._all(outside.failing_call, [
                (used, call, f"{number}{end}") for call, kind in CALLS.items() for end in ("", "+")
                for number in self._numbers(used.operations.count(kind), every)])
        else:
            print("disk: to trace is not permitted here: no failing system calls")
        print_table("attacks from outside", self._count(attacks))

    def _prove_that_losses_are_found(self):
        """Checks that losses are found if the program does not sync its writes."""
        attacks = self._attacks.power_losses(self._homes[0], self._options.seed, CHANCE,
                                             "--no-sync")
        found = sum(bool(attack.wrong) for attack in attacks)
        print(f"disk: a program that does not synchronise loses something in {found} of "
              f"{len(attacks)} power losses")
        if found == 0:
            self.wrong.append("a loss would not be found")


def print_table(title, attacks):
    print(f"disk: {len(attacks):,} {title}")
    counts = collections.Counter((attack.what, attack.outcome) for attack in attacks)
    for what in sorted({attack.what for attack in attacks}):
        outcomes = ", ".join(f"{count} {outcome}" for (each, outcome), count in
                             sorted(counts.items(), key=_place) if each == what)
        print(f"  {what:27} {outcomes}")


def _place(entry):
    (_, outcome), _ = entry
    return OUTCOMES.index(outcome) if outcome in OUTCOMES else len(OUTCOMES)


def print_count(title, attacks):
    print(f"disk: {sum(attack.what == 'power' for attack in attacks):,} {title}", flush=True)


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    # An in-memory folder is faster, and durable enough: the power losses are simulated.
    memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(dir=memory) as folder:
        with concurrent.futures.ThreadPoolExecutor(AT_ONCE) as pool:
            campaign = Campaign(options, folder, pool)
            campaign.run()
    for text in campaign.wrong[:SHOWN]:
        print(f"WRONG: {text}")
    outcome = (f"{len(campaign.wrong)} things are wrong" if campaign.wrong
               else "everything that was confirmed is there, and nothing else")
    print(f"disk: {outcome}; seed {options.seed}")
    return 1 if campaign.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
