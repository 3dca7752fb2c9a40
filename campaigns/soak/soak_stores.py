"""Checks the stores of the program and of the order service while both are in use."""

import collections
import sqlite3

from tablet_deliveries import picked_row
from sent_lines import sent_violations, stored_facts
from store_contents import Row

_QUANTITY = "SELECT pickqty FROM Picking WHERE doc = ? AND box = ? AND item = ?"
_ROWS = ("SELECT barcode, box, datepicked, descr, doc, item, ordernum, orderqty, pickqty, sent "
         "FROM Picking WHERE doc = ?")


class Stores:
    """The confirmed quantities, compared with the stores of the tablet and of the service."""

    def __init__(self, tablet, service):
        self._tablet = sqlite3.connect(f"file:{tablet}?mode=ro", uri=True)
        self._service = service
        self._confirmed = {}

    def close(self):
        self._tablet.close()

    def confirmed(self, line):
        """Returns the confirmed quantity of an order line."""
        return self._confirmed.get(_key(line), (line, 0))[1]

    def confirm(self, line, quantity):
        self._confirmed[_key(line)] = line, quantity

    def has(self, line, quantity):
        """Returns true if the tablet's store has the line with this quantity."""
        return self._tablet.execute(_QUANTITY, _key(line)).fetchall() == [(quantity,)]

    def catalogue_violations(self, articles):
        """Returns a list of messages about what is wrong with the catalogue after a reload."""
        stored = self._tablet.execute("SELECT item, barcode, descr FROM Items").fetchall()
        served = [(it["item"], it["barcode"], it["descr"]) for it in articles]
        if collections.Counter(stored) == collections.Counter(served):
            return []
        return [f"a reload stored other articles, {len(stored)} of {len(articles)}"]

    def rows(self, delivery):
        return [Row(*row) for row in self._tablet.execute(_ROWS, [delivery])]

    def is_sent(self, delivery):
        return {row.sent for row in self.rows(delivery)} == {1}

    def sent_violations(self, delivery):
        """Returns a list of messages about what is wrong with a delivery that was sent."""
        rows = self.rows(delivery)
        if wrong := self._row_violations(delivery, rows):
            return wrong
        return sent_violations(rows, stored_facts(self._service, delivery))

    def _row_violations(self, delivery, rows):
        stored = sorted(row._replace(datepicked=None) for row in rows)
        confirmed = sorted(picked_row(line, quantity)._replace(sent=1)
                           for line, quantity in self._confirmed.values()
                           if line["doc"] == delivery)
        if stored == confirmed:
            return []
        return [f"confirmed and not stored: {row}" for row in confirmed if row not in stored] + [
            f"stored and not confirmed: {row}" for row in stored if row not in confirmed] or [
            f"{delivery} has lines more than once"]

    def violations(self):
        """Returns a list of messages about what is wrong with all confirmed and sent lines."""
        deliveries = sorted({doc for doc, _, _ in self._confirmed})
        wrong = [text for delivery in deliveries for text in self.sent_violations(delivery)]
        for name, count in (("tablet", self._tablet.execute("SELECT count(*) FROM Picking")),
                            ("service", self._count_sent())):
            (rows,), = count
            if rows != len(self._confirmed):
                wrong.append(f"the {name} has {rows} lines of {len(self._confirmed)}")
        return wrong

    def _count_sent(self):
        database = sqlite3.connect(f"file:{self._service}?mode=ro", uri=True)
        try:
            return database.execute("SELECT count(*) FROM picked_line").fetchall()
        finally:
            database.close()


def _key(line):
    return line["doc"], line["carton"], line["item"]
