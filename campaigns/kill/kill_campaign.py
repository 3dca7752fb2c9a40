"""Shows that a tablet loses no data, whenever the program is killed.

The program is killed at random moments of four tasks: picking quantities, replacing the catalogue,
sending a delivery, and starting. After each kill the campaign checks the store without the program,
and the program must be able to start with it. Must run in a separate session (own-session).

Usage: own-session python3 kill_campaign.py [--kills N] [--workers N] [--seed N] BIN

BIN is the folder with the programs.
"""

import argparse
import collections
import contextlib
import json
import os
import queue
import random
import signal
import statistics
import subprocess
import sys
import threading
import time

from owned_process import start_owned
from store_examination import IDLE, LOST, STORED

WORKER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "kill_worker.py")
NEWS_EVERY = 100
COLUMNS = [IDLE, LOST, STORED, "in a transaction"]


def arguments():
    parser = argparse.ArgumentParser(description="Shows that a killed tablet loses nothing.")
    parser.add_argument("bin", help="the folder of the programs")
    parser.add_argument("--kills", type=int, default=12, help="number of kills (default: 12)")
    parser.add_argument("--workers", type=int, default=1,
                        help="number of tablets that run at once (default: 1)")
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1_000_000),
                        help="seed of all random choices (default: random)")
    return parser.parse_args()


class Results:
    """The results that the workers report."""

    def __init__(self):
        self.wrong = []
        self.kills = 0
        self._durations = collections.defaultdict(list)
        self._counts = collections.defaultdict(collections.Counter)
        self._all = collections.Counter()

    def take(self, worker, told):
        if "counts" in told:
            self._all.update(told["counts"])
            return
        self.kills += 1
        work = told["work"]
        self._durations[work].append(told["duration"])
        self._counts[work][told["state"]] += 1
        self._counts[work]["in a transaction"] += told["unfinished"]
        self.wrong += [f"worker {worker}, {work}, killed after {told['moment']:.4f} of "
                       f"{told['duration']:.4f} s: {text}" for text in told["wrong"]]

    def show(self):
        print(f"  {'':25}{'seconds':>9}{'kills':>7}", *(f"{name:>18}" for name in COLUMNS), sep="")
        for work, counts in sorted(self._counts.items()):
            durations = self._durations[work]
            print(f"  {work:25}{statistics.median(durations):9.2f}{len(durations):7,}",
                  *(f"{counts[name]:18,}" for name in COLUMNS), sep="")
        for name, count in self._all.items():
            print(f"  {name}: {count:,}")


def listen(worker, process, told):
    """Queues each report from the worker, and its exit code when it ends."""
    for line in process.stdout:
        told.put((worker, json.loads(line)))
    told.put((worker, process.wait()))


def share(total, parts, number):
    return total // parts + (number < total % parts)


def start_workers(options, stack, told):
    for worker in range(options.workers):
        process = start_owned(
            [sys.executable, WORKER, "--kills", str(share(options.kills, options.workers, worker)),
             "--seed", f"{options.seed}/{worker}", options.bin],
            stdout=subprocess.PIPE, text=True)
        stack.callback(process.wait)
        stack.callback(process.terminate)
        threading.Thread(target=listen, args=[worker, process, told], daemon=True).start()


def prove(options):
    results, told = Results(), queue.Queue()
    with contextlib.ExitStack() as stack:
        start_workers(options, stack, told)
        at_work = options.workers
        while at_work:
            worker, what = told.get()
            if isinstance(what, dict):
                results.take(worker, what)
                if results.kills % NEWS_EVERY == 0 and "work" in what:
                    print(f"  {results.kills:,} kills", flush=True)
                continue
            at_work -= 1
            if what != 0:
                results.wrong.append(f"worker {worker} ended with {what}")
    if results.kills != options.kills and not results.wrong:
        results.wrong.append(f"there were {results.kills} kills")
    return results


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    print(f"kill-campaign: {options.kills:,} kills by {options.workers} workers, "
          f"seed {options.seed}", flush=True)
    began = time.monotonic()
    results = prove(options)
    results.show()
    for text in results.wrong:
        print(f"WRONG: {text}")
    outcome = (f"{len(results.wrong)} things are wrong" if results.wrong else
               "nothing that was confirmed was lost, nothing was half done")
    print(f"kill-campaign: {outcome}, in {time.monotonic() - began:.0f} s")
    return 1 if results.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
