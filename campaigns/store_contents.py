"""What a store of the program's holds, read without the program."""

import collections
import os
import shutil
import sqlite3

NAME = "QIR_Pick.sqlite"
LOCK = "QIR_Pick.lock"
# With what recovers the store after a crash.
FILES = [NAME, NAME + "-wal", NAME + "-journal"]

# A row of Picking.
Row = collections.namedtuple("Row", "barcode box datepicked descr doc item ordernum orderqty "
                                    "pickqty sent")
Table = collections.namedtuple("Table", "columns rows")


class BrokenStore(Exception):
    """The file is no sound database."""


class Contents(collections.namedtuple("Contents", "version schema tables")):
    """All that is in a file. `schema` are the statements that made it, `tables` go by name."""

    def picked(self):
        """The rows of Picking by line; a second row of a line has its number."""
        rows, count = {}, collections.Counter()
        for row in map(Row._make, self.columns("Picking", Row._fields)):
            line = (row.doc, row.box, row.item)
            count[line] += 1
            rows[line + (count[line],) * (count[line] > 1)] = row
        return rows

    def catalogue(self):
        return self.columns("Items", ["barcode", "item", "descr"])

    def columns(self, table, names):
        """What stands in these columns of the table, in the order of its rows."""
        places = [self.tables[table].columns.index(name) for name in names]
        return [tuple(row[place] for place in places) for row in self.tables[table].rows]


# A store that is not made yet.
NOTHING = Contents(0, (), {})


def read(folder):
    """The contents of the store in the folder, recovered first as the program would. That changes
    the files."""
    path = os.path.join(folder, NAME)
    if not os.path.exists(path):
        return NOTHING
    database = sqlite3.connect(path)
    try:
        faults = [text for text, in database.execute("PRAGMA integrity_check") if text != "ok"]
        if faults:
            raise BrokenStore("; ".join(faults[:3]))
        return _contents(database)
    except sqlite3.DatabaseError as error:
        raise BrokenStore(error) from None
    finally:
        database.close()


def _contents(database):
    schema = database.execute("SELECT type, name, sql FROM sqlite_master ORDER BY name").fetchall()
    version, = database.execute("PRAGMA user_version").fetchone()
    names = [name for kind, name, _ in schema if kind == "table"]
    return Contents(version, tuple(schema), {name: _table(database, name) for name in names})


def _table(database, name):
    cursor = database.execute(f'SELECT * FROM "{name}" ORDER BY rowid')
    return Table([column[0] for column in cursor.description], cursor.fetchall())


def copy(folder, target):
    """Copies the store of a program that has ended, with what is left to recover and its times."""
    for name in FILES:
        if os.path.exists(os.path.join(folder, name)):
            shutil.copy2(os.path.join(folder, name), target)
