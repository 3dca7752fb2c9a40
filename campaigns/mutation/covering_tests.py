"""Which test programs can catch a mutation of a folder of src.

The folder's own program is first; the others run one after the other as long as none of them
catches the mutation.
"""

FOLDERS = ("delivery", "sending", "history", "summary", "store")

# The tests to run, as "<program without _test>" or "<program without _test>.<test class>".
COVERING_TESTS = {
    "delivery": ["delivery", "picking", "history", "service", "ui.PickFilterUi", "ui.ScanningUi"],
    "sending": ["sending", "picking", "two_at_once", "ui.OptionsAndSummaryUi"],
    "history": ["history", "ui.HistoryUi"],
    "summary": ["summary", "history", "picking", "ui.OptionsAndSummaryUi", "ui.HistoryUi"],
    "store": ["store", "delivery", "service", "sending", "history", "app", "disk", "intruder"],
}


def target_of(tests):
    """The CMake target that builds `tests`, an entry of COVERING_TESTS."""
    return tests.split(".")[0] + "_test"


def is_among(name, tests):
    """Whether the CTest test `name` is one of `tests`."""
    return name == tests or name.startswith(tests + ".")


def in_order_of_promise(tests, path, durations):
    """Sorts the names of tests: first those of the class in the file `path`, then short ones."""
    stem = path.split("/")[-1].split(".")[0]

    def rank(name):
        return not name.split(".")[-1].startswith(stem), durations[name]

    return sorted(tests, key=rank)
