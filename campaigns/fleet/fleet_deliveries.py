"""The deliveries of a fleet, with names that are hard to encode and compare."""

import random

# The two cafés differ only in their Unicode normalisation, so they are two boxes.
BOXES = ["C001", "C002", "Κιβώτιο 3", "Ящик № 4", "箱 5", "caf\u00e9", "cafe\u0301", 'box "8"',
         "back\\slash 9", "❄ Kühlgut 10", "'; DROP TABLE picked_line; --", "two\nlines 12"]
ITEMS = ["20138A", "ΦΛΙΤΖΆΝΙ", "кружка", "湯呑み", "Größe\tL", "50 % <off> & more", "{item}", "🫖"]
MAX_LINES = 6


def _number(index):
    """Every fifth delivery has a number that needs percent-encoding."""
    return f"Δ {index}/2 B%" if index % 5 == 0 else f"F{index}"


def _lines(index, seed):
    chance = random.Random(f"{seed} {index}")
    for position in range(chance.randint(1, MAX_LINES)):
        yield {"cusname": "Rosie's Kitchen", "brand": "LINDEN & SON", "cdate": "03/02/2026",
               "date": "03/05/2026", "doc": _number(index), "ordernum": f"SO-{index // 3}",
               "item": chance.choice(ITEMS), "barcode": f"50{index:08}{position:03}",
               "descr": "CREAM TEA TOWEL, PACK OF 2 – Ü", "qty": chance.randint(0, 500),
               "carton": chance.choice(BOXES)}


def fleet_deliveries(count, seed):
    """Returns the order lines by delivery number."""
    return {_number(index): list(_lines(index, seed)) for index in range(count)}
