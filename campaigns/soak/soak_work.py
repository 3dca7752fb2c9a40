"""The work of a picker, at high speed."""

import collections
import random

from soak_deliveries import BOXES, LINES_IN_A_BOX, LINES_IN_SIGHT, article, articles
from soak_screen import LARGE, TIMEOUT_SECONDS, NotSeen, wait_for

UNKNOWN = "0000000"
# One in this number of quantities corrects an earlier quantity of the box.
CORRECTIONS = 5
# The list is scrolled to its top when one of these rows is current.
TOP_ROWS = range(4)
SECONDS_TO_TOUCH_AGAIN = 3


class Picker:
    """Picks through a driver and a caption reader. Calls `when_picked` after each confirmed
    quantity."""

    def __init__(self, driver, reader, stores, seed, when_picked):
        self._driver = driver
        self._reader = reader
        self._stores = stores
        self._chance = random.Random(seed)
        self._when_picked = when_picked
        self._theme = "Light"
        self.counts = collections.Counter()
        self.wrong = []

    # Input.

    def _touch(self, *names):
        self._driver.touch(*(self._reader.places[name] for name in names))

    def _touch_until(self, name, is_done):
        """Touches repeatedly until `is_done`, because a moving control ignores touches."""
        for _ in range(TIMEOUT_SECONDS // SECONDS_TO_TOUCH_AGAIN):
            self._touch(name)
            try:
                return wait_for(is_done, name, SECONDS_TO_TOUCH_AGAIN)
            except NotSeen:
                pass
        raise NotSeen(f"what comes of a touch of {name}")

    def _touch_away(self, name):
        self._touch_until(name, lambda: not self._reader.sees(name))

    def _answer(self, title):
        self._reader.expect(f"{title}/{title}")
        self._reader.expect(f"{title}/OK")
        self._touch(f"{title}/OK")
        self._reader.expect_gone(f"{title}/OK")

    def _close_summary(self, button, next_button, is_next):
        self._reader.expect(button)
        self._touch_away(button)
        self._reader.expect(next_button)
        self._touch_until(next_button, lambda: self._reader.sees(is_next))

    # Between deliveries.

    def enter_picking(self):
        self._touch("start/Picking")
        self._reader.expect("master/Search")

    def reload(self):
        pane = "found" if self._reader.sees("found/Reload Items") else "master"
        self._touch(f"{pane}/Reload Items")
        self._answer("Saved")
        self.counts["reloads"] += 1
        self.wrong += self._stores.catalogue_violations(articles())

    def look_around(self):
        """Opens the history in two text sizes, changes the theme, and returns to picking."""
        self._touch("master/Close")
        self._answer("Close Picking")
        self._reader.expect("start/History")
        self._look_at_history()
        self._touch("start/Display")
        self._choose("display", LARGE, f"display {LARGE}")
        self._touch(f"start {LARGE}/History")
        self._reader.expect(f"history {LARGE}/Back")
        self._touch(f"history {LARGE}/Back")
        self._reader.expect(f"start {LARGE}/Display")
        self._touch(f"start {LARGE}/Display")
        self._choose(f"display {LARGE}", "100 %", "display")
        self._theme = "Dark" if self._theme == "Light" else "Light"
        self._touch("start/Display")
        self._choose("display", self._theme, "display")
        self.counts["changes of theme and text size"] += 1
        self.enter_picking()

    def _choose(self, screen, choice, then):
        """Chooses a setting on the display sheet and closes it. `then` is the name of the screen
        after the change."""
        self._reader.expect(f"{screen}/Done")
        self._touch(f"{screen}/{choice}")
        self._reader.expect(f"{then}/Done")
        self._touch(f"{then}/Done")
        self._reader.expect_gone(f"{then}/Done")

    def _look_at_history(self):
        self._touch("start/History")
        self._reader.expect("history/Back")
        self._touch("history/delivery")
        self._close_summary("history summary/Close", "history/Back", "start/Display")
        self.counts["looks at the history"] += 1

    # A delivery.

    def pick(self, delivery, quantities):
        """Picks a delivery, from lookup to sending, with this number of quantities."""
        self._look_up(delivery)
        self._touch("master/Start Picking")
        self._reader.expect("master/Stop Picking")
        boxes = self._chance.sample(BOXES, len(BOXES))
        for place, box in enumerate(boxes):
            count = (quantities + place) // len(boxes)
            lines = delivery.lines[box]
            self._open(box)
            self._pick_box(lines, count - 1 if place == len(boxes) - 1 else count)
        self._book_to_last_line(delivery.foreign, lines)
        self._refuse_and_cancel(lines)
        self._touch("detail/Different", "detail/Matching", "detail/All")
        self._look_at_summary_and_send(delivery.number)
        self._touch("master/Stop Picking")
        self._reader.expect("master/Start Picking")
        self.counts["deliveries"] += 1

    def _look_up(self, delivery):
        self._touch("master/Delivery number")
        self._driver.type(delivery.number)
        self._touch("master/Search")
        self._reader.expect(f"master/{delivery.customer}")
        self._reader.expect("master/Start Picking")

    def _open(self, box):
        if self._chance.random() < 0.5:
            self._touch(f"master/{box}")
        else:
            self._touch("master/Box")
            self._driver.scan(box)

    def _pick_box(self, lines, count):
        fresh = min(count - count // CORRECTIONS, LINES_IN_A_BOX)
        rows = self._chance.sample(range(LINES_IN_A_BOX), fresh)
        before = None
        for row in rows:
            if before in TOP_ROWS and row < LINES_IN_SIGHT:
                self._touch(f"detail/{row}")
                self.counts["picks by touch"] += 1
            else:
                self._scan(lines[row])
            self._enter(lines[row], lines[row]["qty"])
            before = row
        for row in self._chance.choices(rows, k=count - fresh):
            self._scan(lines[row])
            is_one = self._stores.confirmed(lines[row]) == 1
            self._enter(lines[row], 1 if is_one else -1)
            self.counts["corrections"] += 1

    def _scan(self, line):
        self._driver.scan(line[self._chance.choice(["item", "barcode"])])

    def _enter(self, line, added):
        quantity = self._stores.confirmed(line) + added
        self._reader.expect("keypad/OK")
        keys = ["Minus"] * (added < 0) + [*str(abs(added)), "OK"]
        self._touch(*(f"keypad/{key}" for key in keys))
        wait_for(lambda: self._stores.has(line, quantity),
                 f"{quantity} × {line['item']} in box {line['carton']} of {line['doc']} on disk")
        self._reader.expect_gone("keypad/OK")
        self._stores.confirm(line, quantity)
        self.counts["picks"] += 1
        self._when_picked()

    def _book_to_last_line(self, number, lines):
        """Scans an article that is not in the box. It is booked to the last line of the box."""
        self._driver.scan(article(number)["barcode"])
        self._enter(lines[-1], 1)

    def _refuse_and_cancel(self, lines):
        self._driver.scan(UNKNOWN)
        self._answer("Unknown Item")
        self._scan(lines[0])
        self._reader.expect("keypad/Cancel")
        self._touch("keypad/Cancel")
        self._reader.expect_gone("keypad/Cancel")

    def _look_at_summary_and_send(self, number):
        self._touch_until("detail/Options", lambda: self._reader.sees("options/View Summary"))
        self._touch_away("options/View Summary")
        self._close_summary("summary/Close", "detail/Options", "options/Complete and Send")
        self._touch_away("options/Complete and Send")
        self._reader.expect("Picking Completed?/YES")
        self._touch_away("Picking Completed?/YES")
        self._answer("Picking was sent")
        self.wrong += self._stores.sent_violations(number)
