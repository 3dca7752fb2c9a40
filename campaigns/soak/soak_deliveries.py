"""Deliveries and articles for a long run."""

import random

BOXES = ["C001", "C002", "C003", "C004"]
LINES_IN_A_BOX = 12
# The number of lines that fit on the screen.
LINES_IN_SIGHT = 6
ARTICLES = 20_000
# Consecutive deliveries have different customers, so that the screen changes with each lookup.
CUSTOMERS = ["Harbour Shop", "Willow and Oak"]
MOST = 12


def article(number):
    return {"item": f"{number:05}{'ABCDEFGH'[number % 8]}", "barcode": f"40{number:011}",
            "descr": f"ARTICLE NUMBER {number}"}


def articles():
    return [article(number) for number in range(ARTICLES)]


class Delivery:
    """A delivery to pick. The same index and seed give the same delivery."""

    def __init__(self, index, seed):
        chance = random.Random(f"{seed} {index}")
        self.number = f"D{index:05}"
        self.customer = CUSTOMERS[index % 2]
        *numbers, self.foreign = chance.sample(range(ARTICLES), len(BOXES) * LINES_IN_A_BOX + 1)
        self.lines = {box: [self._line(box, chance.randint(1, MOST), number)
                            for number in numbers[place::len(BOXES)]]
                      for place, box in enumerate(BOXES)}

    def _line(self, box, quantity, number):
        return {"cusname": self.customer, "brand": "NORTH QUAY", "cdate": "03/02/2026",
                "date": "03/05/2026", "doc": self.number, "ordernum": f"SO-{self.number}",
                "qty": quantity, "carton": box, **article(number)}

    def order_lines(self):
        return [line for lines in self.lines.values() for line in lines]


def deliveries_file(deliveries):
    """Returns the deliveries file for the order service."""
    return {"deliveries": [line for delivery in deliveries for line in delivery.order_lines()],
            "articles": articles()}
