"""End-to-end runs in a browser. The real script serves the real program, and the test uses the
program only through its page in a headless Chromium.

Usage: ../acceptance/own-session python3 browser_run_test.py PROGRAM-FOLDER
"""

import json
import os
import socket
import sqlite3
import subprocess
import sys
import tempfile
import unittest
import urllib.request
from itertools import groupby
from urllib.parse import urlsplit

from browser_tablet import BrowserTablet, ProgramPage, ServedProgram
from tablet import OrderService, wait_for

PROGRAMS = sys.argv.pop(1)
TWELVE_LINES = "4711"
ONE_LINE = "4715"
# Scaling causes a difference of 0.005, and one confirmed quantity a difference of 0.04.
ALIKE = 0.02


def row_name(line, picked):
    """Returns the accessible name of the line's row."""
    return (f"{line['item']}, {line['barcode']}, {line['descr']}, picked {picked}, "
            f"ordered {line['qty']}, difference {picked - line['qty']}")


def listening_addresses(process_ids):
    """Returns the local addresses, in the kernel's hexadecimal form, on which the processes listen
    for TCP."""
    files = []
    for process_id in process_ids:
        folder = f"/proc/{process_id}/fd"
        files += [os.readlink(os.path.join(folder, name)) for name in os.listdir(folder)]
    addresses = set()
    for table in ("/proc/net/tcp", "/proc/net/tcp6"):
        with open(table) as rows:
            for row in map(str.split, list(rows)[1:]):
                local_address, state, inode = row[1], row[3], row[9]
                if state == "0A" and f"socket:[{inode}]" in files:
                    addresses.add(local_address.partition(":")[0])
    return addresses


class BrowserRun(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = ProgramPage()
        cls.addClassCleanup(cls.page.close)

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.temporary_folder = self.path("tmp")
        os.mkdir(self.temporary_folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def program(self, name):
        return os.path.join(PROGRAMS, name)

    def serve(self, *options):
        self.served = ServedProgram(self.temporary_folder, self.program("cartonpick"),
                                    "--home", self.path("home"), *options)
        self.addCleanup(self.served.close)

    def open_browser(self):
        self.tablet = BrowserTablet(self.served, self.page)


class Picking(BrowserRun):
    def setUp(self):
        super().setUp()
        self.service = OrderService(self.program("cartonpick-orders"), "--demo", "--store",
                                    self.path("sent.sqlite"))
        self.addCleanup(self.service.close)
        self.serve("--service-host", self.service.host)
        self.open_browser()

    def ordered(self, delivery):
        """Returns the order lines of a delivery from the order service."""
        address = f"http://{self.service.host}/qir_pick/servicepick.svc/json/getorderpercarton/"
        with urllib.request.urlopen(address + delivery) as answer:
            return json.load(answer)

    def rows(self, database, query):
        with sqlite3.connect(f"file:{self.path(database)}?mode=ro", uri=True) as connection:
            return connection.execute(query).fetchall()

    def stored(self, columns="box, item, orderqty, pickqty"):
        return self.rows("home/Documents/QIR_Pick.sqlite",
                         f"SELECT {columns} FROM Picking ORDER BY rowid")

    def start_picking(self, lines):
        """Looks up the delivery that has these lines, and starts picking it."""
        tablet = self.tablet
        tablet.touch("push button", "Picking")
        tablet.expect_focus_in("Delivery number")
        tablet.type(lines[0]["doc"])
        tablet.touch("push button", "Search")
        tablet.find("label", f"Customer: {lines[0]['cusname']}")
        tablet.expect_gone("dialog")
        tablet.touch("push button", "Start Picking")
        tablet.expect_focus_in("Box")

    def scan(self, code):
        self.tablet.type(code)
        self.tablet.press("Return")

    def scan_item(self, code):
        self.tablet.expect_focus_in("Item or barcode")
        self.scan(code)
        self.tablet.expect_focus_in("Quantity to add")

    def confirm(self):
        self.tablet.touch("push button", "OK")
        self.tablet.expect_gone("text", "Quantity to add")
        self.tablet.expect_focus_in("Item or barcode")

    def open_box_by_touch(self, lines):
        ordered = sum(line["qty"] for line in lines)
        self.tablet.touch("list item",
                          f"Box {lines[0]['carton']}, picked 0, ordered {ordered}, unopened")
        self.tablet.find("list item", row_name(lines[0], 0))

    def test_a_delivery_of_twelve_lines_is_picked_and_sent(self):
        tablet = self.tablet
        lines = self.ordered(TWELVE_LINES)
        self.assertEqual(len(lines), 12)
        by_barcode, by_touch, by_code = (list(box) for _, box in
                                         groupby(lines, lambda line: line["carton"]))
        self.start_picking(lines)

        self.scan(by_barcode[0]["carton"])
        for line in by_barcode:
            self.scan_item(line["barcode"])
            tablet.type(str(line["qty"]))
            self.confirm()
            tablet.find("list item", row_name(line, line["qty"]))

        self.open_box_by_touch(by_touch)
        for line in by_touch:
            tablet.touch("list item", row_name(line, 0))
            tablet.expect_focus_in("Quantity to add")
            for digit in str(line["qty"]):
                tablet.touch("push button", digit)
            self.confirm()
            tablet.find("list item", row_name(line, line["qty"]))

        self.open_box_by_touch(by_code)
        for line in by_code:
            self.scan_item(line["item"])
            tablet.type(str(line["qty"]))
            self.confirm()
        # One piece too many is removed from the last line.
        last = lines[-1]
        self.scan_item(last["item"])
        tablet.touch("push button", "Minus")
        tablet.type("1")
        self.confirm()
        tablet.find("list item", row_name(last, last["qty"] - 1))

        picked = [line["qty"] for line in lines]
        picked[-1] -= 1
        self.assertEqual(self.stored(), [(line["carton"], line["item"], line["qty"], quantity)
                                         for line, quantity in zip(lines, picked)])
        tablet.touch("push button", "Options")
        tablet.touch("list item", "Complete and Send")
        tablet.answer_alert("Picking Completed?", "YES")
        tablet.answer_alert("Picking was sent", "OK")
        self.assertEqual(self.stored("sent"), [(1,)] * 12)
        sent = self.rows("sent.sqlite", "SELECT box, item, barcode, quantity FROM picked_line")
        self.assertCountEqual(sent, [(line["carton"], line["item"], line["barcode"], quantity)
                                     for line, quantity in zip(lines, picked)])

    def test_escape_closes_the_keypad_without_storing_anything(self):
        line, = self.ordered(ONE_LINE)
        self.start_picking([line])
        self.scan(line["carton"])
        self.scan_item(line["barcode"])
        self.tablet.type("1")
        self.tablet.press("Escape")
        self.tablet.expect_gone("text", "Quantity to add")
        self.tablet.expect_focus_in("Item or barcode")
        self.assertEqual(self.stored(), [])

    def test_a_scan_arrives_after_a_click_beside_the_screen(self):
        line, = self.ordered(ONE_LINE)
        self.start_picking([line])
        self.page.click_beside_screen()
        self.scan(line["carton"])
        self.tablet.find("list item", row_name(line, 0))

    def test_the_page_shows_what_the_program_draws(self):
        line, = self.ordered(ONE_LINE)
        self.start_picking([line])
        self.scan(line["carton"])
        self.tablet.find("list item", row_name(line, 0))
        self.expect_page_like_screen("before")
        self.scan_item(line["barcode"])
        self.tablet.type(str(line["qty"]))
        self.confirm()
        self.expect_page_like_screen("after")
        self.assertGreater(self.difference("page-before", "page-after"), ALIKE)

    def expect_page_like_screen(self, moment):
        """Waits until the page and the program's screen look alike."""
        def alike():
            subprocess.run(["import", "-window", "root", self.picture(f"screen-{moment}")],
                           env=self.served.environment(), check=True)
            self.page.save_picture(self.picture(f"page-{moment}"))
            return self.difference(f"screen-{moment}", f"page-{moment}") < ALIKE

        wait_for(alike, "the page to show the program's screen")

    def picture(self, name):
        return self.path(f"{name}.png")

    def difference(self, one, other):
        """Returns the difference of two pictures from 0 to 1, after scaling both down."""
        compared = subprocess.run(
            ["compare", "-metric", "RMSE", self.picture(one) + "[320x200!]",
             self.picture(other) + "[320x200!]", "null:"], capture_output=True, text=True)
        return float(compared.stderr.partition("(")[2].rstrip(")\n"))


class Access(BrowserRun):
    def setUp(self):
        super().setUp()
        self.serve("--demo")

    def answer_to(self, word):
        """Returns the first line of the server's answer to a request for the screen with this
        access word."""
        port = urlsplit(self.served.address).port
        with socket.create_connection(("127.0.0.1", port)) as connection:
            connection.sendall(f"GET /websockify?token={word} HTTP/1.1\r\n"
                               f"Host: 127.0.0.1:{port}\r\nUpgrade: websocket\r\n"
                               "Connection: Upgrade\r\nSec-WebSocket-Version: 13\r\n"
                               "Sec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n".encode())
            return connection.makefile("rb").readline()

    def test_only_the_access_word_opens_the_screen(self):
        word = urlsplit(self.served.address).fragment
        self.assertIn(b"101 Switching Protocols", self.answer_to(word))
        for wrong in ("", word[:-1], word[::-1], "unix_socket"):
            self.assertEqual(self.answer_to(wrong), b"")

    def test_it_listens_only_on_the_loopback_address(self):
        self.assertEqual(listening_addresses(self.served.processes()), {"0100007F"})

    def test_everything_ends_when_the_program_exits(self):
        self.open_browser()
        self.served.end_program()
        self.expect_nothing_left()
        wait_for(lambda: self.page.message().startswith("No connection"),
                 "the page to tell the end")

    def test_everything_ends_when_the_script_is_terminated(self):
        self.open_browser()
        self.served.close()
        self.expect_nothing_left()

    def expect_nothing_left(self):
        # The order service of the demo ends by itself after its parent process.
        wait_for(lambda: not self.served.processes(), "all processes to end")
        self.assertEqual(os.listdir(self.temporary_folder), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
