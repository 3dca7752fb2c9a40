"""Changes one thing at a time in the code of the program, and checks that a test notices it.

Prints each mutation that no test catches as a diff, and a table at the end. Works in copies of the
checkout in a temporary folder. See docs/reliability.md.

Usage: python3 mutation_campaign.py [--seed N] [--count N] [--folder NAME]... [--headers]
                                    [--at FILE[:LINE]]... [--jobs N] [--work FOLDER]

Fails if a mutation survives whose reason is not in reasons.txt.
"""

import argparse
import collections
import concurrent.futures
import pathlib
import queue
import random
import signal
import sys
import tempfile
import threading

from covering_tests import FOLDERS
from mutation_tree import CAUGHT, NOT_BUILT, SURVIVED, BrokenTree, MutationTree, checkout_of
from mutations import mutations_of
from reasons import reasons_of

REASONS = pathlib.Path(__file__).with_name("reasons.txt")
REASONED = "survived for a reason"
OUTCOMES = (CAUGHT, SURVIVED, REASONED, NOT_BUILT)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seed", type=int, default=1, help="of the choice (default: 1)")
    parser.add_argument("--count", type=int, help="number of mutations of all folders (default: all)")
    parser.add_argument("--folder", action="append", choices=FOLDERS,
                        help="only those in this folder of src (default: all five)")
    parser.add_argument("--headers", action="store_true",
                        help="headers as well, of which each mutation compiles many files again")
    parser.add_argument("--at", action="append", metavar="FILE[:LINE]",
                        help="all mutations of this file or line instead")
    parser.add_argument("--jobs", type=int, default=2, help="mutations at a time (default: 2)")
    parser.add_argument("--work", type=pathlib.Path,
                        help="keep the copies and their builds here for the next run")
    return parser.parse_args()


def all_mutations(checkout, suffixes=(".cpp", ".h")):
    """Every mutation of the files in the folders, in the order of their places."""
    files = [path for folder in FOLDERS for path in sorted((checkout / "src" / folder).iterdir())
             if path.suffix in suffixes]
    return [mutation for path in files
            for mutation in mutations_of(str(path.relative_to(checkout)),
                                         path.read_text(encoding="utf-8"))]


def chosen(mutations, options):
    """The mutations to try.

    The choice by seed and count depends on the changed lines only: a change of other lines hardly
    alters it. The choice of one folder is the part of the choice of all that is in the folder.
    """
    def rank(mutation):
        return random.Random("\n".join([str(options.seed), mutation.path, *mutation.diff()])).random()

    if options.at:
        return [mutation for mutation in mutations
                if mutation.path in options.at or f"{mutation.path}:{mutation.line}" in options.at]
    return [mutation for mutation in sorted(mutations, key=rank)[:options.count]
            if mutation.folder in (options.folder or FOLDERS)]


def shown(mutation, reason):
    lines = [f"{mutation.path}:{mutation.line}: {mutation.kind}", *mutation.diff()]
    return "\n".join(lines + ([f"because: {reason.text}"] if reason else []))


class Campaign:
    """The outcomes of the mutations, which the trees try file by file."""

    def __init__(self, mutations, reasons):
        self._reasons = reasons
        self._total = len(mutations)
        self._lock = threading.Lock()
        self._is_stopped = False
        self.outcomes = collections.Counter()
        by_path = collections.defaultdict(list)
        for mutation in mutations:
            by_path[mutation.path].append(mutation)
        self._files = queue.SimpleQueue()
        # Headers are last, because they take longest.
        for path in sorted(by_path, key=lambda path: (path.endswith(".h"), -len(by_path[path]))):
            self._files.put(by_path[path])

    def work(self, tree, durations):
        """Tries mutations in a tree until there are no more."""
        while not self._is_stopped:
            try:
                mutations = self._files.get_nowait()
            except queue.Empty:
                return
            for mutation in mutations:
                if not self._is_stopped:
                    self._take(mutation, *tree.outcome(mutation, durations))
            tree.restore(mutations[0].path, mutations[0].text)
            self._report(mutations[0].path)

    def stop(self):
        """Lets every tree finish only its current mutation."""
        self._is_stopped = True

    def _report(self, path):
        with self._lock:
            done = sum(self.outcomes.values())
            counts = ", ".join(f"{self._count(outcome)} {outcome}" for outcome in OUTCOMES)
            print(f"mutation: {done} of {self._total} after {path}: {counts}", flush=True)

    def _count(self, outcome, folder=None):
        return sum(count for (name, kind), count in self.outcomes.items()
                   if kind == outcome and folder in (name, None))

    def _take(self, mutation, outcome, test):
        reason = next((reason for reason in self._reasons if reason.explains(mutation)), None)
        with self._lock:
            if outcome == SURVIVED:
                print(shown(mutation, reason), flush=True)
            elif reason and outcome == CAUGHT:
                print(f"{mutation.path}:{mutation.line}: has a reason, but {test} catches it")
            if outcome == SURVIVED and reason:
                outcome = REASONED
            self.outcomes[mutation.folder, outcome] += 1

    def survived(self):
        """The number of mutations that survived without a reason."""
        return self._count(SURVIVED)

    def table(self):
        """The outcomes by folder, as Markdown."""
        rows = [["folder", "mutations", "caught", SURVIVED, "of these for a reason", NOT_BUILT]]
        names = [name for name in FOLDERS if any(name == key[0] for key in self.outcomes)]
        for name in [*names, None]:
            caught, survived, reasoned, not_built = (
                self._count(outcome, name) for outcome in OUTCOMES)
            tried = caught + survived + reasoned
            share = f" ({100 * caught / tried:.1f} %)" if tried else ""
            rows.append([name or "all", tried, f"{caught}{share}", survived + reasoned, reasoned,
                         not_built])
        lines = ["| " + " | ".join(map(str, row)) + " |" for row in rows]
        return "\n".join([lines[0], "| --- |" + " ---: |" * (len(rows[0]) - 1), *lines[1:]])


def prepared_trees(options, folder, folders):
    """The trees, one for each job. The second and later ones take what the first has compiled."""
    trees = [MutationTree(checkout_of(__file__), folder / str(number + 1))
             for number in range(options.jobs)]
    for number, tree in enumerate(trees):
        print(f"mutation: builds tree {number + 1} of {len(trees)}", flush=True)
        tree.prepare(folders)
    return trees


def run(options, folder):
    suffixes = (".cpp", ".h") if options.headers or options.at else (".cpp",)
    mutations = chosen(all_mutations(checkout_of(__file__), suffixes), options)
    folders = sorted({mutation.folder for mutation in mutations})
    reasons = reasons_of(REASONS.read_text(encoding="utf-8"))
    trees = prepared_trees(options, folder, folders)
    print("mutation: runs the tests without a mutation", flush=True)
    durations = trees[0].durations()
    print(f"mutation: {len(durations)} tests take {sum(durations.values()):.0f} s", flush=True)
    campaign = Campaign(mutations, reasons)
    with concurrent.futures.ThreadPoolExecutor(len(trees)) as pool:
        try:
            for work in [pool.submit(campaign.work, tree, durations) for tree in trees]:
                work.result()
        except KeyboardInterrupt:
            print("mutation: stopped", flush=True)
        finally:
            campaign.stop()
    print(campaign.table())
    survived = campaign.survived()
    print(f"mutation: {survived} survived without a reason (seed {options.seed}).")
    return 1 if survived else 0


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, signal.default_int_handler)
    try:
        if options.work:
            return run(options, options.work.absolute())
        with tempfile.TemporaryDirectory(prefix="mutation.") as folder:
            return run(options, pathlib.Path(folder))
    except BrokenTree as broken:
        print(f"mutation: {broken}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
