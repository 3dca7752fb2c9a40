"""Shows that a fleet of tablets loses and duplicates nothing while servers are killed.

The tablets connect to nginx, which forwards to two instances of the order service on one PostgreSQL
database. One of the instances is killed every few seconds; PostgreSQL is stopped once and crashed
once. A send counts as accepted when it is answered with "0"; until then the tablet repeats it. At
the end the database must have every accepted fact once, as it was sent, and no fact that was not
sent.

Usage: python3 fleet_proof.py [--seconds N] [--tablets N] [--seed N] BIN

BIN is the folder with the programs.
"""

import argparse
import asyncio
import collections
import contextlib
import json
import math
import os
import random
import resource
import signal
import subprocess
import sys
import tempfile
import threading
import time

from facts import Fact, violations
from fleet_deliveries import fleet_deliveries
from loopback import free_ports
from nginx_proxy import NginxProxy
from order_instance import OrderInstance
from postgres_cluster import PostgresCluster
from tablets import Fleet, mean_seconds_a_delivery

# Seconds.
UNTIL_A_KILL, DEAD = (1.5, 4.0), (0.2, 1.0)
SHOWN = 10
STORED = ("SELECT json_build_array(delivery, order_no, box, item, barcode, quantity, picked_at) "
          "FROM picked_line")


def arguments():
    parser = argparse.ArgumentParser(description="Shows that the order service serves a fleet.")
    parser.add_argument("bin", help="the folder of the programs")
    parser.add_argument("--seconds", type=float, default=20,
                        help="duration in seconds (default: 20)")
    parser.add_argument("--tablets", type=int, default=500, help="number of tablets (default: 500)")
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1_000_000),
                        help="seed of all random choices (default: random)")
    return parser.parse_args()


def allow_connections():
    """Raises the limit of open files to the maximum that the system permits."""
    _, hard = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (hard, hard))


def load(folder, store, deliveries):
    with tempfile.NamedTemporaryFile("w", suffix=".json", encoding="utf-8") as file:
        json.dump([line for lines in deliveries.values() for line in lines], file)
        file.flush()
        subprocess.run([os.path.join(folder, "cartonpick-orders"), "load", file.name, "--store",
                        store], check=True, stdout=subprocess.DEVNULL)


class Outages:
    """Kills and restarts servers while the tablets work."""

    def __init__(self, cluster, instances, seed):
        self.counts = collections.Counter()
        self.wrong = []
        self._cluster = cluster
        self._instances = instances
        self._chance = random.Random(seed)

    def run(self, seconds):
        """Runs for at least this number of seconds."""
        for how in "fast", "immediate":
            self._kill_for(seconds / 3)
            self._cluster.restart(how)
            self.counts[f"restarts of PostgreSQL, {how}"] += 1
        self._kill_for(seconds / 3)

    def _kill_for(self, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self._pause(UNTIL_A_KILL)
            self._kill_and_start(self._chance.choice(self._instances))

    def _kill_and_start(self, instance):
        if not instance.is_running:
            self.wrong.append(f"an instance had ended by itself:\n{instance.errors()}")
        instance.kill()
        self.counts["kills of an instance"] += 1
        self._pause(DEAD)
        instance.start()

    def _pause(self, seconds):
        time.sleep(self._chance.uniform(*seconds))


def stored_facts(cluster):
    return [Fact(*json.loads(row)) for row in cluster.psql(STORED).splitlines()]


def report(fleet, outages, stored, second_attempts):
    counts = fleet.counts + outages.counts + collections.Counter({
        "requests that nginx gave to a second instance": second_attempts,
        "facts sent": len(fleet.sent), "facts accepted": len(fleet.accepted),
        "facts stored": stored})
    counts["requests"] = counts["lookups"] + counts["sends"]
    width = max(map(len, counts))
    for name, count in sorted(counts.items()):
        print(f"  {name:{width}} {count:9,}")


def work_amid(outages, fleet, options):
    """Runs the tablets for the duration of the outages."""
    # A server process ends with the thread that starts it, so the fleet runs in the other thread.
    work = threading.Thread(target=asyncio.run, args=[fleet.run(options.tablets)], daemon=True)
    work.start()
    outages.run(options.seconds)
    fleet.is_over = True
    work.join()


def prove(options):
    """Returns a list of messages about what is wrong."""
    # The outages take a little longer than requested, so there are spare deliveries.
    count = math.ceil(options.tablets * (options.seconds + 10) / mean_seconds_a_delivery())
    deliveries = fleet_deliveries(count, options.seed)
    with contextlib.ExitStack() as stack:
        cluster = stack.enter_context(PostgresCluster())
        load(options.bin, cluster.url, deliveries)
        *ports, port = free_ports(3)
        instances = [stack.enter_context(OrderInstance(options.bin, cluster.url, own))
                     for own in ports]
        nginx = stack.enter_context(NginxProxy(port, ports))
        fleet = Fleet(port, deliveries, options.seed)
        outages = Outages(cluster, instances, options.seed)
        work_amid(outages, fleet, options)
        stored = stored_facts(cluster)
        asyncio.run(fleet.check_sent())
        report(fleet, outages, len(stored), nginx.second_attempts())
        ends = [instance.end() for instance in instances]
    wrong = fleet.wrong + outages.wrong + violations(fleet.sent, fleet.accepted, stored)
    if not fleet.accepted or not fleet.has_ended:
        wrong.append("the fleet did not do its work")
    if any(ends):
        wrong.append(f"the instances ended with {ends} when they were asked to")
    return wrong


def main():
    options = arguments()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    allow_connections()
    print(f"fleet-proof: {options.tablets} tablets for {options.seconds:g} s, seed {options.seed}",
          flush=True)
    wrong = prove(options)
    for text in wrong[:SHOWN]:
        print(f"WRONG: {text}")
    outcome = f"{len(wrong)} things are wrong" if wrong else "nothing was lost, doubled or changed"
    print(f"fleet-proof: {outcome}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
