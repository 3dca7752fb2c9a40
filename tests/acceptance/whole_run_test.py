"""One delivery from its lookup to the history, with the real program and the real order service.

Usage: own-session python3 whole_run_test.py PROGRAM-FOLDER
"""

import os
import sqlite3
import sys
import unittest

from picking_run import PickingRun
from tablet import Program

PROGRAMS = sys.argv.pop(1)

LANTERN = "4000000000020"
CACTUS = "4000000000914"


class WholeRun(PickingRun):
    programs = PROGRAMS

    def test_a_picked_quantity_is_restored_after_the_program_is_killed(self):
        tablet = self.tablet
        self.start_picking("A-100")
        tablet.expect_value("Boxes", "2")
        tablet.expect_value("Unopened", "2")

        tablet.touch("list item", "Box C1, picked 0, ordered 11, unopened")
        tablet.expect_focus_in("Item or barcode")
        tablet.expect_value("Difference", "-11")
        tablet.touch("list item", "85123A, 4000000000013, WHITE HANGING HEART HOLDER, "
                                  "picked 0, ordered 6, difference -6")
        self.enter("6")
        tablet.find("list item", "85123A, 4000000000013, WHITE HANGING HEART HOLDER, "
                                 "picked 6, ordered 6, difference 0")
        tablet.expect_value("Picked", "6")
        tablet.expect_value("Incomplete", "1")
        tablet.find("list item", "Box C1, picked 6, ordered 11, incomplete")
        self.assertEqual(self.stored(), [("C1", "85123A", 6, 6, 0)])

        tablet.kill()
        self.start_program()
        self.start_picking("A-100")
        self.tablet.expect_value("Incomplete", "1")
        self.tablet.touch("list item", "Box C1, picked 6, ordered 11, incomplete")
        self.tablet.find("list item", "85123A, 4000000000013, WHITE HANGING HEART HOLDER, "
                                      "picked 6, ordered 6, difference 0")

    def test_the_demo_is_offered_when_no_service_is_configured(self):
        self.tablet.close()
        home = self.path("home")
        self.tablet = Program(self.screen, self.program("cartonpick"), "--home", home)
        self.tablet.touch("push button", "Try the demo")
        self.tablet.expect_gone("push button", "Try the demo")
        self.look_up("4711")
        self.tablet.find("label", "Customer: Rosie's Kitchen")
        self.assertTrue(os.path.exists(os.path.join(home, "demo", "Documents", "QIR_Pick.sqlite")))

    def test_a_delivery_is_picked_corrected_sent_and_listed_in_the_history(self):
        tablet = self.tablet
        self.start_picking("A-100")
        tablet.touch("push button", "Stop Picking")
        tablet.touch("push button", "Reload Items")
        tablet.answer_alert("Saved", "OK")
        self.assertEqual(self.stored("SELECT count(*) FROM Items"), [(7,)])
        # The catalogue has replaced the lookup's answer, so the delivery is looked up again.
        tablet.touch("push button", "Search")
        tablet.expect_gone("label", "Looking up the delivery …")
        tablet.touch("push button", "Start Picking")
        tablet.expect_focus_in("Box")
        tablet.type("C1")
        tablet.press("Return")
        tablet.expect_focus_in("Item or barcode")

        self.scan(LANTERN)
        self.enter("3")
        self.assertEqual(self.stored(), [("C1", "71053", 2, 3, 0)])
        # An article of the catalogue is booked to the last line of the box.
        self.scan(CACTUS)
        self.enter("1")
        self.assertEqual(self.stored()[-1], ("C1", "22752", 3, 1, 0))
        self.scan("no such code")
        tablet.answer_alert("Unknown Item", "OK")
        tablet.expect_focus_in("Item or barcode")
        # One lantern too many is removed.
        self.scan("71053")
        tablet.touch("push button", "Minus")
        tablet.type("1")
        tablet.touch("push button", "OK")
        tablet.expect_focus_in("Item or barcode")
        self.assertEqual(self.stored()[0], ("C1", "71053", 2, 2, 0))

        self.choose("View Summary")
        tablet.find("label", "Summary for Delivery: A-100")
        tablet.expect_value("Ordered", "20")
        tablet.expect_value("Picked", "3")
        tablet.touch("push button", "Close")
        tablet.expect_gone("label", "Summary for Delivery: A-100")

        self.choose("Send Email")
        tablet.expect_gone("list item", "Send Email")
        with open(self.documents("VardexExport.csv"), "rb") as export:
            lines = export.read().split(b"\r")
        self.assertEqual([len(line.split(b";")) for line in lines[:-1]], [10, 10])
        self.assertEqual(lines[-1], b"")

        self.choose("Complete and Send")
        tablet.answer_alert("Picking Completed?", "NO")
        self.assertEqual({row[4] for row in self.stored()}, {0})
        self.choose("Complete and Send")
        tablet.answer_alert("Picking Completed?", "YES")
        tablet.answer_alert("Picking was sent", "OK")
        self.assertEqual({row[4] for row in self.stored()}, {1})
        self.choose("Complete and Send")
        tablet.answer_alert("Picking Completed?", "YES")
        tablet.answer_alert("No picking to send", "OK")
        self.choose("Send Email")
        tablet.answer_alert("No picking to send via email", "OK")
        with sqlite3.connect(f"file:{self.sent}?mode=ro", uri=True) as db:
            table = db.execute("SELECT name FROM sqlite_master WHERE type = 'table'").fetchone()[0]
            self.assertEqual(db.execute(f"SELECT count(*) FROM {table}").fetchone(), (2,))

        # One more line after the send. The scan field lost the focus to the menu.
        tablet.touch("text", "Item or barcode")
        tablet.expect_focus_in("Item or barcode")
        self.scan("85123A")
        self.enter("6")
        tablet.touch("push button", "Stop Picking")
        tablet.touch("push button", "Search")
        tablet.answer_alert("This picking has already been sent to the server", "OK")
        tablet.touch("push button", "Close")
        tablet.answer_alert("Close Picking", "OK")

        tablet.touch("push button", "History")
        tablet.find("heading", "History")
        rows = tablet.names("list item", "Delivery A-100, synchronized ")
        self.assertEqual(sorted(row.split(", ")[1] for row in rows),
                         ["synchronized No", "synchronized Yes"])
        tablet.touch("list item", rows[0])
        tablet.find("label", "Summary for Delivery: A-100")
        tablet.touch("push button", "Close")
        tablet.expect_gone("label", "Summary for Delivery: A-100")
        tablet.touch("push button", "Back")
        tablet.find("push button", "Picking")


if __name__ == "__main__":
    unittest.main(verbosity=2)
