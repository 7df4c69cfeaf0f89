"""The changes that are made to the product's code, each by a rule and with a name that lasts.

A name is the file, the text of the line and the rule: it stays when lines are added elsewhere.
"""

import dataclasses
import pathlib
import re

FOLDERS = ("objectjson", "rest", "serializer", "module", "exchange", "format")

# Files of Windows alone are not compiled here.
LEFT_OUT = ("module/AttachHandler.cpp", "module/AttachHandler.h")


@dataclasses.dataclass(frozen=True)
class Mutation:
    file: str
    name: str
    # The lines from `first` on that are replaced, counted from 0.
    first: int
    count: int
    lines: tuple

    def is_in_header(self):
        return self.file.endswith(".h")


def replaced(pattern, replacement):
    """A rule that replaces each occurrence in turn."""
    compiled = re.compile(pattern)

    def rule(line):
        for found in compiled.finditer(line):
            yield line[:found.start()] + found.expand(replacement) + line[found.end():]
    return rule


def number(line):
    for found in re.finditer(r"(?<![\w.\"'])(\d+)(?![\w.\"'])", line):
        yield line[:found.start()] + str(int(found.group(1)) + 1) + line[found.end():]


def condition(value):
    def rule(line):
        found = re.match(r"^(\s*(?:\} else )?if \()(?!const |auto\b)([^;]*)(\) \{)$", line)
        if found:
            yield f"{found.group(1)}{value} && ({found.group(2)}){found.group(3)}" if value == "false" else \
                f"{found.group(1)}{value} || ({found.group(2)}){found.group(3)}"
    return rule


# A statement that stands whole on its line: a call, an assignment or an increment.
STATEMENT = re.compile(r"^\s+(?!return|throw|using|static_assert|case|default|friend|explicit|virtual|const |auto |"
                       r"inline|break|continue|public|private|void |static |bool |int )[\w:*&(][^{}]*;$")
DECLARATION = re.compile(r"^\s+(?:[A-Z_]\w*(?:::\w+)*|int|bool|const|auto|std::\w+)(?:<[^()]*>)?[&*]? \w+(?: = .*|\(.*\)|\{.*\})?;$")


def dropped_statement(line):
    if STATEMENT.match(line) and not DECLARATION.match(line):
        yield re.match(r"^\s*", line).group() + ";"


def dropped_jump(line):
    if re.match(r"^\s+(break|continue|return);$", line):
        yield re.match(r"^\s*", line).group() + ";"


RULES = (
    ("== to !=", replaced(r" == ", " != ")),
    ("!= to ==", replaced(r" != ", " == ")),
    ("< to <=", replaced(r" < ", " <= ")),
    ("> to >=", replaced(r" > ", " >= ")),
    ("<= to <", replaced(r" <= ", " < ")),
    (">= to >", replaced(r" >= ", " > ")),
    ("&& to ||", replaced(r" && ", " || ")),
    ("|| to &&", replaced(r" \|\| ", " && ")),
    ("no !", replaced(r"(?<=[ (])!(?=[\w(])", "")),
    ("true to false", replaced(r"\btrue\b", "false")),
    ("false to true", replaced(r"\bfalse\b", "true")),
    ("number", number),
    ("++ to nothing", replaced(r"(?<=\w)\+\+(?=[);\]])", "")),
    ("+ to -", replaced(r" \+ (?=\d)", " - ")),
    ("- to +", replaced(r" - (?=\d)", " + ")),
    ("always", condition("true")),
    ("never", condition("false")),
    ("dropped", dropped_statement),
    ("dropped jump", dropped_jump),
    ("dropped case", replaced(r"^(\s+)case [\w:]+:$", r"\1")),
    ("other text", replaced(r"(?<!include )\"(\w[\w ]*)\"(?!\S*\.h)", r'"\1x"')),
    ("static_cast", replaced(r"static_cast<int>", "static_cast<short>")),
    ("wider cast", replaced(r"dynamic_cast<CAE(Part|SubAssembly|RunAssembly|ViewItem)\*>", r"static_cast<CAE\1*>")),
    ("as_const", replaced(r"std::as_const\((\w+)\)", r"\1")),
    ("nullptr test", replaced(r"\b(\w+) == nullptr \? ", r"\1 != nullptr ? ")),
)


def swapped(lines):
    """Two statements on neighbouring lines, the other way round."""
    for index in range(len(lines) - 1):
        first, second = lines[index], lines[index + 1]
        if not STATEMENT.match(first) or not STATEMENT.match(second) or DECLARATION.match(first) or \
                DECLARATION.match(second):
            continue
        if first.strip() != second.strip() and re.match(r"^\s*", first).group() == re.match(r"^\s*", second).group():
            yield index, (second, first)


def is_code(line):
    text = line.strip()
    return text and not text.startswith(("//", "#", "*", "static_assert", "namespace", "using "))


def mutations_of(file, text):
    lines = text.split("\n")
    seen = {}

    def named(line, rule):
        name = f"{file}: {line.strip()} [{rule}]"
        seen[name] = seen.get(name, 0) + 1
        return name if seen[name] == 1 else f"{name} #{seen[name]}"

    # A declaration that is dropped does not compile, and headers have little else.
    is_header = file.endswith(".h")
    for index, line in enumerate(lines):
        if not is_code(line):
            continue
        code = line.split(" //")[0]
        for rule_name, rule in RULES:
            if is_header and rule is dropped_statement:
                continue
            for changed in rule(code):
                if changed != code:
                    yield Mutation(file, named(line, rule_name), index, 1, (changed,))
    for index, pair in () if is_header else swapped(lines):
        yield Mutation(file, named(lines[index], "after the next"), index, 2, pair)


def all_mutations(source):
    for folder in FOLDERS:
        for path in sorted(pathlib.Path(source, folder).glob("*")):
            file = f"{folder}/{path.name}"
            if path.suffix in (".cpp", ".h") and file not in LEFT_OUT:
                yield from mutations_of(file, path.read_text(encoding="utf-8"))
