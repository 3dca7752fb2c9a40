"""Finds the positions and shapes of the controls on the screen through AT-SPI.

Usage: own-session python3 soak_survey.py BIN FILE

BIN is the folder with the programs. Writes JSON to the file: the centre of each control that the
soak touches, and the shapes of the captions that it recognises. A name consists of a screen, a
slash and a caption. The screen has the text size as a suffix if it is not the default.
"""

import contextlib
import json
import os
import signal
import sys
import tempfile
import time

from soak_deliveries import BOXES, LINES_IN_SIGHT, Delivery, deliveries_file
from soak_screen import LARGE, QUIET_SECONDS, WatchedScreen
from tablet import Atspi, OrderService, Program, wait_for

KEYPAD = [*"0123456789", "Minus", "OK", "Cancel"]
# The distance in pixels from the left edge of an item to the centre of its patch. Only buttons have
# centred captions.
REACH = 44
# The same for the label with the customer, whose name follows "Customer:".
CUSTOMER_REACH = 140


class Survey:
    """Opens all screens, and picks the second of two deliveries."""

    def __init__(self, screen, tablet, deliveries):
        self._screen = screen
        self._tablet = tablet
        self._deliveries = deliveries
        self.places = {}
        self.shapes = {}

    def note(self, screen, *captions, reach=REACH, **named):
        """Waits until these controls stop moving, and records them.

        A control in `captions` is recorded by its accessible name. In `named`, the key is the
        caption to record, and the value is the accessible name, or its part before a comma.
        """
        wanted = dict(zip(captions, captions)) | {name: caption for caption, name in named.items()}
        boxes = wait_for(lambda: self._resting(wanted), f"{list(wanted)} on {screen}")
        for caption, (role, x, y, width, height) in boxes.items():
            name, middle = f"{screen}/{caption}", (x + width // 2, y + height // 2)
            patch = middle if role == "push button" else (x + reach, middle[1])
            self.places[name] = middle
            self.shapes[name] = self._screen.pixels.shape(*patch), patch

    def _resting(self, wanted):
        boxes = self._boxes(wanted)
        return boxes if len(boxes) == len(wanted) and boxes == self._boxes(wanted) else None

    def _boxes(self, wanted):
        """Returns the roles and bounds of the wanted controls. If several have the same name, the
        topmost one is used."""
        boxes = {}
        for node in self._tablet.showing():
            name = node.get_name()
            caption = wanted.get(name) or wanted.get(name.split(", ")[0])
            if caption:
                box = node.get_extents(Atspi.CoordType.SCREEN)
                boxes[caption] = node.get_role_name(), box.x, box.y, box.width, box.height
        return boxes

    def touch(self, name):
        time.sleep(QUIET_SECONDS)
        self._tablet.click(*self.places[name])

    def take(self):
        self._look_at_start()
        self._look_deliveries_up()
        self._look_at_picking()
        self._look_at_options()
        self._leave()
        self._look_at_history()
        self._look_at_large_text()

    def _look_at_start(self):
        self.note("start", "Picking", "History", "Display")
        self.touch("start/Display")
        self.note("display", "Light", "Dark", "100 %", LARGE, "Done")
        self._close_display("display")
        self.touch("start/Picking")
        self.note("master", "Delivery number", "Search", "Close", "Reload Items")

    def _close_display(self, screen):
        self.touch(f"{screen}/Done")
        self._tablet.expect_gone("push button", "Done")

    def _look_deliveries_up(self):
        self.touch("master/Reload Items")
        self._note_alert("Saved")
        for delivery in self._deliveries:
            self.touch("master/Delivery number")
            self._tablet.press("ctrl+a")
            self._tablet.type(delivery.number)
            self.touch("master/Search")
            self.note("master", reach=CUSTOMER_REACH,
                      **{delivery.customer: f"Customer: {delivery.customer}"})
        self.note("master", "Start Picking")
        # The delivery's header has moved this button down.
        self.note("found", "Reload Items")

    def _note_alert(self, title):
        self.note(title, title, "OK")
        self.touch(f"{title}/OK")
        self._tablet.expect_gone("dialog", title)

    def _look_at_picking(self):
        self.touch("master/Start Picking")
        self.note("master", "Stop Picking", "Box", **{name: f"Box {name}" for name in BOXES})
        self.touch(f"master/{BOXES[0]}")
        lines = self._deliveries[1].lines[BOXES[0]][:LINES_IN_SIGHT]
        self.note("detail", "Item or barcode", "Options", "All", "Different", "Matching",
                  **{str(row): line["item"] for row, line in enumerate(lines)})
        self.touch("detail/0")
        self.note("keypad", *KEYPAD)
        self.touch("keypad/1")
        self.touch("keypad/OK")
        self._tablet.expect_focus_in("Item or barcode")
        self._tablet.type("UNKNOWN")
        self._tablet.press("Return")
        self._note_alert("Unknown Item")

    def _look_at_options(self):
        tablet = self._tablet
        summary = f"Summary for Delivery: {self._deliveries[1].number}"
        self.touch("detail/Options")
        self.note("options", "View Summary", "Complete and Send")
        self.touch("options/View Summary")
        tablet.find("label", summary)
        self.note("summary", "Close")
        self.touch("summary/Close")
        tablet.expect_gone("label", summary)
        tablet.touch("push button", "Options")
        tablet.touch("list item", "Complete and Send")
        self.note("Picking Completed?", "Picking Completed?", "YES")
        self.touch("Picking Completed?/YES")
        self._note_alert("Picking was sent")

    def _leave(self):
        self.touch("master/Stop Picking")
        self.touch("master/Close")
        self._note_alert("Close Picking")

    def _look_at_history(self):
        self._tablet.wait_until_still("push button", "History")
        self.touch("start/History")
        self.note("history", "Back", delivery=f"Delivery {self._deliveries[1].number}")
        self.touch("history/delivery")
        self.note("history summary", "Close")
        self.touch("history summary/Close")
        self._tablet.expect_gone("push button", "Close")
        self._tablet.touch("push button", "Back")

    def _look_at_large_text(self):
        self._tablet.wait_until_still("push button", "Display")
        self.touch("start/Display")
        self._tablet.wait_until_still("push button", "Done")
        self.touch(f"display/{LARGE}")
        self.note(f"display {LARGE}", "100 %", "Done")
        self._close_display(f"display {LARGE}")
        self.note(f"start {LARGE}", "History", "Display")
        self.touch(f"start {LARGE}/History")
        self.note(f"history {LARGE}", "Back")


def main():
    programs, findings = sys.argv[1:]
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    deliveries = [Delivery(index, "survey") for index in range(2)]
    with contextlib.ExitStack() as stack:
        folder = stack.enter_context(tempfile.TemporaryDirectory())
        path = os.path.join(folder, "deliveries.json")
        with open(path, "w", encoding="utf-8") as file:
            json.dump(deliveries_file(deliveries), file)
        screen = WatchedScreen(folder)
        stack.callback(screen.close)
        service = OrderService(os.path.join(programs, "cartonpick-orders"), "--deliveries", path)
        stack.callback(service.close)
        tablet = Program(screen, os.path.join(programs, "cartonpick"), "--service-host",
                         service.host, "--home", os.path.join(folder, "home"))
        stack.callback(tablet.close)
        survey = Survey(screen, tablet, deliveries)
        survey.take()
    with open(findings, "w", encoding="utf-8") as file:
        json.dump({"places": survey.places, "shapes": survey.shapes}, file)


if __name__ == "__main__":
    main()
