"""Tests that the checks after a kill can fail."""

import os
import random
import shutil
import sqlite3
import tempfile
import time
import unittest

import store_contents
from expected_store import ExpectedStore
from tablet_deliveries import articles, delivery_lines, picked_row
from older_store import make_older_store, migration_violations
from store_examination import end_violations, examine
from sent_lines import fact_of, sent_violations
from store_contents import Row
from unfinished_transaction import is_unfinished

LINES = delivery_lines("D", 3)
ROWS = [picked_row(line, 1 + number, 1_774_500_000_000 + number)
        for number, line in enumerate(LINES)]
OLD, NEW = ([(article["barcode"], article["item"], article["descr"])
             for article in articles(edition)[:500]] for edition in (1, 2))


def key(row):
    return row.doc, row.box, row.item


class Store(unittest.TestCase):
    """A store with some picked lines and a catalogue, as the program leaves it."""

    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory())
        self.change(f"CREATE TABLE Picking ({', '.join(Row._fields)})",
                    "CREATE TABLE Items (barcode, item, descr)",
                    "CREATE INDEX Items_item ON Items (item)", "PRAGMA journal_mode = WAL")
        self.insert("Picking", ROWS)
        self.insert("Items", OLD)
        self.expected = ExpectedStore(store_contents.read(self.folder))

    def path(self):
        return os.path.join(self.folder, store_contents.NAME)

    def change(self, *statements):
        database = sqlite3.connect(self.path())
        with database:
            for statement in statements:
                database.execute(statement)
        database.close()

    def insert(self, table, rows):
        database = sqlite3.connect(self.path())
        with database:
            marks = ", ".join("?" * len(rows[0]))
            database.executemany(f"INSERT INTO {table} VALUES ({marks})", rows)
        database.close()

    def wrong(self):
        finding = examine(self.folder, 0, self.expected.violations)
        if finding.wrong:
            shutil.rmtree(finding.wrong[-1].rsplit(" ", 1)[1])
        return "; ".join(finding.wrong)


class Quantities(Store):
    def begin(self, row=ROWS[0], quantity=77):
        self.expected.begin_rows({key(row): row._replace(pickqty=quantity)})

    def store(self, quantity=77):
        self.change(f"UPDATE Picking SET pickqty = {quantity} WHERE rowid = 1")

    def test_a_confirmed_quantity_is_correct(self):
        self.begin()
        self.expected.confirm()
        self.store()
        self.assertEqual(self.wrong(), "")

    def test_an_unconfirmed_quantity_is_correct_whether_stored_or_not(self):
        self.begin()
        self.assertEqual(self.wrong(), "")
        self.store()
        self.assertEqual(self.wrong(), "")

    def test_a_lost_confirmed_quantity_is_found(self):
        self.begin()
        self.expected.confirm()
        self.assertRegex(self.wrong(), r"must be .*pickqty=77.*, and is .*pickqty=1,")

    def test_a_lost_quantity_of_a_new_line_is_found(self):
        new = picked_row(delivery_lines("D", 4)[-1], 5)
        self.expected.begin_rows({key(new): new})
        self.assertEqual(self.wrong(), "")
        self.expected.confirm()
        self.assertRegex(self.wrong(), "must be .*, and is None")
        self.insert("Picking", [new._replace(datepicked=1)])
        self.assertEqual(self.wrong(), "")

    def test_a_wrong_quantity_is_found(self):
        self.begin()
        self.store(76)
        self.assertIn("and is", self.wrong())

    def test_a_change_of_any_column_is_found(self):
        for column in Row._fields:
            with self.subTest(column):
                before = getattr(ROWS[1], column)
                self.change(f"UPDATE Picking SET {column} = '?' WHERE rowid = 2")
                self.assertIn("and is", self.wrong())
                database = sqlite3.connect(self.path())
                with database:
                    database.execute(f"UPDATE Picking SET {column} = ? WHERE rowid = 2", [before])
                database.close()

    def test_a_duplicate_line_and_a_line_that_was_not_picked_are_found(self):
        self.insert("Picking", [ROWS[0]])
        self.assertIn("must be None", self.wrong())
        self.change("DELETE FROM Picking WHERE rowid > 12")
        self.assertEqual(self.wrong(), "")
        self.insert("Picking", [ROWS[0]._replace(box="C999")])
        self.assertIn("must be None", self.wrong())


class Catalogue(Store):
    def replace(self, catalogue):
        self.change("DELETE FROM Items")
        self.insert("Items", catalogue)

    def test_the_old_catalogue_is_correct_until_the_new_one_is_confirmed(self):
        self.expected.begin_catalogue(NEW)
        self.assertEqual(self.wrong(), "")
        self.expected.confirm()
        self.assertIn("0 of the 500 of the last one", self.wrong())
        self.replace(NEW)
        self.assertEqual(self.wrong(), "")

    def test_half_a_catalogue_is_found(self):
        self.expected.begin_catalogue(NEW)
        self.replace(NEW[:250])
        self.assertIn("has 250 articles", self.wrong())

    def test_a_mix_of_both_catalogues_is_found(self):
        self.expected.begin_catalogue(NEW)
        self.replace(OLD[:250] + NEW[250:])
        self.assertIn("has 500 articles: 250 of the 500 of the last one, 250 of the 500 of the new",
                      self.wrong())

    def test_a_lost_index_is_found(self):
        self.change("DROP INDEX Items_item")
        self.assertIn("not those of the model", self.wrong())


class SentFlags(Store):
    def setUp(self):
        super().setUp()
        self.expected.begin_rows({key(row): row._replace(sent=1) for row in ROWS})

    def test_sent_flags_that_are_all_set_or_all_clear_are_correct(self):
        self.assertEqual(self.wrong(), "")
        self.change("UPDATE Picking SET sent = 1")
        self.assertEqual(self.wrong(), "")

    def test_clear_sent_flags_are_found_after_the_send_is_confirmed(self):
        self.expected.confirm()
        self.assertIn("sent=1", self.wrong())

    def test_partly_set_sent_flags_are_found(self):
        self.change("UPDATE Picking SET sent = 1 WHERE rowid <= 6")
        self.assertIn("6 of 12 lines were changed", self.wrong())


class SentLines(unittest.TestCase):
    SENT = [row._replace(sent=1) for row in ROWS]
    FACTS = [fact_of(row) for row in ROWS]

    def test_lines_that_the_service_has_are_correct(self):
        self.assertEqual(sent_violations(self.SENT, self.FACTS), [])
        self.assertEqual(sent_violations(ROWS, self.FACTS), [])
        self.assertEqual(sent_violations(ROWS, []), [])

    def test_lines_that_the_service_lacks_are_found(self):
        self.assertEqual(len(sent_violations(self.SENT, [])), len(ROWS))

    def test_a_delivery_that_the_service_has_stored_in_part_is_found(self):
        self.assertEqual(sent_violations(ROWS, self.FACTS[:6]),
                         ["the service has 6 of 12 lines of D"])

    def test_a_different_quantity_is_found(self):
        changed = self.FACTS[0]._replace(quantity=99)
        self.assertIn(f"accepted and not stored: {self.FACTS[0]}",
                      sent_violations(self.SENT, [changed, *self.FACTS[1:]]))

    def test_partly_set_sent_flags_of_a_delivery_are_found(self):
        self.assertEqual(sent_violations(self.SENT[:6] + ROWS[6:], self.FACTS),
                         ["the lines of D have the sent flags [0, 1]"])


class Files(Store):
    def test_a_broken_store_is_found(self):
        with open(self.path(), "r+b") as file:
            file.seek(4096)
            file.write(random.Random(1).randbytes(8192))
        self.assertIn("the store is broken", self.wrong())

    def test_a_truncated_store_is_found(self):
        os.truncate(self.path(), 8192)
        self.assertIn("the store is broken", self.wrong())

    def test_a_missing_store_is_found(self):
        os.remove(self.path())
        self.assertIn("not those of the model", self.wrong())

    def test_the_write_ahead_log_is_read_but_not_changed(self):
        database = sqlite3.connect(self.path())
        with database:
            database.execute("UPDATE Picking SET pickqty = 77 WHERE rowid = 1")
        before = os.path.getsize(self.path() + "-wal")
        self.assertIn("pickqty=77", self.wrong())
        self.assertEqual(os.path.getsize(self.path() + "-wal"), before)
        database.close()

    def test_a_row_and_a_table_lost_by_a_migration_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            make_older_store(folder)
            older = store_contents.read(folder)
            self.assertEqual(migration_violations(older, older), [])
            database = sqlite3.connect(os.path.join(folder, store_contents.NAME))
            with database:
                database.execute("DELETE FROM Picking WHERE rowid = 7")
                database.execute("DROP TABLE Notes")
            database.close()
            self.assertEqual(len(migration_violations(older, store_contents.read(folder))), 2)


class Kills(Store):
    """Detection of an unfinished transaction in the store of a killed program."""

    def left_behind(self, *statements, since=0):
        """Returns true if a program that is killed after these statements leaves an unfinished
        transaction."""
        database = sqlite3.connect(self.path(), isolation_level=None)
        database.execute("PRAGMA cache_size = 10")
        for statement in statements:
            database.execute(statement)
        with tempfile.TemporaryDirectory() as folder:
            store_contents.copy(self.folder, folder)
            left = is_unfinished(os.path.join(folder, store_contents.NAME), since)
        database.close()
        return left

    # More rows than the cache holds, so SQLite writes some before the commit.
    GROW = "INSERT INTO Items SELECT one.* FROM Items AS one, Items AS other LIMIT 20000"

    def test_a_kill_during_a_transaction_is_found_in_the_log(self):
        self.assertTrue(self.left_behind("BEGIN", self.GROW))

    def test_an_earlier_transaction_does_not_count(self):
        self.assertFalse(self.left_behind("BEGIN", self.GROW, since=time.time() + 60))

    def test_a_committed_transaction_does_not_count(self):
        self.assertFalse(self.left_behind("BEGIN", self.GROW, "COMMIT"))

    def test_a_rolled_back_transaction_does_not_count(self):
        self.assertFalse(self.left_behind("BEGIN", self.GROW, "ROLLBACK",
                                          "UPDATE Picking SET pickqty = 2 WHERE rowid = 1"))

    def test_a_kill_during_a_transaction_is_found_in_the_journal(self):
        self.change("PRAGMA journal_mode = DELETE")
        self.assertTrue(self.left_behind("BEGIN", self.GROW))
        self.assertFalse(self.left_behind("BEGIN", self.GROW, "COMMIT"))

    def test_a_program_that_ended_before_the_kill_is_found(self):
        self.assertEqual(end_violations(-9, ""), [])
        self.assertEqual(end_violations(-6, "Unresolved error"),
                         ["it ended with -6, saying: Unresolved error"])


if __name__ == "__main__":
    unittest.main()
