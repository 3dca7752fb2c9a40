"""Finds every change of one thing in a C++ file.

A comparison is turned, a constant is moved by one, a statement is dropped, a condition is negated,
or two neighbouring arguments are exchanged.
"""

import dataclasses
import difflib

from cpp_source import CLOSING, HEADED, CppSource

COMPARISONS = {"==": ["!="], "!=": ["=="], "<": ["<=", ">"], "<=": ["<", ">="],
               ">": [">=", "<"], ">=": [">", "<="]}
TRUTHS = {"true": "false", "false": "true"}
JUNCTIONS = {"&&": "||", "||": "&&"}
NOT_CALLED = HEADED | {"return", "sizeof", "decltype", "alignof", "noexcept", "requires"}
# An exchange of their arguments changes nothing.
SYMMETRIC = {"wrappingAdd", "min", "max"}
BEFORE_CONDITION = {"=", "return", "(", "{", ",", ";", "[", ":", "?", "<<", "+="}


@dataclasses.dataclass(frozen=True)
class Mutation:
    """One change of the file `path`, whose text is `text`."""
    path: str
    kind: str
    text: str
    start: int
    end: int
    replacement: str

    @property
    def mutated(self):
        return self.text[:self.start] + self.replacement + self.text[self.end:]

    @property
    def line(self):
        return self.text.count("\n", 0, self.start) + 1

    @property
    def folder(self):
        return self.path.split("/")[-2]

    def diff(self):
        """The removed and the added lines, each with its sign."""
        lines = difflib.unified_diff(self.text.splitlines(), self.mutated.splitlines(), n=0,
                                     lineterm="")
        return [line for line in list(lines)[2:] if not line.startswith("@@")]


def mutations_of(path, text):
    """Returns the mutations of a file in the order of their places."""
    source = CppSource(text)
    found = []
    for kind, find in KINDS.items():
        for start, end, replacement in find(source):
            if text[start:end] != replacement:
                found.append(Mutation(path, kind, text, start, end, replacement))
    return sorted(found, key=lambda mutation: (mutation.start, mutation.end, mutation.replacement))


def _text(source, first, end):
    return source.text[source.tokens[first].start:source.tokens[end - 1].end]


def _replaced(source, first, end, replacement):
    return source.tokens[first].start, source.tokens[end - 1].end, replacement


def turned_comparisons(source):
    for at, token in enumerate(source.tokens):
        if token.kind == "sign" and source.is_spaced(at):
            for other in COMPARISONS.get(token.text, ()):
                yield token.start, token.end, other


def moved_constants(source):
    for token in source.tokens:
        if token.kind == "number":
            for other in _neighbours(token.text):
                yield token.start, token.end, other
        elif token.text in TRUTHS:
            yield token.start, token.end, TRUTHS[token.text]


def _neighbours(literal):
    """The next greater and the next smaller constant of the same type."""
    digits = literal.replace("'", "")
    number = digits if digits.startswith("0x") else digits.rstrip("uUlLfF")
    suffix = digits[len(number):]
    value = float(number) if "." in number else int(number, 0)
    return [f"{value + step}{suffix}" for step in (1, -1) if value + step >= 0 or not suffix]


def dropped_statements(source):
    for first, end, is_declaration in source.statements():
        if not is_declaration:
            yield _replaced(source, first, end, "")


def negated_conditions(source):
    for first, end in _conditions(source):
        if not _is_turned_otherwise(source, first, end):
            yield _replaced(source, first, end, f"!({_text(source, first, end)})")
    for at, token in enumerate(source.tokens):
        if token.text in JUNCTIONS and source.is_spaced(at):
            yield token.start, token.end, JUNCTIONS[token.text]
        elif token.text == "!" and token.kind == "sign":
            yield token.start, token.end, ""


def _is_turned_otherwise(source, first, end):
    """Whether another mutation of the condition does the same as its negation."""
    words = [source.word(at) for at in _outermost(source, first, end)]
    is_single = not any(word in JUNCTIONS for word in words)
    return is_single and (words[0] == "!" or "==" in words or "!=" in words)


def _conditions(source):
    """The conditions of if, while, for and ?:, but not those that declare a variable."""
    for at in range(len(source.tokens)):
        word = source.word(at)
        if word in ("if", "while", "for"):
            opening = at + (2 if source.word(at + 1) == "constexpr" else 1)
            parts = _split(source, opening, ";")
            first, end = parts[1 if word == "for" and len(parts) == 3 else -1]
            declares = any(source.word(inner) == "=" for inner in _outermost(source, first, end))
            if first < end and not declares and (word != "for" or len(parts) == 3):
                yield first, end
        elif word == "?":
            first = at
            while source.word(first - 1) not in BEFORE_CONDITION:
                first = source.partners[first - 1] if source.word(first - 1) in CLOSING else first - 1
            yield first, at


def _outermost(source, first, end):
    """The positions from `first` to `end` that are in no further brackets."""
    while first < end:
        yield first
        first = source.skip(first)


def _split(source, opening, separator):
    parts, first, end = [], opening + 1, source.partners[opening]
    for at in _outermost(source, first, end):
        if source.word(at) == separator:
            parts.append((first, at))
            first = at + 1
    return parts + [(first, end)]


def exchanged_arguments(source):
    for at in range(len(source.tokens)):
        if not (_opens_call(source, at) or source.opens_list(at)):
            continue
        values = [_value(source, *element) for element in source.elements(at)]
        for (first, first_end), (second, second_end) in zip(values, values[1:]):
            before, after = _text(source, first, first_end), _text(source, second, second_end)
            # The pairs of a map have no order.
            are_pairs = source.word(first) == source.word(second) == "{"
            if before != after and not are_pairs:
                between = source.text[source.tokens[first_end - 1].end:source.tokens[second].start]
                yield _replaced(source, first, second_end, after + between + before)


def _opens_call(source, at):
    if source.word(at) != "(" or source.word(at - 1) in NOT_CALLED | SYMMETRIC:
        return False
    is_after_name = source.tokens[at - 1].kind == "name" or source.word(at - 1) == ">"
    return is_after_name and (source.is_in_block(at) or source.is_in_initialisers(at))


def _value(source, first, end):
    """The value of an element; of `.name = value` only the value."""
    if source.word(first) == "." and source.word(first + 2) == "=":
        return first + 3, end
    return first, end


KINDS = {
    "comparison": turned_comparisons,
    "constant": moved_constants,
    "statement": dropped_statements,
    "condition": negated_conditions,
    "arguments": exchanged_arguments,
}
