"""The base class of tests that pick deliveries with the real program and order service."""

import os
import sqlite3
import tempfile
import unittest

from tablet import OrderService, Program, Screen

DELIVERIES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "deliveries.json")


class PickingRun(unittest.TestCase):
    """A subclass sets `programs`, the folder of the programs. It may set the file of the deliveries and
    further options of the program."""

    programs = None
    deliveries = DELIVERIES
    options = ()

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.screen = Screen(1280, 800)
        self.addCleanup(self.screen.close)
        self.sent = self.path("sent.sqlite")
        self.service = OrderService(self.program("cartonpick-orders"), "--deliveries", self.deliveries,
                                    "--store", self.sent)
        self.addCleanup(self.service.close)
        self.tablet = None
        self.start_program()
        self.addCleanup(lambda: self.tablet.close())

    def path(self, *names):
        return os.path.join(self.folder.name, *names)

    def program(self, name):
        return os.path.join(self.programs, name)

    def start_program(self):
        self.tablet = self.new_tablet(self.program("cartonpick"), "--service-host",
                                      self.service.host, "--home", self.path("home"),
                                      *self.options)

    def new_tablet(self, *command):
        return Program(self.screen, *command)

    def documents(self, name):
        return self.path("home", "Documents", name)

    def stored(self, query="SELECT box, item, orderqty, pickqty, sent FROM Picking ORDER BY rowid"):
        with sqlite3.connect(f"file:{self.documents('QIR_Pick.sqlite')}?mode=ro", uri=True) as db:
            return db.execute(query).fetchall()

    def look_up(self, number):
        tablet = self.tablet
        tablet.touch("push button", "Picking")
        tablet.expect_focus_in("Delivery number")
        tablet.type(number)
        tablet.touch("push button", "Search")

    def start_picking(self, number):
        self.look_up(number)
        self.tablet.find("label", "Customer: Harbour Café")
        self.tablet.touch("push button", "Start Picking")
        self.tablet.expect_focus_in("Box")

    def enter(self, quantity):
        self.tablet.expect_focus_in("Quantity to add")
        self.tablet.type(quantity)
        self.tablet.touch("push button", "OK")
        self.tablet.expect_gone("text", "Quantity to add")
        self.tablet.expect_focus_in("Item or barcode")

    def scan(self, code):
        self.tablet.type(code)
        self.tablet.press("Return")

    def choose(self, action):
        self.tablet.touch("push button", "Options")
        self.tablet.touch("list item", action)
