"""Which test programs can catch a mutation of a folder of src.

The folder's own program is first; the others run one after the other as long as none of them
catches the mutation.
"""

FOLDERS = ("delivery", "sending", "history", "summary", "store")

# The folders of tests/ whose programs cover a folder of src.
COVERING_TESTS = {
    "delivery": ["delivery", "picking", "history"],
    "sending": ["sending", "picking"],
    "history": ["history"],
    "summary": ["summary", "history", "picking"],
    "store": ["store", "delivery", "sending", "service", "history", "disk", "intruder"],
}


def target_of(tests):
    """The CMake target of a program of COVERING_TESTS."""
    return tests + "_test"


def is_among(name, tests):
    """Whether the CTest test `name` runs a class of a program of COVERING_TESTS."""
    return name.startswith(tests + ".")


def in_order_of_promise(tests, path, durations):
    """Sorts the names of tests: first those of the class in the file `path`, then short ones."""
    stem = path.split("/")[-1].split(".")[0]

    def rank(name):
        return not name.split(".")[-1].startswith(stem), durations[name]

    return sorted(tests, key=rank)
