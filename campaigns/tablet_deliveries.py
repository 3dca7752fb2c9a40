"""The data that the campaign's order services serve: a delivery to pick, many to send, and a
catalogue."""

from store_contents import Row

PICKED = "PICK"
BOXES, LINES_IN_A_BOX = 40, 4
BOXES_TO_SEND = 80
ARTICLES = 40_000


def _line(delivery, box, position):
    article = box * LINES_IN_A_BOX + position
    return {"cusname": "Harbour Café", "brand": "NORTH QUAY", "cdate": "03/25/2026",
            "date": "04/01/2026", "doc": delivery, "ordernum": f"SO-{delivery}",
            "item": f"I{article:04}", "barcode": f"40{article:011}",
            "descr": f"ΦΛΙΤΖΆΝΙ № {article}", "qty": 1 + article % 12, "carton": f"C{box:03}"}


def delivery_lines(delivery, boxes):
    return [_line(delivery, box, position)
            for box in range(boxes) for position in range(LINES_IN_A_BOX)]


def delivery_to_send(number):
    return f"SEND{number:04}"


def articles(edition):
    """Returns a catalogue. All editions have the same codes but different descriptions."""
    return [{"barcode": f"50{number:011}", "item": f"A{number:06}",
             "descr": f"ARTICLE {number} – EDITION {edition}"} for number in range(ARTICLES)]


def picked_row(line, quantity, milliseconds=None):
    """Returns the row that the tablet stores when `quantity` of an order line is picked."""
    return Row(line["barcode"], line["carton"], milliseconds, line["descr"], line["doc"],
               line["item"], line["ordernum"], line["qty"], quantity, 0)
