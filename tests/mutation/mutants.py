"""Which one-line faults can be planted in a source file: a line-based tokenizer, no more."""

import re
from dataclasses import dataclass


@dataclass(frozen=True)
class Mutant:
    file: str  # from the project's root
    first: int  # lines, from 1
    last: int
    kind: str
    before: str  # the lines as they stand
    after: str

    def texts(self):
        """The change as it is told and as equal.txt lists it: without indentation, on one line each."""
        return _one_line(self.before), _one_line(self.after)


def _one_line(text):
    return " ".join(part.strip() for part in text.split("\n"))


COMPARISONS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}
SIGNS = {"+": "-", "-": "+"}
NOT_A_STATEMENT = re.compile(r"(return\b|if\b|for\b|while\b|switch\b|else\b|case\b|default\b|using\b|namespace\b|"
                             r"template\b|class\b|struct\b|enum\b|friend\b|static_assert\b|public\b|private\b|[}{])")
# what it declares is used: without it the rest does not compile
DECLARATION = re.compile(r"(const|constexpr|static|auto|struct|mutable)\b|[\w:]+(<.*>)?[&*]? \w+( = .*|[({].*)?;$")
TEXT = re.compile(r'"(?:[^"\\]|\\.)*"')


def mutants_of(file, source, siblings):
    """All mutants of a file. `siblings`: for a qualified name such as listener::Shell, another of its kind."""
    lines = source.split("\n")
    code = [_without_comment(line) for line in lines]
    found = []
    for index, line in enumerate(code):
        if not line.strip() or line.lstrip().startswith(("#", "using ", "namespace ", "///", "static_assert")):
            continue
        for kind, after in _changes(line, siblings):
            if after != line:
                tail = lines[index][len(line):]
                found.append(Mutant(file, index + 1, index + 1, kind, lines[index], after + tail))
    for first, last in _statements(code):
        before = "\n".join(lines[first:last + 1])
        found.append(Mutant(file, first + 1, last + 1, "statement dropped", before, ""))
    return found


def _without_comment(line):
    blanked = TEXT.sub(lambda text: "_" * len(text.group()), line)
    at = blanked.find("//")
    return line if at < 0 else line[:at].rstrip()


def _changes(line, siblings):
    """(kind, changed line) for every change within a line."""
    blanked = TEXT.sub(lambda text: '"' + "_" * (len(text.group()) - 2) + '"', line)

    def at(match, text):
        return line[:match.start()] + text + line[match.end():]

    for match in re.finditer(r"(?<= )(==|!=|<=|>=|<|>)(?= )", blanked):
        yield "comparison changed", at(match, COMPARISONS[match.group()])
    for match in re.finditer(r"(?<= )(&&|\|\|)(?= )", blanked):
        yield "&& and || exchanged", at(match, "||" if match.group() == "&&" else "&&")
    for match in re.finditer(r"\b(true|false)\b", blanked):
        yield "true and false exchanged", at(match, "false" if match.group() == "true" else "true")
    for match in re.finditer(r"(?<= )[+-](?= )", blanked):
        yield "+ and - exchanged", at(match, SIGNS[match.group()])
    for match in re.finditer(r"\+\+|--", blanked):
        yield "++ and -- exchanged", at(match, "--" if match.group() == "++" else "++")
    for match in re.finditer(r"(?<![\w.\"])\d+(?![\w.\"])", blanked):
        for step in (1, -1):
            if int(match.group()) + step >= 0:
                yield "constant changed", at(match, str(int(match.group()) + step))
    for match in TEXT.finditer(line):
        yield "text changed", at(match, '"' + (match.group()[2:] if len(match.group()) > 2 else 'x"'))
    for match in re.finditer(r"\b([a-z]\w*::[A-Z]\w+)\b(?!\()", blanked):
        if match.group() in siblings:
            yield "name changed", at(match, siblings[match.group()])
    for match in re.finditer(r"!(?=[\w(])", blanked):
        yield "negation dropped", at(match, "")
    match = re.match(r"(.*\b(?:if|while) \()(.*)(\)(?: \S.*;| \{)?)$", line)
    if match and _balanced(match.group(2)):
        yield "condition negated", f"{match.group(1)}!({match.group(2)}){match.group(3)}"
    match = re.match(r"(.*\breturn )(.+)(;.*)$", line)
    if match and _balanced(match.group(2)) and match.group(2) not in ("{}", "nullptr"):
        yield "neutral value returned", f"{match.group(1)}{{}}{match.group(3)}"
    for match in re.finditer(r"(?<=[\w>])\(", blanked):
        arguments = _arguments(blanked, match.end())
        for (a, b), (c, d) in zip(arguments, arguments[1:]):
            swapped = line[:a] + line[c:d] + line[b:c] + line[a:b] + line[d:]
            yield "arguments exchanged", swapped


def _balanced(text):
    depth = 0
    for letter in TEXT.sub("", text):
        depth += (letter in "([{") - (letter in ")]}")
        if depth < 0:
            return False
    return depth == 0


def _arguments(blanked, start):
    """Where the arguments of a call stand, when the call ends on its line."""
    depth, begin, found = 0, start, []
    for at in range(start, len(blanked)):
        letter = blanked[at]
        if letter in "([{":
            depth += 1
        elif letter in ")]}" and depth > 0:
            depth -= 1
        elif letter == ")" or (letter == "," and depth == 0):
            while begin < at and blanked[begin] == " ":
                begin += 1
            found.append((begin, at))
            begin = at + 1
            if letter == ")":
                return found
    return []


def _statements(code):
    """Whole statements of up to six lines that stand on lines of their own, and rows of tables."""
    before = "{"  # what the last line of code ended with
    for index, line in enumerate(code):
        text = line.strip()
        if not text:
            continue
        if before in (";", "{", "}", ":") and not NOT_A_STATEMENT.match(text) \
                and not DECLARATION.match(text):
            for last in range(index, min(index + 6, len(code))):
                whole = "\n".join(code[index:last + 1])
                if whole.endswith(";") and _balanced(whole):
                    yield index, last
                    break
        elif before in (";", "{", "}") and re.match(r"(if|for|while) \(.*\) \S.*;$", text) and _balanced(text):
            yield index, index
        elif before in (";", "{", "}") and re.match(r"return\b.*;$|break;$|continue;$", text):
            yield index, index
        elif re.match(r"\{.*\},$", text) and _balanced(text[:-1]):
            yield index, index
        before = text[-1]


def siblings_in(names):
    """For each constant of a namespace of a header of names, the next one of the same type."""
    found, group, members = {}, "", []

    def close():
        for this, other in zip(members, members[1:] + members[:1]):
            if this[0] != other[0] and this[1] == other[1]:
                found[f"{group}::{this[0]}"] = f"{group}::{other[0]}"

    for line in names.split("\n"):
        if match := re.match(r"namespace (\w+) \{", line):
            close()
            group, members = match.group(1), []
        elif match := re.match(r"inline constexpr (\S+) (\w+) =?", line):
            members.append((match.group(2), match.group(1)))
    close()
    return found
