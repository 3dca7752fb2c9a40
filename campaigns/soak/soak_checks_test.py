"""Whether the soak tells what grows from what is flat, and misses what is lost.

Usage: python3 soak_checks_test.py
"""

import os
import random
import sqlite3
import tempfile
import unittest

from sent_lines import fact_of
from soak_deliveries import BOXES, Delivery, article
from soak_flatness import growth, judge, rise
from soak_memory import Sample
from soak_stores import Stores
from store_contents import Row

PICKS = range(100, 10_001, 100)
LIMIT = 4


def noise(seed):
    chance = random.Random(seed)
    return [chance.gauss(0, 1) for _ in PICKS]


class Flatness(unittest.TestCase):
    def test_a_flat_noisy_series_is_flat(self):
        for seed in range(20):
            series = [60 + part for part in noise(seed)]
            self.assertLess(abs(growth(PICKS, series)), LIMIT)
            self.assertLess(abs(rise(series)), LIMIT)

    def test_a_series_that_grows_below_its_noise_grows(self):
        for seed in range(20):
            series = [60 + picks * 6 / 10_000 + part for picks, part in zip(PICKS, noise(seed))]
            self.assertGreater(growth(PICKS, series), LIMIT)

    def test_a_leak_of_a_byte_in_a_pick_is_seen_as_what_it_is(self):
        self.assertAlmostEqual(growth(PICKS, list(PICKS)), 9_900)

    def test_the_warm_up_does_not_count(self):
        series = [min(picks, 2_000) for picks in PICKS]
        self.assertEqual(growth(PICKS, series), 0)
        self.assertEqual(rise(series), 0)

    def test_a_few_peaks_do_not_count(self):
        series = [90 if place % 8 == 0 else 60 for place, _ in enumerate(PICKS)]
        self.assertEqual(growth(PICKS, series), 0)
        self.assertEqual(rise(series), 0)

    def test_a_step_that_stays_is_a_rise(self):
        series = [60 if place < 60 else 66 for place, _ in enumerate(PICKS)]
        self.assertEqual(rise(series), 6)


class Verdict(unittest.TestCase):
    """On the samples of a run whose figures are flat and noisy, but for those that are given."""

    def judge(self, **figures):
        usual = {"rss": 80_000, "pss": 60_000, "private_dirty": 34_000, "descriptors": 17,
                 "threads": 6}
        chance = random.Random(1)
        samples = []
        for place, picks in enumerate(PICKS):
            noisy = {name: value + chance.randrange(400) * (value > 1000)
                     for name, value in usual.items()}
            given = {name: values[place] for name, values in figures.items()}
            samples.append(Sample(**{"seconds": 0, "picks": picks, "deliveries": 0, "reloads": 0,
                                     "store": 0} | noisy | given))
        return judge(samples, LIMIT)[1]

    def test_a_flat_run_is_accepted(self):
        self.assertEqual(self.judge(), [])

    def test_growing_memory_is_refused(self):
        growing = [34_000 + picks for picks in PICKS]
        for figure in "rss", "private_dirty":
            self.assertEqual(len(self.judge(**{figure: growing})), 1)

    def test_growing_descriptors_and_threads_are_refused(self):
        growing = [17 + picks // 2_000 for picks in PICKS]
        for figure in "descriptors", "threads":
            self.assertEqual(len(self.judge(**{figure: growing})), 1)

    def test_the_descriptor_that_sqlite_keeps_is_accepted(self):
        self.assertEqual(self.judge(descriptors=[16] * 50 + [17] * 50), [])

    def test_too_few_samples_are_refused(self):
        self.assertEqual(len(judge([], LIMIT)[1]), 1)


class Losses(unittest.TestCase):
    """Two lines that were picked and sent are in both stores; then somebody changes a store."""

    PICKED_AT = 1_774_500_000_000

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tablet = self.make(folder, "tablet.sqlite", f"Picking ({', '.join(Row._fields)})")
        self.service = self.make(
            folder, "service.sqlite",
            "picked_line (delivery, order_no, box, item, barcode, quantity, picked_at)")
        self.stores = Stores(*(os.path.join(folder.name, name)
                               for name in ("tablet.sqlite", "service.sqlite")))
        self.addCleanup(self.stores.close)
        self.lines = Delivery(0, "checks").lines[BOXES[0]][:2]
        for line in self.lines:
            self.stores.confirm(line, 3)
            self.store(line)

    def make(self, folder, name, table):
        database = sqlite3.connect(os.path.join(folder.name, name), isolation_level=None)
        self.addCleanup(database.close)
        database.execute(f"CREATE TABLE {table}")
        return database

    def store(self, line):
        row = Row(line["barcode"], line["carton"], self.PICKED_AT, line["descr"], line["doc"],
                  line["item"], line["ordernum"], line["qty"], 3, 1)
        self.tablet.execute("INSERT INTO Picking VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", row)
        self.service.execute("INSERT INTO picked_line VALUES (?, ?, ?, ?, ?, ?, ?)", fact_of(row))

    def assert_seen(self):
        self.assertNotEqual(self.stores.violations(), [])

    def test_what_was_confirmed_and_sent_is_there(self):
        self.assertEqual(self.stores.violations(), [])

    def test_a_confirmed_line_that_the_tablet_lost_is_missed(self):
        self.tablet.execute("DELETE FROM Picking WHERE rowid = 1")
        self.assert_seen()

    def test_a_quantity_that_is_another_one_is_seen(self):
        self.tablet.execute("UPDATE Picking SET pickqty = 4 WHERE rowid = 1")
        self.assert_seen()

    def test_a_delivery_that_is_not_marked_as_sent_is_seen(self):
        self.tablet.execute("UPDATE Picking SET sent = 0")
        self.assert_seen()

    def test_a_line_that_the_tablet_has_twice_is_seen(self):
        self.tablet.execute("INSERT INTO Picking SELECT * FROM Picking WHERE rowid = 1")
        self.assert_seen()

    def test_a_sent_line_that_the_service_lost_is_missed(self):
        self.service.execute("DELETE FROM picked_line WHERE rowid = 1")
        self.assert_seen()

    def test_a_sent_line_that_the_service_has_twice_is_seen(self):
        self.service.execute("INSERT INTO picked_line SELECT * FROM picked_line WHERE rowid = 1")
        self.assert_seen()

    def test_a_delivery_of_nobodys_is_seen_on_the_tablet(self):
        self.tablet.execute("INSERT INTO Picking (doc) VALUES ('other')")
        self.assert_seen()

    def test_a_delivery_of_nobodys_is_seen_at_the_service(self):
        self.service.execute("INSERT INTO picked_line (delivery) VALUES ('other')")
        self.assert_seen()


class Catalogue(unittest.TestCase):
    """Two articles are stored after a reload; then somebody changes the store."""

    ARTICLES = [article(number) for number in (1, 2)]

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        path = os.path.join(folder.name, "tablet.sqlite")
        self.tablet = sqlite3.connect(path, isolation_level=None)
        self.addCleanup(self.tablet.close)
        self.tablet.execute("CREATE TABLE Items (item, barcode, descr)")
        self.tablet.executemany("INSERT INTO Items VALUES (:item, :barcode, :descr)",
                                self.ARTICLES[::-1])
        self.stores = Stores(path, "")
        self.addCleanup(self.stores.close)

    def test_the_articles_of_the_service_are_accepted_in_any_order(self):
        self.assertEqual(self.stores.catalogue_violations(self.ARTICLES), [])

    def test_another_article_in_the_place_of_one_is_seen(self):
        for change in "item = '00009A'", "barcode = '4'", "descr = NULL":
            with self.subTest(change):
                self.tablet.execute(f"UPDATE Items SET {change} WHERE rowid = 1")
                self.assertEqual(len(self.stores.catalogue_violations(self.ARTICLES)), 1)

    def test_a_lost_article_and_one_that_is_there_twice_are_seen(self):
        for change in "DELETE FROM Items WHERE rowid = 1", "INSERT INTO Items SELECT * FROM Items":
            with self.subTest(change):
                self.tablet.execute(change)
                self.assertEqual(len(self.stores.catalogue_violations(self.ARTICLES)), 1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
