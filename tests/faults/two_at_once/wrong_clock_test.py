"""The clock of the real program is set, or its time zone changes, while a delivery is picked.

Usage: own-session python3 wrong_clock_test.py FOLDER-OF-THE-PROGRAMS
"""

import datetime
import os
import sys
import unittest
import zoneinfo
from unittest import mock

from movable_zone import MovableZone, own_mounts
from picking_run import PickingRun
from sent_lines import stored_facts
from settable_clock import ProgramByClock, SettableClock

PROGRAMS = sys.argv.pop(1)
MOUNTS = own_mounts()
HEART, LANTERN = "85123A", "71053"
NOON = datetime.datetime(2026, 3, 2, 12)
ELEVEN = datetime.datetime(2026, 3, 2, 11)


def milliseconds(time):
    return round(time.timestamp() * 1000)


class OddPicking(PickingRun):
    programs = PROGRAMS

    def open_box(self):
        self.start_picking("A-100")
        self.scan("C1")
        self.tablet.expect_keyboard_in("Item or barcode")

    def pick(self, item, quantity):
        self.scan(item)
        self.enter(quantity)

    def picked(self):
        return self.stored("SELECT item, pickqty, datepicked FROM Picking ORDER BY rowid")

    def send(self):
        self.choose("Complete and Send")
        self.tablet.answer_alert("Picking Completed?", "YES")
        self.tablet.answer_alert("Picking was sent", "OK")

    def expect_sent(self, times):
        """The order service has the lines with these times, in the order of their picking."""
        expected = {(item, quantity, f"{time:%Y-%m-%d %H:%M:%S}")
                    for (item, quantity, _), time in zip(self.picked(), times, strict=True)}
        self.assertEqual({(fact.item, fact.quantity, fact.picked_at)
                          for fact in stored_facts(self.sent, "A-100")}, expected)

    def show_history(self):
        self.tablet.touch("push button", "Stop Picking")
        self.tablet.touch("push button", "Close")
        self.tablet.answer_alert("Close Picking", "OK")
        self.tablet.touch("push button", "History")

    def expect_in_history(self, start, end, synchronized="No"):
        self.tablet.find("list item", f"Delivery A-100, synchronized {synchronized}, "
                                      f"start {start:%d/%m/%Y %H:%M}, end {end:%d/%m/%Y %H:%M}")


class OddClock(OddPicking):
    def new_tablet(self, *command):
        self.clock = SettableClock(self.path("clock"), NOON)
        return ProgramByClock(self.clock, self.screen, *command)

    def expect_saved(self, quantity, item, time):
        self.tablet.find("notification", f"Saved {quantity} × {item} in box C1, {time:%H:%M:%S}")

    def pick_over_a_clock_that_is_set_back(self):
        self.open_box()
        self.pick(HEART, "6")
        self.expect_saved(6, HEART, NOON)
        self.clock.set(ELEVEN)
        self.pick(LANTERN, "2")
        self.expect_saved(2, LANTERN, ELEVEN)
        self.assertEqual(self.picked(), [(HEART, 6, milliseconds(NOON)),
                                         (LANTERN, 2, milliseconds(ELEVEN))])

    def test_a_clock_that_is_set_back_makes_no_picking_end_before_it_begins(self):
        self.pick_over_a_clock_that_is_set_back()
        self.show_history()
        self.expect_in_history(ELEVEN, NOON)

    def test_what_was_picked_over_a_clock_that_is_set_back_is_sent_with_its_times(self):
        self.pick_over_a_clock_that_is_set_back()
        self.send()
        self.expect_sent([NOON, ELEVEN])
        self.show_history()
        self.expect_in_history(ELEVEN, NOON, synchronized="Yes")

    def test_a_correction_after_the_clock_was_set_keeps_the_first_time(self):
        self.open_box()
        self.pick(HEART, "3")
        for quantity, time in ((5, NOON - datetime.timedelta(hours=25)),
                               (7, NOON + datetime.timedelta(days=30, hours=1))):
            self.clock.set(time)
            self.pick(HEART, "2")
            self.expect_saved(quantity, HEART, time)
            self.assertEqual(self.picked(), [(HEART, quantity, milliseconds(NOON))])
        self.show_history()
        self.expect_in_history(NOON, NOON)


class OddZone(OddPicking):
    """Picks at the true time, in Athens to begin with."""

    def setUp(self):
        self.began = milliseconds(datetime.datetime.now())
        super().setUp()

    def times(self, zone):
        """What a clock in the zone showed when the lines were picked, by the store."""
        return [datetime.datetime.fromtimestamp(time / 1000, zoneinfo.ZoneInfo(zone))
                for _, _, time in self.picked()]

    def expect_moved(self, before, zone):
        """What is kept is as before, and true; what is shown and sent is of the zone."""
        self.assertEqual(self.picked()[:len(before)], before)
        kept = [self.began, *(time for _, _, time in self.picked()),
                milliseconds(datetime.datetime.now())]
        self.assertEqual(kept, sorted(kept))
        start, end = self.times(zone)
        self.send()
        self.expect_sent([start, end])
        self.show_history()
        self.expect_in_history(start, end, synchronized="Yes")


class ZoneOverRestart(OddZone):
    def start_in(self, zone):
        with mock.patch.dict(os.environ, TZ=zone):
            self.start_program()

    def test_a_zone_that_changed_over_a_restart_moves_what_is_shown_and_not_what_is_kept(self):
        self.open_box()
        self.pick(HEART, "6")
        before = self.picked()
        self.tablet.close()
        self.start_in("America/New_York")
        self.open_box()
        self.pick(LANTERN, "2")
        self.expect_moved(before, "America/New_York")


@unittest.skipUnless(MOUNTS, "a zone for one program takes mounts, which are not permitted here")
class ZoneMeanwhile(OddZone):
    def new_tablet(self, *command):
        self.zone = MovableZone(self.path("zone"), MOUNTS, "Europe/Athens")
        return super().new_tablet(*self.zone.around, *command)

    def test_a_zone_that_changes_meanwhile_moves_what_is_shown_and_not_what_is_kept(self):
        self.open_box()
        self.pick(HEART, "6")
        before = self.picked()
        self.zone.move("America/New_York")
        self.pick(LANTERN, "2")
        self.expect_moved(before, "America/New_York")

        after = self.picked()
        self.zone.move("Asia/Tokyo")
        self.tablet.touch("push button", "Back")
        self.tablet.touch("push button", "History")
        self.expect_in_history(*self.times("Asia/Tokyo"), synchronized="Yes")
        self.assertEqual(self.picked(), after)


if __name__ == "__main__":
    unittest.main(verbosity=2)
