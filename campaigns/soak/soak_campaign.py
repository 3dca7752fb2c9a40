"""Picks many deliveries at high speed, and checks that the program's resource use does not grow.

The real program runs on a separate screen, gets real input events, and uses the real order service.
The campaign covers lookups, scans and touches, quantities on the keypad, corrections, refused
scans, summaries, sends, the history, reloads of the catalogue, the other theme and larger text. A
quantity counts as confirmed when it is in the program's store. The campaign samples the program's
memory, descriptors and threads at fixed numbers of quantities. At the end everything confirmed must
be in the store, everything sent must be in the order service's store once, and no figure must have
grown after the first fifth of the run.

Usage: own-session python3 soak_campaign.py [--minutes N] [--picks N] [--deliveries N] [--reloads N]
       [--limit MIB] [--seed N] [--figures FILE.csv] [--picture FILE.svg] [--failure FILE.png]
       BIN

BIN is the folder with the programs. The campaign ends when all the given minimums are reached.
"""

import argparse
import contextlib
import json
import math
import os
import signal
import subprocess
import sys
import tempfile
import time

from loopback import free_ports
from order_instance import OrderInstance
from soak_deliveries import Delivery, deliveries_file
from soak_flatness import judge
from soak_memory import Meter
from soak_picture import draw
from soak_program import SoakedProgram
from soak_screen import CaptionReader, InputDriver, NotSeen, WatchedScreen
from soak_stores import Stores
from soak_work import Picker

HERE = os.path.dirname(os.path.abspath(__file__))
OWN_SESSION = os.path.join(HERE, os.pardir, os.pardir, "tests", "acceptance", "own-session")
SAMPLES = 100
LOOK_AROUND_EVERY = 3
# A lower bound, which determines the number of deliveries to prepare.
LEAST_SECONDS_A_DELIVERY = 2
SHOWN = 10


def arguments():
    parser = argparse.ArgumentParser(description="Checks that the program does not grow.")
    parser.add_argument("bin", help="the folder of the programs")
    parser.add_argument("--minutes", type=float, default=0, help="minimum duration (default: 0)")
    parser.add_argument("--picks", type=int, default=60,
                        help="minimum number of confirmed quantities (default: 60)")
    parser.add_argument("--deliveries", type=int, default=3,
                        help="minimum number of deliveries (default: 3)")
    parser.add_argument("--reloads", type=int, default=1,
                        help="minimum number of catalogue reloads (default: 1)")
    parser.add_argument("--limit", type=float, default=6,
                        help="permitted growth in MiB after the first fifth (default: 6)")
    parser.add_argument("--seed", default="1", help="seed of all random choices (default: 1)")
    parser.add_argument("--figures", help="CSV file for the samples")
    parser.add_argument("--picture", help="SVG file for a chart of the samples; needs gnuplot")
    parser.add_argument("--failure",
                        help="PNG file for a picture of the screen after a time-out")
    return parser.parse_args()


def survey(programs, folder):
    """Returns the places and caption shapes of the controls on the screen.

    Accessibility changes the program's memory use. The survey therefore runs a separate instance of
    the program, in a separate session.
    """
    path = os.path.join(folder, "survey.json")
    with open(os.path.join(folder, "survey.log"), "w+", encoding="utf-8") as log:
        process = subprocess.Popen([OWN_SESSION, sys.executable,
                                    os.path.join(HERE, "soak_survey.py"), programs, path],
                                   stdout=log, stderr=log, start_new_session=True)
        try:
            process.wait()
        finally:
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGTERM)
                process.wait()
        log.seek(0)
        if process.returncode != 0:
            raise NotSeen(f"the places on the screen: {log.read()[-2000:]}")
    with open(path, encoding="utf-8") as file:
        return json.load(file)


class Soak:
    """A context manager with a running program, its order service and a picker."""

    def __init__(self, options):
        self._options = options
        self._stack = contextlib.ExitStack()
        self._picks_a_delivery = math.ceil(options.picks / options.deliveries)
        self._sample_every = max(1, options.picks // SAMPLES)

    def __enter__(self):
        options = self._options
        with contextlib.ExitStack() as stack:
            folder = stack.enter_context(tempfile.TemporaryDirectory())
            found = survey(options.bin, folder)
            self._deliveries = self._make_deliveries()
            service_store = os.path.join(folder, "orders.sqlite")
            self._load(folder, service_store)
            port, = free_ports(1)
            stack.enter_context(OrderInstance(options.bin, service_store, port))
            self.screen = WatchedScreen(folder)
            stack.callback(self.screen.close)
            home = os.path.join(folder, "home")
            self.program = stack.enter_context(SoakedProgram(
                self.screen, os.path.join(options.bin, "cartonpick"), "--service-host",
                f"127.0.0.1:{port}", "--home", home))
            store = os.path.join(home, "Documents", "QIR_Pick.sqlite")
            self.stores = Stores(store, service_store)
            stack.callback(self.stores.close)
            driver = InputDriver(self.screen)
            stack.callback(driver.close)
            reader = CaptionReader(self.screen, found["places"], found["shapes"])
            reader.expect("start/Picking")
            self.picker = Picker(driver, reader, self.stores, options.seed, self._note)
            self.meter = Meter(self.program.process_id, store)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *_):
        self._stack.close()

    def _make_deliveries(self):
        options = self._options
        count = options.deliveries + math.ceil(options.minutes * 60 / LEAST_SECONDS_A_DELIVERY)
        return [Delivery(index, options.seed) for index in range(count)]

    def _load(self, folder, store):
        path = os.path.join(folder, "deliveries.json")
        with open(path, "w", encoding="utf-8") as file:
            json.dump(deliveries_file(self._deliveries), file)
        subprocess.run([os.path.join(self._options.bin, "cartonpick-orders"), "load", path,
                        "--store", store], check=True, stdout=subprocess.DEVNULL)

    def _note(self):
        counts = self.picker.counts
        if counts["picks"] % self._sample_every == 0:
            self.meter.take(counts)

    def run(self):
        options, counts = self._options, self.picker.counts
        end = time.monotonic() + options.minutes * 60
        self.picker.enter_picking()
        for index, delivery in enumerate(self._deliveries):
            if counts["reloads"] < math.ceil((index + 1) * options.reloads / options.deliveries):
                self.picker.reload()
            self.picker.pick(delivery, self._picks_a_delivery)
            if index % LOOK_AROUND_EVERY == 1:
                self.picker.look_around()
            if index + 1 >= options.deliveries and time.monotonic() >= end:
                return
        raise RuntimeError("there are no more deliveries to pick")


def soak(options):
    """Runs the campaign, prints its figures, and returns a list of messages about what is wrong."""
    with Soak(options) as work:
        began = time.monotonic()
        try:
            work.run()
            wrong = work.picker.wrong + work.stores.violations()
        except NotSeen as not_seen:
            if options.failure:
                work.screen.save_picture(options.failure)
            wrong = work.picker.wrong + [f"waited in vain for {not_seen}"]
        seconds = time.monotonic() - began
        wrong += work.program.end()
        samples = work.meter.samples
        counts = work.picker.counts
    for name, count in sorted(counts.items()):
        print(f"  {name:32} {count:8,}")
    print(f"  {'picks a second':32} {counts['picks'] / seconds:8.1f}")
    if options.figures:
        work.meter.write(options.figures)
    if options.picture:
        draw(samples, options.picture)
    figures, grown = judge(samples, options.limit)
    print("\n".join(f"  {line}" for line in figures))
    return wrong + grown


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    print(f"soak: {options.picks} quantities, {options.deliveries} deliveries, {options.reloads} "
          f"reloads, {options.minutes:g} minutes at least; seed {options.seed}", flush=True)
    wrong = soak(options)
    for text in wrong[:SHOWN]:
        print(f"WRONG: {text}")
    print(f"soak: {len(wrong)} things are wrong" if wrong else
          "soak: nothing was lost or doubled, and nothing grew")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
