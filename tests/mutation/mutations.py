"""Where a C++ source can be changed, and into what. The sources are formatted by clang-format, which
is what tells an operator (blanks on both sides) from a template bracket, a reference or a sign."""

import re
from typing import NamedTuple


class Mutation(NamedTuple):
    path: str  # from the root of the tree
    start: int
    end: int
    replacement: str
    kind: str

    def applied(self, text):
        return text[: self.start] + self.replacement + text[self.end :]


COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&"}
SIGNS = {"+": "-", "-": "+", "+=": "-=", "-=": "+="}
NOT_CODE = re.compile(
    r'R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])+\'|//[^\n]*|/\*(?:.|\n)*?\*/'
    r"|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*|\bstatic_assert\((?:.|\n)*?\);|^(?:template|using|namespace)\b[^;{\n]*",
    re.MULTILINE,
)
NUMBER = re.compile(
    r"(?<![\w.])(?:0[xX][0-9a-fA-F']+(?:\.[0-9a-fA-F']*)?(?:p[+-]?\d+)?|\d[\d']*(?:\.\d*)?(?:e[+-]?\d+)?)"
    r"(?P<suffix>[fFuUlLzZ]*)(?![\w.])"
)
STATEMENT = re.compile(
    r"(?:\+\+|--)?\*?[A-Za-z_][\w:.\[\]]*(?:->[\w.]+|\(\)[.\w]*|\[[^\]]*\][.\w]*)*"
    r"(?: [-+*/|&^%]?=(?!=) |(?:<[\w:, ]+>)?\(|\+\+;|--;|;)"
)


def code_only(text):
    """The text with everything that is no code blanked out, every place where it was."""
    return NOT_CODE.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), text)


def _constants(code):
    for found in NUMBER.finditer(code):
        number = found.group()
        real = "." in number or "p" in number or ("e" in number and not number.lower().startswith("0x"))
        if not real:
            plain = number.replace("'", "")
            value = int(re.sub(r"[uUlLzZ]+$", "", plain), 0) if not re.match(r"0\d", plain) else None
            if value is not None:
                yield found.start(), found.end(), f"{value + 1}{found.group('suffix')}", "constant"
            continue
        suffix = found.group("suffix")
        is_zero = not re.search(r"[1-9a-df]", re.split(r"[ep]", number[: len(number) - len(suffix)])[0].lower())
        yield found.start(), found.end(), f"1.0{suffix}" if is_zero else f"({number} * 1.25{suffix})", "constant"
    for found in re.finditer(r"\b(?:true|false)\b", code):
        yield found.start(), found.end(), "false" if found.group() == "true" else "true", "constant"


def _operators(code):
    for found in re.finditer(r"(?<=\S)\s(<=|>=|==|!=|<|>|&&|\|\|)\s", code):
        yield found.start(1), found.end(1), COMPARISONS[found.group(1)], "comparison"
    for found in re.finditer(r"(?<=\S)\s(\+=|-=|\+|-)\s", code):
        yield found.start(1), found.end(1), SIGNS[found.group(1)], "sign"
    for found in re.finditer(r"(?<=[\s(\[{])-(?=[\w(])", code):
        yield found.start(), found.end(), "", "sign"


def _statements(code):
    start_of = re.compile(r"(?:[;{}:]|^)[ \t]*\n(?:[ \t]*\n)*(?P<indent> {4,})(?=\S)")
    for found in start_of.finditer(code):
        start = found.end()
        if not STATEMENT.match(code, start) or re.match(r"(?:return|case|default|else|using)\b", code[start:]):
            continue
        depth = 0
        for place in range(start, len(code)):
            character = code[place]
            depth += (character in "([{") - (character in ")]}")
            if depth < 0:
                break
            if depth == 0 and character == ";":
                yield start, place + 1, ";", "dropped statement"
                break
            # A function's or a type's body is no statement.
            if depth == 0 and character == "}" and re.match(r"[ \t]*\n", code[place + 1 :]):
                break


def mutations_of(path, text):
    """All changes of one file, in a fixed order."""
    code = code_only(text)
    found = {*_constants(code), *_operators(code), *_statements(code)}
    return [Mutation(path, *change) for change in sorted(found)]
