"""Small departures from C++ sources, drawn at random. Each changes one place: a relation, a constant by
one, && or ||, a sign, a dropped statement, two swapped arguments. Comments, literals of text, directives
and static assertions are left alone. The sources are formatted by clang-format, so the spaces around a
`<` tell a relation from a template's bracket; what is misread merely does not compile.
"""

import hashlib
import re
from collections import Counter
from typing import NamedTuple

TOKEN = re.compile(r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
  | (?P<text>(?:u8|[uUL])?(?:R"(?P<end>[^(]*)\(.*?\)(?P=end)"|"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])+'))
  | (?P<number>\.?\d(?:[eE][+-]|'\w|[\w.])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<operator><=>|<<=|>>=|\.\.\.|->|::|\+\+|--|[-+*/%&|^=!<>]=|&&|\|\||<<|>>|\S)
""", re.VERBOSE | re.DOTALL | re.MULTILINE)

BINARY = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
          "==": ["!="], "!=": ["=="], "&&": ["||"], "||": ["&&"],
          "+": ["-"], "-": ["+"], "+=": ["-="], "-=": ["+="]}
STEPS = {"++": ["--"], "--": ["++"]}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="}
CONTROLS = {"if", "for", "while", "switch", "catch"}
# Parentheses after these hold no arguments.
NO_CALLS = CONTROLS | {"return", "sizeof", "decltype", "alignas", "alignof", "noexcept", "requires"}
# A statement that starts with one of these has no effect of its own that could be dropped.
NO_EXPRESSIONS = NO_CALLS | {"case", "default", "do", "else", "goto", "using", "typedef", "try", "throw",
                             "static_cast", "new", "delete", "template", "public", "private",
                             "protected"}
SCOPES = {"namespace", "class", "struct", "union", "enum"}


class Token(NamedTuple):
    kind: str
    text: str
    start: int
    end: int


class Edit(NamedTuple):
    start: int
    end: int
    text: str


class Departure(NamedTuple):
    file: str
    line: int  # from 1
    old: str   # the lines that change, without indentation
    new: str
    source: str  # the whole file with the change
    rank: str    # departures are drawn in this order


def tokens_of(source):
    tokens = [Token(match.lastgroup if match.lastgroup != "end" else "text", match.group(),
                    match.start(), match.end()) for match in TOKEN.finditer(source)]
    return [each for each in tokens if each.kind not in ("comment", "directive")]


class Code:
    """A source's tokens, with their brackets matched."""

    def __init__(self, source):
        self.source = source
        self.tokens = tokens_of(source)
        self.closing = {}  # the index of an opening bracket: that of the closing one
        self.opening = {}
        self.braces = {}   # the index of a `{`: "block", "scope" or "list"
        self.inside = []   # for each token, the index of the brace around it
        self._match_brackets()
        self.frozen = self._static_assertions()

    def text(self, index):
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def kind(self, index):
        return self.tokens[index].kind if 0 <= index < len(self.tokens) else ""

    def between(self, first, last):
        """The source from one token to another, both included."""
        return self.source[self.tokens[first].start:self.tokens[last].end]

    def space_before(self, index):
        return self.source[self.tokens[index].start - 1:self.tokens[index].start].isspace()

    def space_after(self, index):
        return self.source[self.tokens[index].end:self.tokens[index].end + 1].isspace()

    def is_spaced(self, index):
        return self.space_before(index) and self.space_after(index)

    def is_in_block(self, index):
        return self.braces.get(self.inside[index]) == "block"

    def ends_control(self, index):
        """Whether a `)` ends what an `if`, `for` or `while` asks."""
        before = self.opening[index] - 1
        return self.text(before) in CONTROLS or self.text(before - 1) == "if"  # `if constexpr (`

    def _match_brackets(self):
        open_brackets, head = [], 0
        for index, token in enumerate(self.tokens):
            braces = [each for each in open_brackets if self.text(each) == "{"]
            self.inside.append(braces[-1] if braces else -1)
            if token.text == "{":
                self.braces[index] = self._brace_kind(head, index)
            if token.kind == "operator" and token.text in "([{":
                open_brackets.append(index)
            elif token.kind == "operator" and token.text in ")]}" and open_brackets:
                self.opening[index] = open_brackets.pop()
                self.closing[self.opening[index]] = index
            if token.text in "{};":
                head = index + 1

    def _brace_kind(self, head, index):
        words = [each.text for each in self.tokens[head:index]]
        if SCOPES & set(words) and "(" not in words:
            return "scope"
        before, around = self.text(index - 1), self.braces.get(self.inside[index])
        if before in (")", "else", "do", "try", "const", "noexcept", "override", ";", "}", ":"):
            return "list" if before == "}" and around == "list" else "block"
        if before == "{" and around == "block" or "->" in words and ")" in words[:words.index("->")]:
            return "block"
        return "list"

    def _static_assertions(self):
        frozen = set()
        for index, token in enumerate(self.tokens):
            if token.text == "static_assert":
                frozen.update(range(index, self.closing[index + 1] + 1))
        return frozen


def constants_by_one(text):
    number = re.fullmatch(r"(0[xX][\da-fA-F']+|0[bB][01']+|0|[1-9][\d']*)([uUlLzZ]*)", text)
    if number:
        value = int(number[1].replace("'", ""), 0)
        write = hex if text[:2] in ("0x", "0X") else str
        return [write(value + 1) + number[2], write(value - 1) + number[2]]
    number = re.fullmatch(r"([\d.][\d.'eE+-]*)([fFlL]?)", text)
    if number:
        value = float(number[1].replace("'", ""))
        return [repr(value + 1) + number[2], repr(value - 1) + number[2]]
    return []


def changed_tokens(code):
    for index, token in enumerate(code.tokens):
        texts = []
        if token.kind == "number":
            texts = constants_by_one(token.text)
        elif token.text in BINARY and code.is_spaced(index):
            texts = BINARY[token.text]
        elif token.text in STEPS:
            texts = STEPS[token.text]
        elif token.text == "-" and not code.space_after(index):
            texts = [""]
        if texts and index not in code.frozen:
            yield [Edit(token.start, token.end, text) for text in texts]


def end_of_operand(code, index):
    """The index after a name or a parenthesis with all that is called, indexed or reached from it."""
    while code.text(index) in ("*", "++", "--", "::"):
        index += 1
    if code.text(index) == "(":
        index = code.closing[index] + 1
    elif code.kind(index) == "word":
        index += 1
    else:
        return None
    while True:
        if code.text(index) in ("(", "["):
            index = code.closing[index] + 1
        elif code.text(index) in ("::", ".", "->"):
            index += 2
        elif code.text(index) == "<" and not code.space_before(index):
            while code.text(index) not in (">", ">>", ";", ""):
                index += 1
            index += 1
        else:
            return index


def is_expression(code, first, last):
    """Whether a statement is a call, an assignment or a step; `last` is its semicolon."""
    if code.text(first) in ("break", "continue"):
        return True
    if code.text(first) in NO_EXPRESSIONS:
        return False
    after = end_of_operand(code, first)
    if after is None:
        return False
    if after == last:
        return code.text(last - 1) == ")" or code.text(first) in STEPS
    return code.text(after) in ASSIGNMENTS | {"++", "--", "<<", ">>"}


def is_early_return(code, first, last):
    """A return with code after it: that at a function's end can't be left out."""
    if code.text(first) != "return":
        return False
    if code.text(last + 1) != "}" or code.text(first + 1) == ";":
        return True
    before = code.opening.get(last + 1, 0) - 1
    return code.text(before) == "else" or code.text(before) == ")" and code.ends_control(before)


def starts_statement(code, index):
    before = code.text(index - 1)
    return code.is_in_block(index) and (before in (";", "{", "}", "else", "do") or
                                        before == ")" and code.ends_control(index - 1))


def end_of_statement(code, index):
    while code.text(index) not in (";", "}", ")", ""):
        index = code.closing.get(index, index) + 1
    return index if code.text(index) == ";" else None


def dropped_statements(code):
    for first in range(len(code.tokens)):
        if not starts_statement(code, first):
            continue
        last = end_of_statement(code, first)
        if last and (is_expression(code, first, last) or is_early_return(code, first, last)):
            lines = code.between(first, last).count("\n")
            yield [Edit(code.tokens[first].start, code.tokens[last].end, ";" + "\n" * lines)]


def arguments_of(code, opening):
    """The first and last token of each argument between two brackets."""
    arguments, first, index = [], opening + 1, opening + 1
    while index < code.closing[opening]:
        index = code.closing.get(index, index) + 1
        if index == code.closing[opening] or code.text(index) == ",":
            arguments.append((first, index - 1))
            first = index + 1
    return [each for each in arguments if each[0] <= each[1]]


def is_declared(code, first, last):
    """Whether an argument is a parameter: two words in a row, or a `*` that touches its type."""
    return any(code.kind(each + 1) == "word" and
               (code.kind(each) == "word" or
                code.text(each) in ("*", "&", "&&", ">") and not code.space_before(each) and
                code.space_after(each)) for each in range(first, last))


def holds_arguments(code, opening):
    before = opening - 1
    if code.text(opening) == "{":
        return code.braces[opening] == "list"
    return code.text(opening) == "(" and code.text(before) not in NO_CALLS and (
        code.kind(before) == "word" or code.text(before) in (">", ")", "]"))


def swapped_arguments(code):
    for opening in code.closing:
        if opening in code.frozen or not holds_arguments(code, opening):
            continue
        arguments = arguments_of(code, opening)
        if any(is_declared(code, *each) for each in arguments):
            continue
        edits = []
        for left, right in zip(arguments, arguments[1:]):
            texts = code.between(*left), code.between(*right)
            comma = code.source[code.tokens[left[1]].end:code.tokens[right[0]].start]
            if texts[0] != texts[1]:
                edits.append(Edit(code.tokens[left[0]].start, code.tokens[right[1]].end,
                                  texts[1] + comma + texts[0]))
        if edits:
            yield edits


def places_of(source):
    """The places that can be changed, each with its changes."""
    code = Code(source)
    for kind in (changed_tokens, dropped_statements, swapped_arguments):
        yield from kind(code)


def stripped(text):
    return [line.strip() for line in text.splitlines() if line.strip()]


def whole_lines(source, start, end):
    return source.rfind("\n", 0, start) + 1, (source + "\n").index("\n", end)


def depart(file, source, edit, rank):
    first, last = whole_lines(source, edit.start, edit.end)
    new = source[first:edit.start] + edit.text + source[edit.end:last]
    return Departure(file, source.count("\n", 0, edit.start) + 1,
                     "\n".join(stripped(source[first:last])), "\n".join(stripped(new)),
                     source[:first] + new + source[last:], rank)


def all_departures(sources):
    for file, source in sources.items():
        for place in places_of(source):
            yield from (depart(file, source, edit, "") for edit in place)


def draw(sources, seed):
    """One departure for each place, in random order. A place's rank depends on its own lines alone, so
    that what is drawn elsewhere stays when a file changes."""
    drawn = []
    for file, source in sources.items():
        seen = Counter()
        for place in places_of(source):
            first, last = whole_lines(source, place[0].start, place[0].end)
            name = f"{seed} {file} {place[0].start - first} {source[first:last]} {place}"
            name = re.sub(r"(start|end)=\d+", "", name)
            seen[name] += 1
            rank = hashlib.sha256(f"{name} {seen[name]}".encode()).hexdigest()
            drawn.append(depart(file, source, place[int(rank, 16) % len(place)], rank))
    return sorted(drawn, key=lambda each: each.rank)
