"""A store with the previous schema: other tables, fewer columns, and no indexes."""

import os
import sqlite3

import store_contents
from tablet_deliveries import delivery_lines, picked_row

_COLUMNS = ["doc", "box", "item", "barcode", "ordernum", "orderqty", "pickqty", "datepicked"]
_BOXES = 5_000
_FIRST_MS = 1_700_000_000_000


def make_older_store(folder):
    """Creates a store with many picked lines, so that its migration takes long enough to kill."""
    database = sqlite3.connect(os.path.join(folder, store_contents.NAME))
    rows = [picked_row(line, number % 100, _FIRST_MS + 1000 * number)
            for number, line in enumerate(delivery_lines("OLD", _BOXES))]
    with database:
        database.execute(f"CREATE TABLE Picking ({', '.join(_COLUMNS)}, remark TEXT)")
        database.execute("CREATE TABLE Notes (text TEXT)")
        database.execute("INSERT INTO Notes VALUES ('kept')")
        database.executemany("INSERT INTO Picking VALUES (?, ?, ?, ?, ?, ?, ?, ?, 'kept')",
                             ([getattr(row, name) for name in _COLUMNS] for row in rows))
    database.close()


def migration_violations(older, migrated):
    """Returns a message for each table that has lost contents in the migration."""
    return [f"the migrated table {name} lacks something"
            for name, table in older.tables.items()
            if name not in migrated.tables
            or migrated.columns(name, table.columns) != table.rows]
