"""Two versions of the order service on one database at once, as during an upgrade of a fleet.

Usage: python3 two_versions_test.py FORMER NEW

FORMER and NEW are the order service programs of the previous version and of this one.
"""

import json
import os
import subprocess
import sys
import tempfile
import unittest
import urllib.parse
import urllib.request

from loopback import HOST, free_ports
from order_instance import OrderInstance
from postgres_cluster import PostgresCluster

NEW, FORMER = sys.argv.pop(), sys.argv.pop()
SENT = "This picking has already been sent to the server"
CALLS = "/qir_pick/servicepick.svc/json/"


def order_line(delivery, customer="Ann"):
    return {"cusname": customer, "brand": "HEARTHSIDE", "cdate": "03/02/2026", "date": "03/05/2026",
            "doc": delivery, "ordernum": "SO-1", "item": "20138A", "barcode": "5012746100000",
            "descr": "MUG", "qty": 3, "carton": "C001"}


def command(program, *words):
    return subprocess.run([program, *words], check=True, stdout=subprocess.PIPE, text=True).stdout


class Instance(OrderInstance):
    def __init__(self, program, store):
        self._port = free_ports(1)[0]
        # The previous version does not have the default options.
        super().__init__(os.path.dirname(program), store, self._port, options=())

    def lookup(self, delivery):
        return self._call("getorderpercarton/" + urllib.parse.quote(delivery, safe=""))

    def send(self, delivery, quantity):
        line = order_line(delivery)
        picked = [{"barcode": line["barcode"], "box": line["carton"], "doc": delivery,
                   "item": line["item"], "ordernum": line["ordernum"], "qty": quantity,
                   "datepicked": "2026-03-04 09:15:00", "sent": 0}]
        return self._call("sendpick", json.dumps(picked).encode())

    def finds(self, delivery, search):
        """Returns true if the list of deliveries for a search has the delivery."""
        page = f"http://{HOST}:{self._port}/?q={urllib.parse.quote(search)}"
        with urllib.request.urlopen(page) as answer:
            return f'href="/deliveries/{delivery}"' in answer.read().decode()

    def _call(self, call, body=None):
        request = urllib.request.Request(f"http://{HOST}:{self._port}{CALLS}{call}", body,
                                         {"Content-Type": "application/json"})
        with urllib.request.urlopen(request) as answer:
            return json.load(answer)


class TwoVersions:
    """The tests, for a store at `self.store`."""

    def load(self, program, *deliveries, customer="Ann"):
        with tempfile.NamedTemporaryFile("w", suffix=".json", encoding="utf-8") as file:
            json.dump([order_line(delivery, customer) for delivery in deliveries], file)
            file.flush()
            command(program, "load", file.name, "--store", self.store)

    def quantities(self, program, *options):
        exported = command(program, "export", "--store", self.store, "--format", "json", *options)
        return [line["qty"] for line in json.loads(exported)]

    def instance(self, program):
        instance = Instance(program, self.store)
        self.enterContext(instance)
        return instance

    def test_the_new_version_starts_beside_the_previous_one(self):
        self.load(FORMER, "D1", "D2")
        former = self.instance(FORMER)
        self.assertEqual(former.send("D1", 1), "0")
        new = self.instance(NEW)
        self.check_both(former, new)

    def test_the_previous_version_starts_beside_the_new_one(self):
        self.load(NEW, "D1", "D2")
        new = self.instance(NEW)
        self.assertEqual(new.send("D1", 1), "0")
        former = self.instance(FORMER)
        self.check_both(former, new)
        former.kill()
        former.start()
        self.assertEqual(former.lookup("D1"), SENT)

    def check_both(self, former, new):
        for instance in former, new:
            self.assertEqual(instance.lookup("D1"), SENT)
            self.assertEqual(instance.lookup("D2"), [order_line("D2")])
        self.assertEqual(former.send("D2", 2), "0")
        self.assertEqual(new.lookup("D2"), SENT)
        self.assertEqual(new.send("D2", 3), "0")
        self.assertEqual(new.send("D2", 2), "0")
        for program in FORMER, NEW:
            self.assertEqual(self.quantities(program, "--delivery", "D2"), [3])
            self.assertEqual(sorted(self.quantities(program, "--all")), [1, 2, 3])
        self.load(FORMER, "D3")
        self.load(NEW, "D4")
        for instance in former, new:
            self.assertEqual(instance.lookup("D3"), [order_line("D3")])
            self.assertEqual(instance.lookup("D4"), [order_line("D4")])
        self.load(FORMER, "D3", customer="Björn")
        self.assertTrue(new.finds("D3", "BJÖRN"))
        self.assertFalse(new.finds("D3", "ANN"))
        self.assertTrue(new.finds("D4", "ANN"))
        command(NEW, "reopen", "D1", "--store", self.store)
        self.assertEqual(new.lookup("D1"), [order_line("D1")])
        # The previous version does not support reopening, but a picking that it accepts counts.
        self.assertEqual(former.send("D1", 5), "0")
        self.assertEqual(new.lookup("D1"), SENT)
        self.assertEqual(self.quantities(NEW, "--delivery", "D1"), [5])


class TwoVersionsOnSqlite(TwoVersions, unittest.TestCase):
    def setUp(self):
        folder = self.enterContext(tempfile.TemporaryDirectory())
        self.store = os.path.join(folder, "store.sqlite")


class TwoVersionsOnPostgres(TwoVersions, unittest.TestCase):
    def setUp(self):
        self.store = self.enterContext(PostgresCluster()).url


if __name__ == "__main__":
    unittest.main()
