"""The tokens, brackets and statements of a C++ file.

There is no preprocessor and no type. The spaces tell apart what the tokens do not: clang-format puts
one on both sides of a binary operator, and none before the `<` of a template's arguments.
"""

import bisect
import dataclasses
import re

TOKEN = re.compile(r"""
    (?P<directive>^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*)
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<raw>R"(?P<mark>[^(\n]*)\(.*?\)(?P=mark)")
  | (?P<text>"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+')
  | (?P<number>\d(?:'?[\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<sign><<=|>>=|<=>|->\*|\.\.\.|->|::|\+\+|--|<<|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|\S)
""", re.VERBOSE | re.MULTILINE | re.DOTALL)

OPENING, CLOSING = "([{", ")]}"
HEADED = {"if", "for", "while", "switch", "catch"}
AFTER_PARAMETERS = {"const", "noexcept", "override", "final", "mutable"}
BEFORE_BLOCK = {"else", "do", "try"}
SCOPES = {"namespace", "class", "struct", "union", "enum"}
DECLARATION_WORDS = {"const", "constexpr", "static", "auto", "using", "typedef", "struct", "class",
                     "enum", "static_assert"}
STATEMENT_WORDS = {"return", "throw", "break", "continue", "emit", "delete", "co_return"}


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


class CppSource:
    """A C++ file as tokens. Positions are indexes into `tokens`."""

    def __init__(self, text):
        self.text = text
        self.tokens = [Token(match.lastgroup if match.lastgroup != "mark" else "raw",
                             match.group(), match.start(), match.end())
                       for match in TOKEN.finditer(text)
                       if match.lastgroup not in ("directive", "comment")]
        self.partners = self._matched_brackets()
        self.blocks = [at for at, token in enumerate(self.tokens)
                       if token.text == "{" and self._opens_block(at)]
        self._line_starts = [0] + [match.end() for match in re.finditer("\n", text)]

    def line_of(self, offset):
        return bisect.bisect_right(self._line_starts, offset)

    def word(self, at):
        """The text of the token at `at`; an empty one before the first and after the last."""
        return self.tokens[at].text if 0 <= at < len(self.tokens) else ""

    def is_spaced(self, at):
        """Whether the token has white space on both sides, as a binary operator has."""
        token = self.tokens[at]
        return (self.text[token.start - 1:token.start].isspace()
                and self.text[token.end:token.end + 1].isspace())

    def skip(self, at):
        """The position after the token at `at`, or after the brackets that it opens."""
        return self.partners.get(at, at) + 1 if self.word(at) in OPENING else at + 1

    def is_in_block(self, at):
        return any(block < at < self.partners[block] for block in self.blocks)

    def is_in_initialisers(self, at):
        """Whether the token is in the member initialisers of a constructor."""
        block = next((block for block in self.blocks if block > at), None)
        while at > 0 and self.word(at) not in (";", "}") and block is not None:
            if self.word(at) == ":" and self.word(at - 1) == ")":
                return True
            at = self.partners[at] - 1 if self.word(at) in CLOSING else at - 1
        return False

    def opens_list(self, at):
        """Whether the brace at `at` begins a list of values."""
        if self.word(at) != "{" or at in self.blocks:
            return False
        before = at - 1
        while before >= 0 and (self.tokens[before].kind == "name"
                               or self.word(before) in ("::", ",", ":")):
            if self.word(before) in SCOPES:
                return False
            before -= 1
        return True

    def elements(self, opening):
        """The ranges of positions between the commas of the brackets that open at `opening`."""
        end, angles, first = self.partners[opening], 0, opening + 1
        ranges, at = [], first
        while at < end:
            word = self.word(at)
            if word in ("<", ">") and not self.is_spaced(at):
                angles += 1 if word == "<" else -1
            if word == "," and angles == 0:
                ranges.append((first, at))
                first = at + 1
            at = self.skip(at)
        return ranges + [(first, end)] if first < end else ranges

    def statements(self):
        """Yields (first, end, is_declaration) of each statement that ends with a semicolon."""
        for block in self.blocks:
            at = block + 1
            while at < self.partners[block]:
                at = self._after_prefix(at)
                if self.word(at) in "{}":
                    at = self.skip(at)
                    continue
                end = at
                while self.word(end) != ";" and end < self.partners[block]:
                    end = self.skip(end)
                if self.word(end) == ";":
                    yield at, end + 1, self._is_declaration(at)
                at = end + 1

    def _matched_brackets(self):
        partners, opened = {}, []
        for at, token in enumerate(self.tokens):
            if token.kind != "sign":
                continue
            if token.text in OPENING:
                opened.append(at)
            elif token.text in CLOSING:
                partners[at] = opened.pop()
                partners[partners[at]] = at
        return partners

    def _opens_block(self, at):
        before = self.word(at - 1)
        if before in (")", "]") or before in AFTER_PARAMETERS | BEFORE_BLOCK:
            return True
        if before == ":":
            return self._ends_label(at - 1)
        # The return type of a lambda or a function is between the parameters and the block.
        for back in range(at - 1, max(at - 25, 0), -1):
            if self.word(back) == "->":
                return self.word(back - 1) == ")"
            if self.word(back) in ("{", "}", ";", "=", "return"):
                return False
        return False

    def _ends_label(self, at):
        while self.tokens[at - 1].kind == "name" or self.word(at - 1) == "::":
            at -= 1
        return self.word(at) in ("case", "default")

    def _after_prefix(self, at):
        """Skips labels and the heads of control statements."""
        while True:
            word = self.word(at)
            if word in HEADED:
                at = self.skip(at + (2 if self.word(at + 1) == "constexpr" else 1))
            elif word in BEFORE_BLOCK:
                at += 1
            elif word in ("case", "default"):
                while self.word(at) != ":":
                    at += 1
                at += 1
            else:
                return at

    def _is_declaration(self, at):
        if self.word(at) in STATEMENT_WORDS:
            return False
        if self.word(at) in DECLARATION_WORDS:
            return True
        # A type, and a name after it.
        while self.tokens[at].kind == "name" and self.word(at + 1) == "::":
            at += 2
        at += 1
        if self.word(at) == "<":
            while self.word(at) != ">" and at < len(self.tokens) - 1:
                at += 1
            at += 1
        while self.word(at) in ("*", "&"):
            at += 1
        return at < len(self.tokens) and self.tokens[at].kind == "name"
