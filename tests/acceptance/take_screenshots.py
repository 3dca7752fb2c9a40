"""Takes a picture of every screen, on the demo deliveries, lying and upright.

Usage: dbus-run-session -- python3 take_screenshots.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-PICTURES
"""

import os
import sys
import tempfile

from tablet import OrderService, Program, Screen

MUG = "20138A, 5012746100000, WHITE ENAMEL MUG 350ML, picked 0, ordered 1, difference -1"


class Tour:
    def __init__(self, programs, pictures, width, height):
        self._pictures = pictures
        self._size = f"{width}x{height}"
        self._home = tempfile.TemporaryDirectory()
        self._screen = Screen(width, height)
        self._service = OrderService(os.path.join(programs, "cartonpick-orders"))
        self._tablet = Program(self._screen, os.path.join(programs, "cartonpick"),
                               "--service-host", self._service.host, "--home", self._home.name)

    def close(self):
        self._tablet.close()
        self._service.close()
        self._screen.close()
        self._home.cleanup()

    def picture(self, name):
        self._screen.save_picture(os.path.join(self._pictures, f"{name}-{self._size}.png"))

    def take(self):
        self._start()
        self._find_delivery()
        self._pick()
        self._summary()
        self._send()
        self._history()

    def _start(self):
        self._tablet.find("push button", "Picking")
        self.picture("start")

    def _find_delivery(self):
        tablet = self._tablet
        tablet.touch("push button", "Picking")
        tablet.expect_keyboard_in("Delivery number")
        tablet.touch("push button", "Search")
        tablet.find("dialog", "Please fill in data first")
        self.picture("alert")
        tablet.answer_alert("Please fill in data first", "OK")
        tablet.expect_keyboard_in("Delivery number")
        tablet.type("4711")
        tablet.touch("push button", "Search")
        tablet.find("label", "Customer: Rosie's Kitchen")
        tablet.expect_gone("dialog", "Looking up the delivery …")
        self.picture("delivery")
        tablet.touch("push button", "Start Picking")
        tablet.expect_keyboard_in("Box")
        self.picture("boxes")

    def _enter(self, quantity):
        self._tablet.expect_keyboard_in("Quantity to add")
        self._tablet.type(quantity)

    def _confirm(self):
        self._tablet.touch("push button", "OK")
        self._tablet.expect_gone("text", "Quantity to add")
        self._tablet.expect_keyboard_in("Item or barcode")

    def _scan(self, code, quantity):
        self._tablet.type(code)
        self._tablet.press("Return")
        self._enter(quantity)
        self._confirm()

    def _pick(self):
        tablet = self._tablet
        tablet.type("C002")
        tablet.press("Return")
        tablet.find("list item", "Box C002, picked 0, ordered 30, unopened")
        tablet.expect_keyboard_in("Item or barcode")
        for name in tablet.names("list item", ", picked 0, ordered"):
            code = name.split(", ")[0]
            ordered = name.split("ordered ")[1].split(",")[0]
            if not name.startswith("Box"):
                self._scan(code, ordered)
        tablet.touch("list item", "Box C001, picked 0, ordered 22, unopened")
        tablet.find("list item", MUG)
        self._scan("20176R", "4")
        tablet.touch("list item", MUG)
        self._enter("1")
        tablet.expect_value("Total", "1")
        self.picture("keypad")
        self._confirm()
        self.picture("picking")
        tablet.touch("push button", "Different")
        tablet.expect_gone("list item", MUG.replace("picked 0", "picked 1").replace("-1", "0"))
        self.picture("filter")
        tablet.touch("push button", "All")

    def _summary(self):
        tablet = self._tablet
        tablet.touch("push button", "Options")
        tablet.find("list item", "View Summary")
        self.picture("options")
        tablet.touch("list item", "View Summary")
        tablet.find("label", "Summary for Delivery: 4711")
        tablet.wait_until_still("push button", "Close")
        self.picture("summary")
        tablet.touch("push button", "Close")
        tablet.expect_gone("label", "Summary for Delivery: 4711")
        tablet.wait_until_still("push button", "Options")

    def _send(self):
        tablet = self._tablet
        tablet.touch("push button", "Options")
        tablet.touch("list item", "Complete and Send")
        tablet.find("dialog", "Picking Completed?")
        self.picture("question")
        tablet.answer_alert("Picking Completed?", "YES")
        tablet.answer_alert("Picking was sent", "OK")

    def _history(self):
        tablet = self._tablet
        tablet.touch("push button", "Stop Picking")
        tablet.touch("push button", "Close")
        tablet.answer_alert("Close Picking", "OK")
        tablet.touch("push button", "History")
        tablet.find("heading", "History")
        self.picture("history")
        tablet.touch("list item", tablet.names("list item", "Delivery 4711")[0])
        tablet.find("label", "Summary for Delivery: 4711")
        tablet.wait_until_still("push button", "Close")
        self.picture("history-summary")


def main():
    programs, pictures = sys.argv[1:]
    for size in ((1280, 800), (800, 1280)):
        tour = Tour(programs, pictures, *size)
        try:
            tour.take()
        finally:
            tour.close()


main()
