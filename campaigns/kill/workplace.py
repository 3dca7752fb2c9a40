"""The environment of the campaign: a screen, two order services, and a tablet's home folder."""

import collections
import contextlib
import json
import os
import sqlite3
import subprocess
import tempfile
import urllib.request

import store_contents
from event_listener import EventListener
from expected_store import ExpectedStore
from tablet_deliveries import (BOXES, BOXES_TO_SEND, PICKED, articles, delivery_lines,
                             delivery_to_send, picked_row)
from loopback import free_ports
from order_instance import OrderInstance
from quick_tablet import QuickTablet
from store_contents import Row
from tablet import Screen
from unobserved_program import UnobservedProgram

_CATALOGUE = "http://{}/qir_pick/servicepick.svc/json/getitems"
_FIRST_MS = 1_774_500_000_000


class Service:
    """An order service with a separate store and catalogue."""

    def __init__(self, stack, programs, store, lines, edition):
        self.store = store
        self._load(programs, {"deliveries": lines, "articles": articles(edition)})
        port, = free_ports(1)
        self.host = f"127.0.0.1:{port}"
        stack.enter_context(OrderInstance(programs, store, port))
        with urllib.request.urlopen(_CATALOGUE.format(self.host)) as answer:
            self.catalogue = [(article["barcode"], article["item"], article["descr"])
                              for article in json.load(answer)]

    def _load(self, programs, deliveries):
        with tempfile.NamedTemporaryFile("w", suffix=".json", encoding="utf-8") as file:
            json.dump(deliveries, file)
            file.flush()
            subprocess.run([os.path.join(programs, "cartonpick-orders"), "load", file.name,
                            "--store", self.store], check=True, stdout=subprocess.DEVNULL)


class Workplace:
    """A context manager. The tablet's store has `deliveries_to_send` deliveries that are picked but
    not sent."""

    def __init__(self, programs, deliveries_to_send):
        self._programs = programs
        self._to_send = [line for number in range(deliveries_to_send)
                         for line in delivery_lines(delivery_to_send(number), BOXES_TO_SEND)]
        self._stack = contextlib.ExitStack()
        self._places = {}
        self.counts = collections.Counter()

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            self.folder = stack.enter_context(tempfile.TemporaryDirectory())
            self.screen = Screen(1280, 800)
            stack.callback(self.screen.close)
            self._listener = EventListener()
            stack.callback(self._listener.close)
            lines = delivery_lines(PICKED, BOXES) + self._to_send
            self.services = [Service(stack, self._programs, self._path(f"orders{edition}.sqlite"),
                                     lines, edition) for edition in (1, 2)]
            self.home = self._path("home")
            self.expected = self._make_store()
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *_):
        self._stack.close()

    def _path(self, name):
        return os.path.join(self.folder, name)

    @staticmethod
    def documents(home):
        return os.path.join(home, "Documents")

    def _make_store(self):
        """Has the program create the store, and inserts the lines as if they had been picked."""
        self.start_once(self.home)
        documents = self.documents(self.home)
        rows = [picked_row(line, 1 + number % 99, _FIRST_MS + 1000 * number)
                for number, line in enumerate(self._to_send)]
        database = sqlite3.connect(os.path.join(documents, store_contents.NAME))
        with database:
            database.executemany(f"INSERT INTO Picking ({', '.join(Row._fields)}) "
                                 "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", rows)
        database.close()
        return ExpectedStore(store_contents.read(documents))

    def start_tablet(self, service):
        """Starts the program on the store left by the previous program, with an event listener."""
        self._note_lock(self.home)
        return QuickTablet(self._listener, self._places, self.screen, self._executable,
                           "--service-host", service.host, "--home", self.home)

    def start_unobserved(self, home):
        self._note_lock(home)
        return UnobservedProgram(self.screen, self._executable, home)

    def start_once(self, home):
        """Starts the program on the store left by the previous program, and kills it when its
        window is shown."""
        program = self.start_unobserved(home)
        program.wait_for_window()
        program.kill_after(0)

    @property
    def _executable(self):
        return os.path.join(self._programs, "cartonpick")

    def _note_lock(self, home):
        if os.path.exists(os.path.join(self.documents(home), store_contents.LOCK)):
            self.counts["starts over a lock that was left"] += 1
