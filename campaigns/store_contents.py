"""Reads the contents of the program's store without the program."""

import collections
import os
import shutil
import sqlite3

NAME = "QIR_Pick.sqlite"
LOCK = "QIR_Pick.lock"
# The store and the files from which SQLite recovers it after a crash.
FILES = [NAME, NAME + "-wal", NAME + "-journal"]

# A row of Picking.
Row = collections.namedtuple("Row", "barcode box datepicked descr doc item ordernum orderqty "
                                    "pickqty sent")
Table = collections.namedtuple("Table", "columns rows")


class BrokenStore(Exception):
    """The file is not a valid database."""


class Contents(collections.namedtuple("Contents", "version schema tables")):
    """The whole contents of a store. `schema` has its CREATE statements, `tables` its tables by
    name."""

    def picked(self):
        """Returns the rows of Picking by line. The key of a repeated line also has a number."""
        rows, count = {}, collections.Counter()
        for row in map(Row._make, self.columns("Picking", Row._fields)):
            line = (row.doc, row.box, row.item)
            count[line] += 1
            rows[line + (count[line],) * (count[line] > 1)] = row
        return rows

    def catalogue(self):
        return self.columns("Items", ["barcode", "item", "descr"])

    def columns(self, table, names):
        """Returns the values of these columns for each row of the table, in order."""
        places = [self.tables[table].columns.index(name) for name in names]
        return [tuple(row[place] for place in places) for row in self.tables[table].rows]


# A store that does not exist yet.
NOTHING = Contents(0, (), {})


def read(folder):
    """Recovers the store in the folder as the program would, which changes its files, and returns
    its contents. Raises BrokenStore if it is not a valid database."""
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
    """Copies the store of a program that has ended, with its recovery files and file times."""
    for name in FILES:
        if os.path.exists(os.path.join(folder, name)):
            shutil.copy2(os.path.join(folder, name), target)
