"""The real program while its clock is set back, or its time zone changes, during a picking.

The unit tests check how times are stored, shown, mailed and sent. This test checks that the
program follows the system's clock and time zone.

Usage: own-session python3 wrong_clock_test.py PROGRAM-FOLDER
"""

import datetime
import sys
import unittest
import zoneinfo

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


class TimedPicking(PickingRun):
    programs = PROGRAMS

    def open_box(self):
        self.start_picking("A-100")
        self.scan("C1")
        self.tablet.expect_focus_in("Item or barcode")

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
        """Checks that the order service has lines with these times, in the order of picking."""
        expected = {(item, quantity, f"{time:%Y-%m-%d %H:%M:%S}")
                    for (item, quantity, _), time in zip(self.picked(), times, strict=True)}
        self.assertEqual({(fact.item, fact.quantity, fact.picked_at)
                          for fact in stored_facts(self.sent, "A-100")}, expected)

    def show_history(self):
        self.tablet.touch("push button", "Stop Picking")
        self.tablet.touch("push button", "Close")
        self.tablet.answer_alert("Close Picking", "OK")
        self.tablet.touch("push button", "History")

    def expect_in_history(self, start, end):
        self.tablet.find("list item", f"Delivery A-100, synchronized Yes, "
                                      f"start {start:%d/%m/%Y %H:%M}, end {end:%d/%m/%Y %H:%M}")


class ClockSetBack(TimedPicking):
    def new_tablet(self, *command):
        self.clock = SettableClock(self.path("clock"), NOON)
        return ProgramByClock(self.clock, self.screen, *command)

    def expect_saved(self, quantity, item, time):
        self.tablet.find("notification", f"Saved {quantity} × {item} in box C1, {time:%H:%M:%S}")

    def test_picks_keep_their_recorded_times_when_the_clock_is_set_back(self):
        self.open_box()
        self.pick(HEART, "6")
        self.expect_saved(6, HEART, NOON)
        self.clock.set(ELEVEN)
        self.pick(LANTERN, "2")
        self.expect_saved(2, LANTERN, ELEVEN)
        self.assertEqual(self.picked(), [(HEART, 6, milliseconds(NOON)),
                                         (LANTERN, 2, milliseconds(ELEVEN))])
        self.send()
        self.expect_sent([NOON, ELEVEN])
        self.show_history()
        self.expect_in_history(ELEVEN, NOON)


@unittest.skipUnless(MOUNTS, "a zone for one program takes mounts, which are not permitted here")
class ZoneChanges(TimedPicking):
    """Picks with the real clock, at first in the time zone of Athens."""

    def new_tablet(self, *command):
        self.began = milliseconds(datetime.datetime.now())
        self.zone = MovableZone(self.path("zone"), MOUNTS, "Europe/Athens")
        return super().new_tablet(*self.zone.around, *command)

    def times(self, zone):
        """Returns the stored times of the picks, as local times in this time zone."""
        return [datetime.datetime.fromtimestamp(time / 1000, zoneinfo.ZoneInfo(zone))
                for _, _, time in self.picked()]

    def test_a_new_time_zone_changes_the_shown_and_sent_times_but_not_the_stored_ones(self):
        self.open_box()
        self.pick(HEART, "6")
        before = self.picked()
        self.zone.move("America/New_York")
        self.pick(LANTERN, "2")
        self.assertEqual(self.picked()[:1], before)
        instants = [self.began, *(time for _, _, time in self.picked()),
                    milliseconds(datetime.datetime.now())]
        self.assertEqual(instants, sorted(instants))
        self.send()
        self.expect_sent(self.times("America/New_York"))
        self.show_history()
        self.expect_in_history(*self.times("America/New_York"))

        after = self.picked()
        self.zone.move("Asia/Tokyo")
        self.tablet.touch("push button", "Back")
        self.tablet.touch("push button", "History")
        self.expect_in_history(*self.times("Asia/Tokyo"))
        self.assertEqual(self.picked(), after)


if __name__ == "__main__":
    unittest.main(verbosity=2)
