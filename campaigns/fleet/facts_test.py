"""Tests that the comparison of stored facts with sent facts can fail."""

import unicodedata
import unittest

from facts import Fact, violations

MUG = Fact("4711", "SO-1", "Κιβώτιο 2", "tasse à café", "5012746100000", 6, "2026-03-04 09:15:00")
TOWEL = MUG._replace(item="20670B", barcode="4006917102819")
BOTH = {MUG, TOWEL}


class Violations(unittest.TestCase):
    def test_facts_stored_as_sent_are_correct(self):
        self.assertEqual(violations(BOTH, BOTH, [TOWEL, MUG]), [])

    def test_a_sent_fact_that_was_not_accepted_is_correct_whether_stored_or_not(self):
        self.assertEqual(violations(BOTH, {MUG}, [MUG]), [])
        self.assertEqual(violations(BOTH, {MUG}, [MUG, TOWEL]), [])

    def test_a_missing_fact_is_found(self):
        self.assertEqual(violations(BOTH, BOTH, [TOWEL]), [f"accepted and not stored: {MUG}"])

    def test_a_duplicate_fact_is_found(self):
        self.assertEqual(violations(BOTH, BOTH, [MUG, TOWEL, MUG]), [f"stored 2 times: {MUG}"])

    def test_a_fact_that_was_never_sent_is_found(self):
        self.assertEqual(violations({MUG}, {MUG}, [MUG, TOWEL]),
                         [f"stored and never sent: {TOWEL}"])

    def test_a_change_of_any_value_is_found(self):
        for name in Fact._fields:
            with self.subTest(name):
                changed = MUG._replace(**{name: getattr(MUG, name) * 2})
                self.assertEqual(violations({MUG}, {MUG}, [changed]),
                                 [f"accepted and not stored: {MUG}",
                                  f"stored and never sent: {changed}"])

    def test_a_change_of_unicode_normalisation_is_found(self):
        other = MUG._replace(item=unicodedata.normalize("NFD", MUG.item))
        self.assertEqual(len(violations({MUG}, {MUG}, [other])), 2)


if __name__ == "__main__":
    unittest.main()
