"""Measures the order service: lookups and sends of 64 concurrent tablets, compared with constant
answers from the same server. Kills the service at the end and fails unless it has stored every
accepted send.

Usage: python3 service_bench.py BIN RESULTS.json

BIN is the folder with the programs.
"""

import json
import os
import sqlite3
import subprocess
import sys
import tempfile

from samples import Samples

TABLETS, DELIVERIES, LINES = 64, 1000, 12
ROUNDS, SECONDS = 3, 2
# A proxy keeps its connections; a tablet uses a new one for each request.
WAYS = {"CartonPick": [], "CartonPick, a connection for each request": ["close"]}


def deliveries():
    return [{"cusname": "Rosie's Kitchen", "brand": "HEARTHSIDE", "cdate": "03/02/2026",
             "date": "03/05/2026", "doc": str(delivery), "ordernum": "A1", "item": f"{20000 + line}A",
             "barcode": f"50127461{line:05}", "descr": "WHITE ENAMEL MUG 350ML", "qty": 6,
             "carton": f"C{line:03}"}
            for delivery in range(1, DELIVERIES + 1) for line in range(1, LINES + 1)]


class Service:
    """An order service with a new store."""

    def __init__(self, folder, home, store):
        self.store = os.path.join(home, store)
        file = os.path.join(home, "deliveries.json")
        with open(file, "w", encoding="utf-8") as text:
            json.dump(deliveries(), text)
        self._process = subprocess.Popen(
            [os.path.join(folder, "cartonpick-orders"), "--port", "0", "--deliveries", file,
             "--store", self.store], stdout=subprocess.PIPE, text=True)
        self._port = int(self._process.stdout.readline())

    def load(self, kind, run, *arguments):
        """Runs the requests of `kind` for round number `run`. Returns the number of answered
        requests, the number of error answers, and the seconds per request."""
        script = os.path.join(os.path.dirname(__file__), "service_load.lua")
        output = subprocess.run(
            ["wrk", "-t2", f"-c{TABLETS}", f"-d{SECONDS}s", "-s", script,
             f"http://127.0.0.1:{self._port}", "--", kind, str(DELIVERIES), str(run), *arguments],
            check=True, capture_output=True, text=True).stdout
        answered, refused, microseconds = map(int, output.split("RESULT ")[1].split()[:3])
        return answered, refused, microseconds / 1e6 / answered

    def kill(self):
        self._process.kill()
        self._process.communicate()


def check_stored(store, accepted):
    with sqlite3.connect(store) as database:
        (rows,) = database.execute("SELECT count(*) FROM picked_line").fetchone()
    # A send in progress at the end of a run can be stored without being answered.
    unanswered = ROUNDS * len(WAYS) * TABLETS
    if rows % LINES != 0 or not accepted <= rows // LINES <= accepted + unanswered:
        raise SystemExit(f"{accepted} sends were accepted, {rows} lines of {LINES} are stored")


def measure(folder, home, kind, samples):
    service = Service(folder, home, f"{kind}.sqlite")
    accepted = 0
    for run in range(ROUNDS):
        constant, all_of_them, seconds = service.load(kind, run, "constant")
        if constant != all_of_them:
            raise SystemExit("the constant path does not give an error answer")
        samples.add(f"service {kind}", "floor: the same server answering a constant", TABLETS,
                    seconds, "s")
        for index, (way, options) in enumerate(WAYS.items()):
            # No two loads send the same lines.
            answered, refused, seconds = service.load(kind, run * len(WAYS) + index, *options)
            if refused:
                raise SystemExit(f"{refused} of {answered} requests were refused")
            samples.add(f"service {kind}", way, TABLETS, seconds, "s")
            accepted += answered
    service.kill()
    return service.store, accepted


def main():
    folder, results = sys.argv[1:]
    samples = Samples()
    with tempfile.TemporaryDirectory() as home:
        measure(folder, home, "lookup", samples)
        check_stored(*measure(folder, home, "send", samples))
    samples.write(results)


main()
