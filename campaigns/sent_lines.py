"""Compares what the order service has stored with what a tablet has marked as sent."""

import datetime
import sqlite3

from facts import Fact, violations

_PICKED = ("SELECT delivery, order_no, box, item, barcode, quantity, picked_at FROM picked_line "
           "WHERE delivery = ?")


def stored_facts(service_store, delivery):
    """Returns the facts about the delivery in the SQLite store of an order service."""
    database = sqlite3.connect(f"file:{service_store}?mode=ro", uri=True)
    try:
        return [Fact(*row) for row in database.execute(_PICKED, [delivery])]
    finally:
        database.close()


def fact_of(row):
    """Returns the fact that the tablet sends for a row of Picking, in the tablet's time zone."""
    picked_at = datetime.datetime.fromtimestamp(row.datepicked // 1000)
    return Fact(row.doc, row.ordernum, row.box, row.item, row.barcode, row.pickqty,
                picked_at.strftime("%Y-%m-%d %H:%M:%S"))


def sent_violations(rows, stored):
    """Returns a list of messages about differences between the rows of a delivery on the tablet,
    which are sent together, and the facts that the order service has stored."""
    flags = {row.sent for row in rows}
    if len(flags) != 1:
        return [f"the lines of {rows[0].doc} have the sent flags {sorted(flags)}"]
    facts = {fact_of(row) for row in rows}
    if stored and len(stored) < len(facts):
        return [f"the service has {len(stored)} of {len(facts)} lines of {rows[0].doc}"]
    return violations(facts, facts if flags == {1} else [], stored)
