"""The task of picking quantities on the keypad, after a scan or a touch."""

from tablet_deliveries import BOXES, PICKED, delivery_lines, picked_row
from screen_work import ScreenWork

QUANTITIES = 6
KEYS = [*"0123456789", "Minus", "OK", "Cancel"]


class PickingWork(ScreenWork):
    name = "picking"

    def prepare(self, tablet):
        lines = delivery_lines(PICKED, BOXES)
        box = self.chance.choice(lines)["carton"]
        self._lines = [line for line in lines if line["carton"] == box]
        tablet.start_picking(PICKED)
        tablet.scan(box)
        tablet.expect_focused("text", "Item or barcode")
        self._learn_places(tablet)

    def _learn_places(self, tablet):
        if tablet.knows("push button", "Cancel"):
            return
        for position in range(len(self._lines)):
            tablet.remember("list item", self._caption(position), position)
        tablet.scan(self._lines[0]["barcode"])
        tablet.expect_focused("text", "Quantity to add")
        for key in KEYS:
            tablet.remember("push button", key)
        tablet.touch("push button", "Cancel")
        tablet.expect_focused("text", "Item or barcode")

    def _caption(self, position):
        line, picked = self._lines[position], self._picked(position)
        return (f"{line['item']}, {line['barcode']}, {line['descr']}, picked {picked}, "
                f"ordered {line['qty']}, difference {picked - line['qty']}")

    def _key(self, position):
        line = self._lines[position]
        return line["doc"], line["carton"], line["item"]

    def _picked(self, position):
        row = self.expected.row(self._key(position))
        return row.pickqty if row else 0

    def run(self, tablet):
        for _ in range(QUANTITIES):
            position = self.chance.randrange(len(self._lines))
            self._open_keypad(tablet, position)
            self._confirm(tablet, position, self._quantity_to_add(position))

    def _quantity_to_add(self, position):
        """Returns a random quantity other than 0. It can be negative, but at least one picked piece
        remains."""
        least = max(-9, 1 - self._picked(position))
        return self.chance.choice([number for number in range(least, 100) if number])

    def _open_keypad(self, tablet, position):
        line = self._lines[position]
        if self.chance.random() < 0.5:
            tablet.touch("list item", self._caption(position), position)
        else:
            tablet.scan(line[self.chance.choice(["item", "barcode"])])
        tablet.expect_focused("text", "Quantity to add")

    def _confirm(self, tablet, position, added):
        line, key = self._lines[position], self._key(position)
        row = self.expected.row(key) or picked_row(line, 0)
        row = row._replace(pickqty=row.pickqty + added)
        self.expected.begin_rows({key: row})
        tablet.touch_buttons(["Minus"] * (added < 0) + [*str(abs(added)), "OK"])
        tablet.expect_showing("notification", rf"Saved {row.pickqty} × {line['item']} in box "
                                              rf"{line['carton']}, \d\d:\d\d:\d\d")
        self.expected.confirm()
