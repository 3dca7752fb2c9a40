"""What a screen reader finds and announces, tested with the real program over AT-SPI.

Usage: own-session python3 screen_reader_test.py PROGRAM-FOLDER
"""

import os
import re
import sys
import tempfile
import unittest

from tablet import Atspi, GLib, NotSeen, OrderService, Program, Screen, wait_for

PROGRAMS = sys.argv.pop(1)
DELIVERIES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "deliveries.json")

HEART = "85123A, 4000000000013, WHITE HANGING HEART HOLDER"
LANTERN = "71053, 4000000000020, METAL LANTERN"
FILTER = [("panel", "Filter", "")] + [("radio button", name, "") for name in
                                      ("All", "Not picked", "Different", "Matching")]
# Controls and containers of controls. All of them need names.
INTERACTIVE = {"push button", "radio button", "text", "list", "list item", "dialog", "panel"}


class EventListener:
    """Receives the events that a screen reader announces."""

    EVENTS = ("object:state-changed:showing", "object:state-changed:focused")

    def __init__(self):
        self._events = []
        self._listener = Atspi.EventListener.new(self._on_event)
        for event in self.EVENTS:
            self._listener.register(event)

    def _on_event(self, event):
        if event.detail1 != 1:
            return
        try:
            source = event.source
            self._events.append((event.type.rsplit(":", 1)[1], source.get_role_name(),
                                source.get_name(), self._dialog_around(source)))
        except GLib.Error:
            pass  # The object no longer exists.

    @staticmethod
    def _dialog_around(node):
        """Returns the name and the description of the dialog that contains the node, or None."""
        while node and node.get_role_name() != "dialog":
            node = node.get_parent()
        return (node.get_name(), node.get_description()) if node else None

    def forget(self):
        self._listen()
        self._events.clear()

    def _listen(self):
        context = GLib.MainContext.default()
        while context.iteration(False):
            pass

    def expect(self, event, role, name, dialog=None):
        """Waits for an event of a control with this role, and a name that matches the pattern."""
        def has_occurred():
            self._listen()
            return any((event, role, dialog) == (one[0], one[1], one[3])
                       and re.fullmatch(name, one[2]) for one in self._events)

        try:
            wait_for(has_occurred, f"{role} {name} to be {event} in {dialog}")
        except NotSeen as not_seen:
            raise NotSeen(f"{not_seen}; received: {self._events}") from None

    def close(self):
        for event in self.EVENTS:
            self._listener.deregister(event)


class ScreenReader(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.screen = Screen(1280, 800)
        self.addCleanup(self.screen.close)
        self.service = OrderService(os.path.join(PROGRAMS, "cartonpick-orders"), "--deliveries",
                                    DELIVERIES)
        self.addCleanup(self.service.close)
        self.tablet = Program(self.screen, os.path.join(PROGRAMS, "cartonpick"), "--service-host",
                              self.service.host, "--home", self.folder.name)
        self.addCleanup(self.tablet.close)
        self.listener = EventListener()
        self.addCleanup(self.listener.close)

    # Navigation.

    def enter_picking(self):
        self.tablet.touch("push button", "Picking")
        self.tablet.expect_focus_in("Delivery number")

    def start_picking(self):
        self.enter_picking()
        self.tablet.type("A-100")
        self.tablet.touch("push button", "Search")
        self.tablet.find("label", "Customer: Harbour Café")
        self.tablet.touch("push button", "Start Picking")
        self.tablet.expect_focus_in("Box")

    def open_box(self):
        self.start_picking()
        self.tablet.touch("list item", "Box C1, picked 0, ordered 11, unopened")
        self.tablet.expect_focus_in("Item or barcode")

    def scan(self, code):
        self.tablet.type(code)
        self.tablet.press("Return")

    def pick(self, code, quantity):
        self.scan(code)
        self.tablet.expect_focus_in("Quantity to add")
        self.tablet.type(quantity)
        self.tablet.touch("push button", "OK")
        self.tablet.expect_focus_in("Item or barcode")

    def choose(self, action):
        self.tablet.touch("push button", "Options")
        self.tablet.touch("list item", action)

    # What the screen reader finds and does.

    def expect(self, *expected):
        """Waits until controls with each (role, name, description) are on the screen, and all
        controls on the screen have names."""
        for role, name, description in expected:
            self.tablet.find(role, name, description)
        wait_for(lambda: all(map(self.has_name, self.tablet.showing())), "names of all controls")

    @staticmethod
    def has_name(node):
        needs_one = (node.get_role_name() in INTERACTIVE
                     or node.get_state_set().contains(Atspi.StateType.FOCUSABLE))
        return node.get_name() != "" or not needs_one

    def act(self, role, name):
        """Performs the control's action through AT-SPI."""
        self.assertTrue(Atspi.Action.do_action(self.tablet.find(role, name), 0))

    def expect_checked(self, *names):
        def checked():
            return [node.get_name() for node in self.tablet.showing()
                    if node.get_state_set().contains(Atspi.StateType.CHECKED)]

        wait_for(lambda: checked() == list(names), f"{names} to be checked")

    # What is on the screen.

    def test_the_start_screen_is_accessible(self):
        self.expect(("heading", "CartonPick", ""), ("push button", "Picking", ""),
                    ("push button", "History", ""), ("push button", "Display", ""),
                    ("label", f"Order service: {self.service.host}", "Order service in use"))

    def test_the_display_sheet_is_accessible(self):
        self.tablet.touch("push button", "Display")
        self.expect(("dialog", "Display", ""), ("panel", "Theme", ""),
                    ("radio button", "Light", ""), ("panel", "Text size", ""),
                    ("radio button", "100 %", ""), ("push button", "Done", ""))

    def test_the_picking_screen_is_accessible_before_a_lookup(self):
        self.enter_picking()
        self.expect(("text", "Delivery number", None), ("text", "Box", None),
                    ("push button", "Search", ""), ("push button", "Start Picking", ""),
                    ("push button", "Reload Items", ""), ("push button", "Close", ""),
                    ("label", "0", "Boxes"), ("label", "-", "Picked"),
                    ("push button", "Open a box first", "Shows the last scans"))

    def test_the_picking_screen_is_accessible_with_an_open_box(self):
        self.open_box()
        self.pick("71053", "2")
        self.expect(("push button", "Stop Picking", ""), ("push button", "Close", ""),
                    ("label", "2", "Boxes"), ("label", "1", "Unopened"),
                    ("label", "0", "Completed"), ("label", "1", "Incomplete"),
                    ("list", "Boxes", ""),
                    ("list item", "Box C1, picked 2, ordered 11, incomplete", ""),
                    ("list item", "Box C2, picked 0, ordered 9, unopened", ""))
        self.expect(("text", "Item or barcode", None), ("push button", "Options", ""),
                    ("push button", "Ready to scan", "Shows the last scans"),
                    ("label", "C1", "Box"), ("label", "2", "Picked"), ("label", "11", "Ordered"),
                    ("label", "-9", "Difference"), *FILTER, ("list", "Lines", ""),
                    ("list item", f"{HEART}, picked 0, ordered 6, difference -6", ""),
                    ("list item", f"{LANTERN}, picked 2, ordered 2, difference 0", ""))

    def test_the_last_scans_are_accessible(self):
        self.open_box()
        self.pick("71053", "2")
        self.tablet.touch("push button", "Ready to scan")
        self.expect(("dialog", "Last scans", ""), ("list", "Last scans", ""))
        row = wait_for(lambda: self.tablet.names("list item", "71053, Booked"), "the scan")[0]
        self.assertRegex(row, r"^\d\d:\d\d:\d\d, 71053, Booked to line 2$")

    def test_the_keypad_is_accessible(self):
        self.open_box()
        self.pick("71053", "2")
        self.scan("71053")
        self.expect(("dialog", "Quantity", "71053, METAL LANTERN"),
                    ("text", "Quantity to add", None),
                    *(("push button", name, "") for name in (*"0123456789", "Minus", "OK",
                                                             "Cancel")),
                    ("label", "71053", "Item Code"), ("label", "4000000000020", "Barcode"),
                    ("label", "METAL LANTERN", "Description"), ("label", "2", "Current"),
                    ("label", "2", "Total"), ("label", "2", "Ordered"))

    def test_the_action_list_and_the_summary_are_accessible(self):
        self.open_box()
        self.pick("71053", "2")
        self.tablet.touch("push button", "Options")
        self.expect(("dialog", "Options", ""), ("list", "Options", ""),
                    ("list item", "View Summary", ""), ("list item", "Send Email", ""),
                    ("list item", "Complete and Send", ""))
        self.tablet.touch("list item", "View Summary")
        self.expect(("panel", "Summary", ""), ("push button", "Close", ""), *FILTER,
                    ("label", "Summary for Delivery: A-100", "Delivery"), ("label", "2", "Picked"),
                    ("label", "20", "Ordered"), ("label", "-18", "Difference"),
                    ("list item", f"{LANTERN}, picked 2, ordered 2, difference 0", ""))

    def test_the_history_is_accessible(self):
        self.open_box()
        self.pick("71053", "2")
        self.tablet.touch("push button", "Stop Picking")
        self.tablet.touch("push button", "Close")
        self.tablet.answer_alert("Close Picking", "OK")
        self.tablet.touch("push button", "History")
        self.expect(("heading", "History", ""), ("push button", "Back", ""),
                    ("list", "Deliveries", ""))
        row = wait_for(lambda: self.tablet.names("list item", "A-100"), "the delivery")[0]
        time = r"\d\d/\d\d/\d{4} \d\d:\d\d"
        self.assertRegex(row, f"^Delivery A-100, synchronized No, start {time}, end {time}$")
        self.tablet.touch("list item", row)
        self.expect(("panel", "Summary", ""), ("label", "2", "Ordered"))

    def test_an_alert_is_accessible(self):
        self.enter_picking()
        self.tablet.touch("push button", "Close")
        message = "Are you sure you want to leave picking?"
        self.expect(("dialog", "Close Picking", message), ("heading", "Close Picking", ""),
                    ("label", message, ""), ("push button", "OK", ""),
                    ("push button", "Cancel", ""))

    # What is announced.

    def test_every_saved_quantity_is_announced(self):
        self.open_box()
        for quantity, sum_of_all in (("2", "2"), ("3", "5")):
            self.listener.forget()
            self.pick("71053", quantity)
            self.listener.expect("showing", "notification",
                            rf"Saved {sum_of_all} × 71053 in box C1, \d\d:\d\d:\d\d")

    def test_an_alert_takes_the_focus_and_announces_its_message(self):
        self.open_box()
        self.listener.forget()
        self.scan("no such code")
        self.listener.expect("focused", "push button", "OK",
                        ("Unknown Item", "Item no such code not found!"))
        self.tablet.press("Escape")
        self.listener.expect("focused", "text", "Item or barcode")

    def test_a_question_initially_focuses_no(self):
        self.open_box()
        self.listener.forget()
        self.choose("Complete and Send")
        self.listener.expect("focused", "push button", "NO",
                        ("Picking Completed?", "Are you sure that picking is completed?"))

    def test_the_keypad_announces_its_line(self):
        self.open_box()
        self.listener.forget()
        self.scan("71053")
        self.listener.expect("focused", "text", "Quantity to add",
                        ("Quantity", "71053, METAL LANTERN"))

    def test_the_arrow_keys_announce_the_current_row(self):
        self.open_box()
        self.tablet.touch("push button", "Options")
        self.listener.expect("focused", "list item", "View Summary", ("Options", ""))
        self.tablet.press("Down")
        self.listener.expect("focused", "list item", "Send Email", ("Options", ""))

    # Actions performed by a screen reader.

    def test_a_quantity_can_be_saved_with_accessibility_actions_only(self):
        self.act("push button", "Picking")
        self.tablet.expect_focus_in("Delivery number")
        self.tablet.type("A-100")
        self.act("push button", "Search")
        self.tablet.find("label", "Customer: Harbour Café")
        self.act("push button", "Start Picking")
        self.act("list item", "Box C1, picked 0, ordered 11, unopened")
        self.act("list item", f"{LANTERN}, picked 0, ordered 2, difference -2")
        self.act("push button", "2")
        self.act("push button", "OK")
        self.tablet.find("list item", f"{LANTERN}, picked 2, ordered 2, difference 0")

    def test_a_filter_can_be_chosen_and_its_state_is_reported(self):
        self.open_box()
        self.expect_checked("All")
        self.act("radio button", "Matching")
        self.expect_checked("Matching")
        self.tablet.find("label", "No lines to show")


if __name__ == "__main__":
    unittest.main(verbosity=2)
