"""The changes that scripts/mutate makes: each one line of a C++ source, changed in one place."""

import itertools
import random
import re

# Pattern and replacements, applied to code only: comments are spaces, texts are underscores.
SWAPS = [
    (r" == ", [" != "]),
    (r" != ", [" == "]),
    (r" < ", [" <= ", " > "]),
    (r" > ", [" >= ", " < "]),
    (r" <= ", [" < "]),
    (r" >= ", [" > "]),
    (r" && ", [" || "]),
    (r" \|\| ", [" && "]),
    (r" \+ ", [" - "]),
    (r" - ", [" + "]),
    (r" \* ", [" + "]),
    (r" / ", [" * "]),
    (r" % ", [" * "]),
    (r" & ", [" | "]),
    (r" \| [\w:]+", [""]),  # one flag of several
    (r" [-+|&]= ", [" = "]),
    (r"\+\+", ["--"]),
    (r"--", ["++"]),
    (r"(?<!\w)!(?!=)", [""]),
    (r"\btrue\b", ["false"]),
    (r"\bfalse\b", ["true"]),
    (r"\b(break|continue);", [";"]),
    (r"\breturn;", [";"]),
    (r"(?<=\breturn) [^;]+(?=;)", [" {}"]),
    (r"(?<=\bif \().*(?=\)( \{)?$)", ["true", "false"]),
    (r"(?<=\bwhile \().*(?=\)( \{.*)?$)", ["false"]),
]

# A statement of one line that is not a declaration: a call or an assignment.
STATEMENT = re.compile(r"^(\s*)(?!return|using|delete|throw)([\w:.>\[\]*-]+(\(.*\)|\+\+|--| [-+|&]?= .*);)$")
PAIR = re.compile(r"(?<=[({])([^(){},]+), ([^(){},]+)(?=[,)}])")
CHOICE = re.compile(r" \? ([^?:]+) : ([^?:;,)]+)")
NUMBER = re.compile(r"(?<![\w.'])(0x[0-9a-fA-F]+|\d+)(?=[uUlL]*\b)(?!\.)")
LITERAL = re.compile(r"\"(?:[^\"\\]|\\.)*\"|(?<!\w)'(?:[^'\\]|\\.)+'")
NOT_PLAIN = re.compile(r"\\(?:x[0-9A-Fa-f]+|.)|%[-0-9.*]*[a-z%]*")


def mask(lines):
    """Each line with comments as spaces and the insides of literals as underscores."""
    in_comment = False
    for line in lines:
        masked = ""
        at = 0
        while at < len(line):
            literal = LITERAL.match(line, at)
            if in_comment:
                in_comment = not line.startswith("*/", at)
                masked += " " if in_comment else "  "
            elif line.startswith("//", at):
                masked += " " * (len(line) - at)
            elif line.startswith("/*", at):
                in_comment = True
                masked += "  "
            elif literal:
                masked += line[at] + "_" * (len(literal[0]) - 2) + line[at]
            else:
                masked += line[at]
            at = len(masked)
        yield masked


def other(character):
    return "y" if character == "x" else "x"


def literal_changes(line, code):
    for literal in LITERAL.finditer(code):
        start, end = literal.start() + 1, literal.end() - 1
        inside = line[start:end]
        if inside.endswith("\\n"):
            yield line[: end - 2] + line[end:]
        special = {at for part in NOT_PLAIN.finditer(inside) for at in range(*part.span())}
        plain = [at for at in range(len(inside)) if at not in special]
        if plain:
            at = start + random.Random(line).choice(plain)
            yield line[:at] + other(line[at]) + line[at + 1 :]


def exchange(line, match):
    """The match's first two groups, each in the other's place."""
    (start, middle), (after, end) = match.span(1), match.span(2)
    return line[:start] + line[after:end] + line[middle:after] + line[start:middle] + line[end:]


def code_changes(line, code):
    for pattern, replacements in SWAPS:
        for match in re.finditer(pattern, code):
            for replacement in replacements:
                yield line[: match.start()] + replacement + line[match.end() :]
    for pattern in (CHOICE,) if code.lstrip().startswith("enum") else (PAIR, CHOICE):
        for match in pattern.finditer(code):
            yield exchange(line, match)
    for match in NUMBER.finditer(code):
        digits = match[1]
        octal = digits.startswith("0") and digits.isdigit() and len(digits) > 1
        value = int(digits, 8 if octal else 0)
        for changed in (value + 1, value - 1):
            yield line[: match.start(1)] + (f"0{changed:o}" if octal else str(changed)) + line[match.end(1) :]
    statement = STATEMENT.match(code.rstrip())
    if statement:
        space = statement[1]
        yield space + ";"
        yield space + "return {}; " + line.strip()
        yield space + "return; " + line.strip()


def skipped(code):
    """Lines whose change can't compile, or doesn't change what the program does."""
    text = code.strip()
    return not text or text.startswith("static_assert") or (text[0] == "#" and not text.startswith("#define"))


def changes(path):
    """Yields (line number, line before, old line, new line) for a file."""
    lines = path.read_text().split("\n")
    for number, (line, code) in enumerate(zip(lines, mask(lines)), 1):
        if skipped(code):
            continue
        for new in {*code_changes(line, code), *literal_changes(line, code)} - {line}:
            yield number, lines[number - 2] if number > 1 else "", line, new


def named_in(text):
    """The (file, line before or "", old line, new line) that paragraphs of a text name: file, maybe
    the line before after two spaces, "- old", one or more "+ new", reason."""
    for paragraph in re.split(r"\n\n+", text.strip()):
        file, *lines = paragraph.split("\n")
        before, old, new = ([line[2:] for line in lines if line[:2] == mark] for mark in ("  ", "- ", "+ "))
        yield from ((file, *names) for names in itertools.product(before or [""], old, new))
