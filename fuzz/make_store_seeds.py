"""Writes seeds for the store to FOLDER: an SQLite file for every SQL file, and one more that SQL
alone cannot create.

Usage: make_store_seeds.py FOLDER SQL-FILE...
"""

import pathlib
import sqlite3
import struct
import sys

PAGE = 512
TANGLE = """
    PRAGMA user_version = 1;
    CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
    CREATE TABLE Picking (barcode TEXT, box TEXT, datepicked INTEGER, descr TEXT, doc TEXT,
        item TEXT, ordernum TEXT, orderqty INTEGER, pickqty INTEGER, sent INTEGER);
    INSERT INTO Items VALUES ('b1', 'A', 'One');
    CREATE TABLE Room (bytes BLOB);
    INSERT INTO Room VALUES (zeroblob(10000));
"""


def connect(file: pathlib.Path) -> sqlite3.Connection:
    """Creates a database file, with the settings and the function that the seeds use."""
    file.unlink(missing_ok=True)
    database = sqlite3.connect(file, isolation_level=None)
    database.create_function("run", -1, lambda *_: 1, deterministic=True)
    database.execute(f"PRAGMA page_size = {PAGE}")
    database.execute("PRAGMA writable_schema = ON")
    return database


def make(sql: pathlib.Path, file: pathlib.Path) -> None:
    """Runs the statements of `sql` one by one on a new database; ignores failures."""
    database = connect(file)
    for statement in sql.read_text(encoding="utf-8").split(";\n"):
        try:
            database.execute(statement)
        except sqlite3.Error:
            continue
    database.close()


def branch(child: int, children: int) -> bytes:
    """Returns an interior B-tree page with `children` pointers to the same page `child`."""
    page = bytearray(PAGE)
    struct.pack_into(">BHHHBI", page, 0, 5, 0, children, PAGE - 5 * children, 0, child)
    for i in range(children):
        cell = PAGE - 5 * (i + 1)
        struct.pack_into(">H", page, 12 + 2 * i, cell)
        struct.pack_into(">IB", page, cell, child, i + 1)
    return bytes(page)


def make_tangle(file: pathlib.Path) -> None:
    """Writes a table of a few pages that takes hours to read: every interior page refers to the
    page of the next level many times."""
    levels = 6
    database = connect(file)
    database.executescript(TANGLE)
    query = "SELECT rootpage FROM sqlite_master WHERE name = 'Items'"
    (root,) = database.execute(query).fetchone()
    database.close()
    pages = bytearray(file.read_bytes())
    leaf = len(pages) // PAGE - levels
    pages[(leaf - 1) * PAGE:leaf * PAGE] = pages[(root - 1) * PAGE:root * PAGE]
    for level in range(1, levels + 1):
        page = root if level == levels else leaf + level
        pages[(page - 1) * PAGE:page * PAGE] = branch(leaf + level - 1, 60)
    file.write_bytes(pages)


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for sql in map(pathlib.Path, sys.argv[2:]):
        make(sql, folder / sql.with_suffix(".sqlite").name)
    make_tangle(folder / "tangle.sqlite")
    (folder / "made").touch()


if __name__ == "__main__":
    main()
