"""The mutations that no test can catch, each with the reason: the file reasons.txt.

An entry begins with a line "file: " and the path. The removed and the added lines follow as the
campaign prints them, then one or more lines "because: ". They are found by their text, so a line
that moves keeps its reason. Without added lines the entry is about every mutation of the lines.
"""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Reason:
    path: str
    removed: tuple
    added: tuple
    text: str

    def explains(self, mutation):
        removed, added = _changed_lines(mutation.diff())
        return (self.path == mutation.path and self.removed == removed
                and (not self.added or self.added == added))


def _changed_lines(lines):
    """The removed and the added lines of a diff, without the white space around them."""
    return tuple(tuple(line[1:].strip() for line in lines if line.startswith(sign))
                 for sign in "-+")


def reasons_of(text):
    """Reads the text of a file of reasons; lines that begin with # are comments."""
    reasons = []
    for entry in text.split("\nfile: ")[1:]:
        path, *lines = [line for line in entry.splitlines() if line and not line.startswith("#")]
        because = " ".join(line.removeprefix("because: ") for line in lines
                           if line.startswith("because: "))
        if not because:
            raise ValueError(f"{path}: {lines}: the reason is missing")
        reasons.append(Reason(path, *_changed_lines(lines), because))
    return reasons
