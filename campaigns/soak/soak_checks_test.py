"""Tests that the soak distinguishes growth from noise, and finds lost and duplicate data.

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
    def test_noise_is_not_growth(self):
        for seed in range(20):
            series = [60 + part for part in noise(seed)]
            self.assertLess(abs(growth(PICKS, series)), LIMIT)
            self.assertLess(abs(rise(series)), LIMIT)

    def test_growth_is_found_despite_noise(self):
        for seed in range(20):
            series = [60 + picks * 6 / 10_000 + part for picks, part in zip(PICKS, noise(seed))]
            self.assertGreater(growth(PICKS, series), LIMIT)

    def test_growth_is_the_increase_over_the_whole_run(self):
        self.assertAlmostEqual(growth(PICKS, list(PICKS)), 9_900)

    def test_the_warm_up_does_not_count(self):
        series = [min(picks, 2_000) for picks in PICKS]
        self.assertEqual(growth(PICKS, series), 0)
        self.assertEqual(rise(series), 0)

    def test_a_few_peaks_do_not_count(self):
        series = [90 if place % 8 == 0 else 60 for place, _ in enumerate(PICKS)]
        self.assertEqual(growth(PICKS, series), 0)
        self.assertEqual(rise(series), 0)

    def test_a_permanent_step_is_a_rise(self):
        series = [60 if place < 60 else 66 for place, _ in enumerate(PICKS)]
        self.assertEqual(rise(series), 6)


class Verdict(unittest.TestCase):
    """The verdict on samples. Figures that a test does not give are flat with noise."""

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

    def test_growing_memory_is_rejected(self):
        growing = [34_000 + picks for picks in PICKS]
        for figure in "rss", "private_dirty":
            self.assertEqual(len(self.judge(**{figure: growing})), 1)

    def test_growing_descriptors_and_threads_are_rejected(self):
        growing = [17 + picks // 2_000 for picks in PICKS]
        for figure in "descriptors", "threads":
            self.assertEqual(len(self.judge(**{figure: growing})), 1)

    def test_one_additional_descriptor_is_accepted(self):
        self.assertEqual(self.judge(descriptors=[16] * 50 + [17] * 50), [])

    def test_too_few_samples_are_rejected(self):
        self.assertEqual(len(judge([], LIMIT)[1]), 1)


class Losses(unittest.TestCase):
    """Both stores have two lines that were picked and sent. Each test then changes one store."""

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

    def test_correct_stores_are_accepted(self):
        self.assertEqual(self.stores.violations(), [])

    def test_a_confirmed_line_that_the_tablet_lost_is_found(self):
        self.tablet.execute("DELETE FROM Picking WHERE rowid = 1")
        self.assert_seen()

    def test_a_different_quantity_is_found(self):
        self.tablet.execute("UPDATE Picking SET pickqty = 4 WHERE rowid = 1")
        self.assert_seen()

    def test_a_delivery_that_is_not_marked_as_sent_is_found(self):
        self.tablet.execute("UPDATE Picking SET sent = 0")
        self.assert_seen()

    def test_a_duplicate_line_on_the_tablet_is_found(self):
        self.tablet.execute("INSERT INTO Picking SELECT * FROM Picking WHERE rowid = 1")
        self.assert_seen()

    def test_a_sent_line_that_the_service_lost_is_found(self):
        self.service.execute("DELETE FROM picked_line WHERE rowid = 1")
        self.assert_seen()

    def test_a_duplicate_line_at_the_service_is_found(self):
        self.service.execute("INSERT INTO picked_line SELECT * FROM picked_line WHERE rowid = 1")
        self.assert_seen()

    def test_an_unknown_delivery_on_the_tablet_is_found(self):
        self.tablet.execute("INSERT INTO Picking (doc) VALUES ('other')")
        self.assert_seen()

    def test_an_unknown_delivery_at_the_service_is_found(self):
        self.service.execute("INSERT INTO picked_line (delivery) VALUES ('other')")
        self.assert_seen()


class Catalogue(unittest.TestCase):
    """Two articles are stored after a reload. Each test then changes the store."""

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

    def test_a_replaced_article_is_found(self):
        for change in "item = '00009A'", "barcode = '4'", "descr = NULL":
            with self.subTest(change):
                self.tablet.execute(f"UPDATE Items SET {change} WHERE rowid = 1")
                self.assertEqual(len(self.stores.catalogue_violations(self.ARTICLES)), 1)

    def test_a_lost_article_and_a_duplicate_article_are_found(self):
        for change in "DELETE FROM Items WHERE rowid = 1", "INSERT INTO Items SELECT * FROM Items":
            with self.subTest(change):
                self.tablet.execute(change)
                self.assertEqual(len(self.stores.catalogue_violations(self.ARTICLES)), 1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
