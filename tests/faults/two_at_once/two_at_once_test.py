"""Two real processes at once: two programs on one store, before and after a crash, and two order
services on one SQLite file while deliveries are loaded.

Usage: own-session python3 two_at_once_test.py PROGRAM-FOLDER
"""

import collections
import concurrent.futures
import contextlib
import http.client
import itertools
import json
import os
import signal
import sqlite3
import subprocess
import sys
import tempfile
import unittest

from loopback import HOST
from owned_process import start_owned, wait_for

PROGRAMS = sys.argv.pop(1)
SENDPICK = "/qir_pick/servicepick.svc/json/sendpick"
PICKED = [("4711", 1_774_000_000_000), ("4711", 1_774_003_600_000)]


def program(name):
    return os.path.join(PROGRAMS, name)


class Temporary(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def end(self, process):
        """Ends the process when the test ends."""
        for stream in (process.stdout, process.stderr):
            if stream:
                self.addCleanup(stream.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process


class TwoPrograms(Temporary):
    def start(self):
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software")
        return self.end(start_owned([program("cartonpick"), "--home", self.path("home")],
                                    env=environment, stderr=subprocess.PIPE, text=True))

    @property
    def store(self):
        return self.path("home", "Documents", "QIR_Pick.sqlite")

    def holds_store(self, process):
        """Returns whether the process has the store open."""
        folder = f"/proc/{process.pid}/fd"
        with contextlib.suppress(FileNotFoundError):
            return any(os.path.realpath(os.path.join(folder, name)) == os.path.realpath(self.store)
                       for name in os.listdir(folder))
        return False

    def is_store_made(self):
        """Returns whether the store is in WAL mode, the last step of its creation."""
        with contextlib.suppress(FileNotFoundError), open(self.store, "rb") as file:
            return file.read(20)[18:] == b"\x02\x02"
        return False

    def expect_store_of(self, process):
        wait_for(lambda: self.holds_store(process) and self.is_store_made(),
                 "the store to be opened")

    def rows(self):
        with contextlib.closing(sqlite3.connect(self.store)) as database:
            return database.execute("SELECT doc, datepicked FROM Picking").fetchall()

    def write_rows(self):
        with contextlib.closing(sqlite3.connect(self.store)) as database, database:
            database.executemany(
                "INSERT INTO Picking (barcode, box, datepicked, descr, doc, item, ordernum, "
                "orderqty, pickqty, sent) VALUES ('b', 'C1', ?2, 'd', ?1, 'A', 'o', 1, 1, 0)",
                PICKED)

    def test_a_second_program_exits_with_a_message_and_the_first_continues(self):
        first = self.start()
        self.expect_store_of(first)
        self.write_rows()
        second = self.start()
        log = second.stderr.read()
        self.assertEqual(second.wait(timeout=60), 1)
        self.assertIn(f"Another program uses the store in {self.path('home', 'Documents')}.", log)
        self.assertIsNone(first.poll())
        self.assertTrue(self.holds_store(first))
        self.assertEqual(self.rows(), PICKED)

    def test_one_of_six_programs_started_at_once_gets_the_store(self):
        many = [self.start() for _ in range(6)]
        wait_for(lambda: sum(process.poll() is None for process in many) == 1, "five to end")
        winner, = [process for process in many if process.poll() is None]
        self.expect_store_of(winner)
        self.assertEqual({process.returncode for process in many if process is not winner}, {1})

    def test_a_program_opens_the_store_of_one_that_crashed(self):
        first = self.start()
        self.expect_store_of(first)
        self.write_rows()
        first.send_signal(signal.SIGKILL)
        first.wait()
        self.assertIn("QIR_Pick.lock", os.listdir(self.path("home", "Documents")))
        second = self.start()
        self.expect_store_of(second)
        self.assertEqual(self.rows(), PICKED)
        self.assertIsNone(second.poll())


class TwoServices(Temporary):
    SENDERS = 8
    SENDS = 12
    LOADS = 8
    DELIVERIES = 5

    def setUp(self):
        super().setUp()
        self.store = self.path("orders.sqlite")
        self.file = self.path("deliveries.json")
        with open(self.file, "w", encoding="utf-8") as file:
            json.dump([{"cusname": "c", "brand": "b", "cdate": "03/02/2026", "date": "03/05/2026",
                        "doc": f"D{number}", "ordernum": "o", "item": f"I{number}",
                        "barcode": f"B{number}", "descr": "d", "qty": 3, "carton": "C"}
                       for number in range(self.DELIVERIES)], file)
        self.load()

    def load(self):
        subprocess.run([program("cartonpick-orders"), "load", self.file, "--store", self.store],
                       check=True, capture_output=True, timeout=120)

    def serve(self):
        process = self.end(start_owned([program("cartonpick-orders"), "--port", "0", "--store",
                                        self.store], stdout=subprocess.PIPE, text=True))
        return int(process.stdout.readline())

    def fact(self, sender, number):
        """Returns what a tablet sends. Every second tablet repeats what the one before it sends."""
        delivery = number % self.DELIVERIES
        return {"barcode": f"B{delivery}", "box": "C", "doc": f"D{delivery}",
                "item": f"I{delivery}", "ordernum": "o", "qty": sender // 2,
                "datepicked": f"2026-03-04 09:15:{number:02}", "sent": 0}

    def send(self, port, fact):
        """Sends until the service accepts, as a user would, and returns the other answers."""
        refusals = []
        while True:
            connection = http.client.HTTPConnection(HOST, port, timeout=60)
            with contextlib.closing(connection):
                connection.request("POST", SENDPICK, json.dumps([fact]),
                                   {"Content-Type": "application/json"})
                answer = connection.getresponse()
                text = answer.read()
            if (answer.status, text) == (200, b'"0"'):
                return refusals
            refusals.append((answer.status, text))
            self.assertLess(len(refusals), 5, refusals)

    def test_two_services_on_one_file_neither_lose_nor_duplicate_picks_during_loads(self):
        ports = [self.serve(), self.serve()]
        with concurrent.futures.ThreadPoolExecutor(self.SENDERS + 1) as tablets:
            sends = [tablets.submit(self.send, ports[(sender + number) % 2],
                                    self.fact(sender, number))
                     for number, sender in itertools.product(range(self.SENDS),
                                                             range(self.SENDERS))]
            loads = tablets.submit(lambda: [self.load() for _ in range(self.LOADS)])
            refusals = [refusal for send in sends for refusal in send.result()]
            loads.result()
        self.assertEqual(refusals, [])
        expected = collections.Counter(
            {(fact["doc"], fact["qty"], fact["datepicked"]): 1
             for fact in (self.fact(sender, number) for sender in range(self.SENDERS)
                          for number in range(self.SENDS))})
        with contextlib.closing(sqlite3.connect(self.store)) as database:
            stored = collections.Counter(database.execute(
                "SELECT delivery, quantity, picked_at FROM picked_line"))
            lines = database.execute("SELECT count(*) FROM order_line").fetchone()
            check = database.execute("PRAGMA integrity_check").fetchone()
        self.assertEqual(stored, expected)
        self.assertEqual((lines, check), ((self.DELIVERIES,), ("ok",)))


if __name__ == "__main__":
    unittest.main()
