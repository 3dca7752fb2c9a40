"""The expected contents of a tablet's store, compared with the actual contents."""

import collections

SHOWN = 5


class ExpectedStore:
    """Confirmed changes must be in the store. A change that is not yet confirmed must be in it
    completely or not at all."""

    def __init__(self, contents):
        self._schema = (contents.version, contents.schema)
        self._rows = contents.picked()
        self._catalogue = contents.catalogue()
        self._forget_change()

    def _forget_change(self):
        self._changed_rows = {}
        self._new_catalogue = None

    def rows_of(self, delivery):
        return {line: row for line, row in self._rows.items() if row.doc == delivery}

    def row(self, line):
        return self._rows.get(line)

    @property
    def catalogue(self):
        return self._catalogue

    @property
    def is_changing(self):
        return bool(self._changed_rows) or self._new_catalogue is not None

    def begin_rows(self, rows):
        """Begins a change of these rows, given by line. A row without a time matches any time."""
        self._changed_rows = rows

    def begin_catalogue(self, catalogue):
        self._new_catalogue = catalogue

    def confirm(self):
        """Records that the program has reported the change as saved."""
        self._rows.update(self._changed_rows)
        if self._new_catalogue is not None:
            self._catalogue = self._new_catalogue
        self._forget_change()

    def violations(self, contents):
        """Returns a list of messages about what is wrong with these contents."""
        if self._schema != (contents.version, contents.schema):
            return [f"the tables and indexes are not those of the model: version "
                    f"{contents.version}, {contents.schema}"]
        return self._row_violations(contents.picked()) + self._catalogue_violations(
            contents.catalogue())

    def is_changed(self, contents):
        """Returns true if the contents, which have no violations, include the pending change."""
        line = next(iter(self._changed_rows), None)
        if line is not None:
            return _is(contents.picked().get(line), self._changed_rows[line])
        return contents.catalogue() == self._new_catalogue

    def settle(self, contents):
        """Takes these contents, which have no violations, as the expected ones from now on."""
        self._rows = contents.picked()
        self._catalogue = contents.catalogue()
        self._forget_change()

    def _row_violations(self, stored):
        wrong, changed = [], 0
        for line in self._rows.keys() | stored.keys():
            before, now, after = (self._rows.get(line), stored.get(line),
                                  self._changed_rows.get(line))
            if after is not None and _is(now, after):
                changed += 1
            elif not _is(now, before):
                wrong.append(f"{line} must be {after or before}, and is {now}")
        count = len(self._changed_rows)
        if 0 < changed < count:
            wrong.append(f"{changed} of {count} lines were changed, not all of them or none")
        return _shortened(wrong)

    def _catalogue_violations(self, stored):
        if stored in (self._catalogue, self._new_catalogue):
            return []
        offered = {"the last one": self._catalogue, "the new one": self._new_catalogue}
        parts = ", ".join(
            f"{sum((collections.Counter(stored) & collections.Counter(catalogue)).values())} of "
            f"the {len(catalogue)} of {name}"
            for name, catalogue in offered.items() if catalogue is not None)
        return [f"the catalogue has {len(stored)} articles: {parts}"]


def _is(row, expected):
    """Returns true if the row is the expected one. An expected row without a time matches any
    time."""
    if row is None or expected is None or expected.datepicked is not None:
        return row == expected
    return row.datepicked is not None and row._replace(datepicked=None) == expected


def _shortened(texts):
    more = len(texts) - SHOWN
    return texts[:SHOWN] + ([f"and {more} more"] if more > 0 else [])
