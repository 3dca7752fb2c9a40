"""The supervisor's pages in a headless Chromium, from the real order service.

Usage: python3 supervisor_page_test.py PROGRAM-FOLDER
"""

import glob
import json
import os
import subprocess
import sys
import tempfile
import unittest
import urllib.parse
import urllib.request
from itertools import groupby

import zxingcpp
from PIL import Image
from supervisor_pages import SupervisorPages
from tablet import OrderService, wait_for

PROGRAMS = sys.argv.pop(1)
ALL = "3 deliveries, the last change first"
PRINTABLE = "".join(map(chr, range(ord(" "), ord("~") + 1)))


def order_line(**members):
    return {"cusname": "Ann & <b>Söhne</b>", "brand": "HEARTHSIDE", "cdate": "03/02/2026",
            "date": "03/05/2026", "doc": "D1", "ordernum": "SO-1", "item": "20138A",
            "barcode": "5012746100000", "descr": "MUG \"350ML\" <script>alert(1)</script>",
            "qty": 3, "carton": "C001", **members}


# Numbers and codes that are hard to encode or to scan.
ODD = "/&#?% 7"
DELIVERIES = [
    order_line(),
    order_line(item="20138B", barcode="5012746100017", carton="C002"),
    order_line(doc="D2", cusname="Bob"),
    order_line(doc=ODD, carton="box <1>", barcode="0012746100005"),  # a leading zero
    order_line(doc=ODD, carton="box <1>", item="A", barcode="5012746100001"),  # a wrong check digit
    order_line(doc=ODD, carton="2", item="B", barcode=PRINTABLE[:60].strip()),
    order_line(doc=ODD, carton="2", item="C", barcode=PRINTABLE[48:]),
    order_line(doc=ODD, carton="3", item="D", barcode="Größe"),
]


def barcodes_in(picture, height):
    """Returns the format and the text of every barcode in a picture, from top to bottom. Reads the
    picture in strips of `height` pixels; a strip must not contain parts of two barcodes."""
    image = Image.open(picture).convert("L")
    strips = (image.crop((0, top, image.width, top + height))
              for top in range(0, image.height, height))
    read = [zxingcpp.read_barcode(strip, zxingcpp.Code128 | zxingcpp.EAN13) for strip in strips]
    codes = [(code.format, code.text) if code else None for code in read]
    return [code for code, _ in groupby(codes) if code]


class SupervisorPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pages = SupervisorPages()
        cls.addClassCleanup(cls.pages.close)

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        with open(self.path("deliveries.json"), "w", encoding="utf-8") as file:
            json.dump(DELIVERIES, file)
        self.service = OrderService(os.path.join(PROGRAMS, "cartonpick-orders"), "--store",
                                    self.path("store.sqlite"), "--deliveries",
                                    self.path("deliveries.json"))
        self.addCleanup(self.service.close)
        self.pages.go_to(self.service.host)

    def path(self, name):
        return os.path.join(self.folder, name)

    def send(self, line, quantity, picked_at="2026-03-04 09:15:00"):
        """Reports to the service that `quantity` pieces of an order line were picked."""
        picked = {"barcode": line["barcode"], "box": line["carton"], "doc": line["doc"],
                  "item": line["item"], "ordernum": line["ordernum"], "qty": quantity,
                  "datepicked": picked_at, "sent": 0}
        request = urllib.request.Request(
            f"http://{self.service.host}/qir_pick/servicepick.svc/json/sendpick",
            json.dumps([picked]).encode(), {"Content-Type": "application/json"})
        with urllib.request.urlopen(request) as answer:
            self.assertEqual(answer.read(), b'"0"')

    def states(self, caption=ALL):
        """Returns the state of every delivery in the list, by delivery number."""
        return {row[0]: row[-1] for row in self.pages.rows(caption)}

    def expect_no_console_errors(self):
        self.assertEqual(self.pages.console_errors(), [])


class List(SupervisorPage):
    def setUp(self):
        super().setUp()
        self.assertEqual(self.pages.open("/"), 200)

    def test_the_loaded_deliveries_are_listed(self):
        self.assertEqual(self.pages.heading(), "Deliveries")
        self.assertEqual(sorted(self.pages.rows(ALL)), [
            [ODD, "Ann & <b>Söhne</b>", "3", "15", "0", "", "○ open"],
            ["D1", "Ann & <b>Söhne</b>", "2", "6", "0", "", "○ open"],
            ["D2", "Bob", "1", "3", "0", "", "○ open"]])
        self.expect_no_console_errors()

    def test_a_search_finds_a_delivery(self):
        self.pages.focus_field()
        self.pages.type("bO")
        self.pages.press("Return")
        wait_for(lambda: self.pages.address().endswith("/?q=bO"), "the search")
        self.assertEqual(list(self.states("1 delivery found for “bO”, the last change first")),
                         ["D2"])
        self.assertEqual(self.pages.field_text(), "bO")
        self.pages.follow("All deliveries")
        wait_for(lambda: len(self.states()) == 3, "all deliveries")

    def test_the_list_is_updated_while_the_user_types(self):
        self.pages.focus_field()
        self.pages.type("half a na")
        self.send(DELIVERIES[2], 3)
        wait_for(lambda: self.states()["D2"] == "✓ complete", "the delivery to be complete")
        self.assertEqual(next(iter(self.states())), "D2")
        self.assertTrue(self.pages.field_has_focus())
        self.pages.type("me")
        self.assertEqual(self.pages.field_text(), "half a name")
        self.assertTrue(self.pages.address().endswith("/"))
        self.expect_no_console_errors()

    def test_a_link_keeps_the_focus_when_its_row_changes(self):
        self.pages.focus_link("D2")
        self.send(DELIVERIES[2], 4)
        wait_for(lambda: self.states()["D2"] == "+ over", "the delivery to be over")
        self.assertEqual(self.pages.focused_text(), "D2")

    def test_the_time_of_the_last_update_is_shown(self):
        first = self.pages.updated_at()
        wait_for(lambda: self.pages.updated_at() != first, "an update")
        self.assertFalse(self.pages.says("No answer since then"))
        self.service.close()
        wait_for(lambda: self.pages.says("No answer since then"), "the report of no answer")

    def test_no_page_is_wider_than_a_narrow_window(self):
        self.send(DELIVERIES[2], 4)
        for path in ("/", "/?q=x", "/deliveries/D2", "/deliveries/D2/sheet", "/deliveries/x"):
            self.pages.open(path)
            self.assertLessEqual(self.pages.overflow(360), 0, path)


class Delivery(SupervisorPage):
    def setUp(self):
        super().setUp()
        self.send(DELIVERIES[0], 5)
        self.pages.open("/")
        self.pages.follow("D1")

    def test_picked_quantities_and_corrections_are_shown(self):
        self.assertEqual(self.pages.heading(), "Delivery D1")
        row = ["20138A", "5012746100000", 'MUG "350ML" <script>alert(1)</script>', "3",
               "5 more than ordered", "+2"]
        self.assertEqual(self.pages.rows("Lines of box C001"), [row])
        self.send(DELIVERIES[0], 3, "2026-03-04 09:30:00")
        corrected = row[:4] + ["3 was 5", "0"]
        wait_for(lambda: self.pages.rows("Lines of box C001") == [corrected], "the correction")
        self.expect_no_console_errors()

    def test_lines_that_were_not_ordered_are_shown(self):
        self.send({**DELIVERIES[0], "item": "X"}, 1)
        wait_for(lambda: ["X", "5012746100000", "", "not ordered unknown article", "1", "+1"]
                 in self.pages.rows("Lines of box C001"), "the line without an order")

    def test_an_unknown_delivery_returns_404(self):
        self.assertEqual(self.pages.open("/deliveries/<b>"), 404)
        self.assertEqual(self.pages.heading(), "Unknown delivery")
        self.assertTrue(self.pages.says("There is no delivery “<b>”."))


class Sheet(SupervisorPage):
    def setUp(self):
        super().setUp()
        self.pages.open("/deliveries/" + urllib.parse.quote(ODD, safe=""))
        self.pages.follow("Sheet to print")
        wait_for(lambda: self.pages.address().endswith("/sheet"), "the sheet")

    def expected(self):
        code128, ean13 = zxingcpp.Code128, zxingcpp.EAN13
        return [(code128, ODD), (code128, "box <1>"), (ean13, "0012746100005"),
                (code128, "5012746100001"), (code128, "2"), (code128, PRINTABLE[:60].strip()),
                (code128, PRINTABLE[48:]), (code128, "3")]

    def test_every_printed_barcode_can_be_scanned(self):
        self.pages.print(self.path("sheet.pdf"))
        subprocess.run(["pdftoppm", "-r", "300", "-gray", self.path("sheet.pdf"),
                        self.path("sheet")], check=True, stderr=subprocess.DEVNULL)
        pages = sorted(glob.glob(self.path("sheet-*.pgm")))
        self.assertEqual([code for page in pages for code in barcodes_in(page, 40)],
                         self.expected())
        self.expect_no_console_errors()

    def test_all_but_the_longest_barcodes_can_be_scanned_from_the_screen(self):
        self.pages.save_picture(self.path("sheet.png"))
        # The bars of longer codes are narrower than a pixel.
        self.assertEqual(barcodes_in(self.path("sheet.png"), 12),
                         [code for code in self.expected() if len(code[1]) < 30])

    def test_a_code_that_cannot_be_a_barcode_is_shown_as_text(self):
        self.assertTrue(self.pages.says("Größe"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
