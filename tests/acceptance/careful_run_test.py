"""A whole delivery under the careful rules, with the real program and the real order service. At its
end the service has exactly what is in the boxes, after everything that the standard rules get wrong:
a box of twenty lines, an item twice in a box, an article that was not ordered, a code beyond ASCII, a
restart, a full disk, and a correction after a send.

Usage: own-session python3 careful_run_test.py FOLDER-OF-THE-PROGRAMS
"""

import json
import subprocess
import sys
import tempfile
import unittest

from picking_run import PickingRun

PROGRAMS = sys.argv.pop(1)

DELIVERY = "A-100"
HEART = "85123A"
CUP = "TASSE-É"
GLOBE = "10002"
OTHERS = [f"2{number:04}" for number in range(1, 18)]
# The lines of the box C1; it has the heart twice.
LINES = [(HEART, 6), *[(item, 3) for item in OTHERS], (CUP, 2), (HEART, 4)]


def barcode_of(item):
    return "4000" + "".join(character for character in item if character.isdigit()).zfill(9)


def order_line(carton, item, quantity):
    return {"cusname": "Harbour Café", "brand": "NORTH QUAY", "cdate": "03/25/2026",
            "date": "04/01/2026", "doc": DELIVERY, "ordernum": "SO-1", "item": item,
            "barcode": barcode_of(item), "descr": f"ARTICLE {item}", "qty": quantity,
            "carton": carton}


class CarefulRun(PickingRun):
    programs = PROGRAMS
    options = ("--rules", "careful")

    def setUp(self):
        lines = [order_line("C1", item, quantity) for item, quantity in LINES]
        lines.append(order_line("C2", HEART, 5))
        globe = {"barcode": barcode_of(GLOBE), "item": GLOBE, "descr": "INFLATABLE GLOBE"}
        file = tempfile.NamedTemporaryFile("w", suffix=".json")
        self.addCleanup(file.close)
        json.dump({"deliveries": lines, "articles": [globe]}, file)
        file.flush()
        self.deliveries = file.name
        super().setUp()

    def new_tablet(self, *command):
        return super().new_tablet("env", "--ignore-signal=XFSZ", *command)

    def open_box(self, box):
        self.tablet.touch("text", "Box")
        self.tablet.expect_focus_in("Box")
        self.tablet.press("ctrl+a")
        self.tablet.type(box)
        self.tablet.press("Return")
        self.tablet.expect_value("Box", box)
        self.tablet.expect_focus_in("Item or barcode")

    def pick(self, code, quantity):
        self.scan(code)
        self.enter(str(quantity))

    def pick_by_hand(self, line, quantity):
        """Touches a line of the open box, which has this name, instead of scanning it."""
        self.tablet.touch("list item", line)
        self.enter(str(quantity))

    def enter_and_see(self, quantity, alert, answer):
        """Enters a quantity, and answers the alert that appears."""
        self.tablet.expect_focus_in("Quantity to add")
        self.tablet.type(str(quantity))
        self.tablet.touch("push button", "OK")
        self.tablet.answer_alert(alert, answer)
        self.tablet.expect_gone("text", "Quantity to add")
        self.tablet.expect_focus_in("Item or barcode")

    def send(self, question):
        self.choose("Complete and Send")
        self.tablet.find("label", question + " Are you sure that picking is completed?")
        self.tablet.answer_alert("Picking Completed?", "YES")
        self.tablet.answer_alert("Picking was sent", "OK")
        self.tablet.touch("text", "Item or barcode")
        self.tablet.expect_focus_in("Item or barcode")

    def reported(self):
        """Returns the quantity of each box and item that the order service has."""
        export = subprocess.run([self.program("cartonpick-orders"), "export", "--store", self.sent,
                                 "--format", "json"], check=True, capture_output=True, text=True)
        return {(line["box"], line["item"]): line["qty"] for line in json.loads(export.stdout)}

    def test_the_order_service_gets_exactly_what_is_in_the_boxes(self):
        self.tablet.find("label", "The careful rules are in use.")
        in_boxes = {("C1", item): 0 for item, _ in LINES} | {("C1", GLOBE): 0, ("C2", HEART): 0}

        def put(box, item, quantity):
            in_boxes[box, item] += quantity

        self.start_picking(DELIVERY)
        self.tablet.touch("push button", "Stop Picking")
        self.tablet.touch("push button", "Reload Items")
        self.tablet.answer_alert("Saved", "OK")
        self.tablet.touch("push button", "Start Picking")
        self.open_box("C1")
        # Some lines beyond the fourth, one of them in part, and the first line of the heart.
        self.pick(barcode_of(HEART), 6)
        put("C1", HEART, 6)
        for item in OTHERS[:10]:
            self.pick(barcode_of(item), 2)
            put("C1", item, 2)
        # The article that was not ordered.
        self.scan(barcode_of(GLOBE))
        self.enter_and_see(2, "2 of 0 ordered?", "YES")
        put("C1", GLOBE, 2)

        self.tablet.kill()
        self.start_program()
        self.start_picking(DELIVERY)
        self.open_box("C1")
        self.tablet.expect_value("Picked", str(sum(in_boxes.values())))
        for item in OTHERS[:10]:
            self.pick(item, 1)
            put("C1", item, 1)
        self.pick(barcode_of(GLOBE), 0)

        self.tablet.set_disk_full(True)
        self.scan(OTHERS[10])
        self.enter_and_see(3, "Quantity not saved", "OK")
        self.tablet.expect_value("Picked", str(sum(in_boxes.values())))
        self.tablet.set_disk_full(False)
        for item in OTHERS[10:]:
            self.pick(item, 3)
            put("C1", item, 3)
        # The first line of the heart is full, so the scan goes to the second one.
        self.pick(HEART, 4)
        put("C1", HEART, 4)
        self.pick_by_hand(f"{CUP}, {barcode_of(CUP)}, ARTICLE {CUP}, picked 0, ordered 2, "
                          "difference -2", 2)
        put("C1", CUP, 2)
        self.tablet.expect_value("Difference", "2")

        self.send(f"Delivery {DELIVERY}. Incomplete boxes: 1, unopened boxes: 1.")
        self.assertEqual(self.reported(), {line: n for line, n in in_boxes.items() if n})

        # One heart is moved from the first box to the second, after the send.
        self.scan(HEART)
        self.tablet.touch("push button", "Minus")
        self.enter("1")
        put("C1", HEART, -1)
        self.open_box("C2")
        self.pick(HEART, 5)
        put("C2", HEART, 5)
        self.send(f"Delivery {DELIVERY}. Incomplete boxes: 1, unopened boxes: 0.")
        self.assertEqual(self.reported(), in_boxes)
        self.assertEqual({(box, item): picked for box, item, _, picked, _ in self.stored()},
                         in_boxes)
        self.assertEqual({row[4] for row in self.stored()}, {1})


if __name__ == "__main__":
    unittest.main(verbosity=2)
