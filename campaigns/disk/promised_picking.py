"""The data that must be on disk, according to the lines that disk_worker prints."""

import re

from expected_store import ExpectedStore
from store_contents import Contents, Row, Table

DELIVERY, ORDER = "4711", "A1"
_ORDERED = {("C1", "A"): 5, ("C1", "B"): 3, ("C1", "C"): 2, ("C1", "D"): 9,
            ("C2", "A"): 4, ("C2", "E"): 1, ("C2", "F"): 7}
_ARTICLES_PER_CATALOGUE = 150
_COLUMNS = {"Picking": list(Row._fields), "Items": ["barcode", "item", "descr"]}


def catalogue(number):
    items = [f"G{number}-{i}" for i in range(number * _ARTICLES_PER_CATALOGUE)]
    return [("b" + item, item, "Article " + item) for item in items]


def _in_order(contents):
    """Returns the contents with the columns of _COLUMNS. Missing tables are empty, and missing
    columns are None."""
    def rows(name, columns):
        table = contents.tables.get(name)
        if table is None:
            return []
        known = [column for column in columns if column in table.columns]
        return [tuple(dict(zip(known, values)).get(column) for column in columns)
                for values in contents.columns(name, known)]

    return Contents(0, (), {name: Table(columns, rows(name, columns))
                            for name, columns in _COLUMNS.items()})


class PromisedPicking:
    """The expectations for a run on a store with the contents `start`. `models` are the schemas
    that the store can have afterwards."""

    def __init__(self, start, models):
        self._start = start
        self._models = models
        self._expected = ExpectedStore(_in_order(start))
        self._is_started = False
        self._has_promised = False
        self._tried = None
        self._on_screen = {}
        self.wrong = []
        self.undone = 0

    def take(self, line):
        """Handles a line that the worker has printed."""
        what, _, words = line.partition(" ")
        if what == "try":
            self._try(*words.split())
        elif what == "done":
            self._confirm(words)
        elif what == "not":
            self._leave()
        elif what == "screen":
            self._look(*words.split())

    def _try(self, what, *words):
        self._is_started = True
        self._tried = words
        if what == "catalogue":
            self._expected.begin_catalogue(catalogue(int(words[0])))
        elif what == "quantity":
            self._expected.begin_rows(self._row_with(*words))
        else:
            self._expected.begin_rows(
                {line: row._replace(sent=1)
                 for line, row in self._expected.rows_of(DELIVERY).items() if row.sent == 0})

    def _row_with(self, box, item, quantity):
        line = DELIVERY, box, item
        row = self._expected.row(line) or Row("b" + item, box, None, "Description of " + item,
                                              DELIVERY, item, ORDER, _ORDERED[box, item], 0, 0)
        return {line: row._replace(pickqty=int(quantity))}

    def _confirm(self, said):
        saved = re.match(r"Saved (\S+) × (\S+) in box (\S+),", said)
        if saved:
            quantity, item, box = saved.groups()
            if [box, item, quantity] != list(self._tried):
                self.wrong.append(f"the screen says {said} of {self._tried}")
            self._on_screen.pop((box, item), None)
        self._has_promised = True
        self._expected.confirm()

    def _leave(self):
        """Records that the last action was not done."""
        self.undone += 1
        if len(self._tried) == 3:
            box, item, quantity = self._tried
            self._on_screen[box, item] = int(quantity)
        self._expected.begin_rows({})
        self._expected.begin_catalogue(None)

    def _look(self, box, item, quantity):
        row = self._expected.row((DELIVERY, box, item))
        on_disk = row.pickqty if row else 0
        if int(quantity) not in (on_disk, self._on_screen.get((box, item))):
            self.wrong.append(f"the screen has {quantity} of {item} in box {box}, "
                              f"the disk {on_disk}")

    @property
    def is_started(self):
        return self._is_started

    def settle(self, contents):
        """Takes these contents, which have no violations, as the expected ones from now on."""
        self._expected.settle(_in_order(contents))

    def violations(self, contents):
        """Returns a list of messages about what is wrong with these contents."""
        is_whole = (contents.version, contents.schema) in self._models
        if not is_whole and (self._has_promised or contents != self._start):
            return [f"the store is half made: {contents.version}, {contents.schema}"]
        return self._expected.violations(_in_order(contents))
