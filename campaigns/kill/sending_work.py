"""The task of completing and sending a delivery."""

import itertools

from tablet_deliveries import delivery_to_send
from screen_work import ScreenWork
from sent_lines import sent_violations, stored_facts


class SendingWork(ScreenWork):
    name = "sending"

    def __init__(self, workplace, chance):
        super().__init__(workplace, chance)
        self._numbers = itertools.count()

    def prepare(self, tablet):
        self._delivery = delivery_to_send(next(self._numbers))
        tablet.start_picking(self._delivery)
        tablet.touch("push button", "Options")
        tablet.expect_focused("list item", "View Summary")
        tablet.touch("list item", "Complete and Send")
        tablet.expect_focused("push button", "NO")
        tablet.remember("push button", "YES")

    def run(self, tablet):
        self.expected.begin_rows({line: row._replace(sent=1) for line, row in
                                  self.expected.rows_of(self._delivery).items()})
        tablet.touch("push button", "YES")
        tablet.expect_showing("dialog", "Picking was sent")
        self.expected.confirm()

    def violations(self, contents):
        rows = [row for row in contents.picked().values() if row.doc == self._delivery]
        return super().violations(contents) or sent_violations(
            rows, stored_facts(self.service().store, self._delivery))
