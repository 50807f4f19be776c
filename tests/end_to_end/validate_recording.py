#!/usr/bin/python3
"""Validates the lines of recordings against the schema.

validate_recording.py SCHEMA RECORDING...

Between them the recordings must have a line of every kind that the schema knows, but for "failed" and "lost".
Each changed line that must not fit is tried too, so that a schema that accepts anything is noticed.
"""
import json
import sys

import jsonschema

NO_LINES = {"failed", "lost", "text", "hex", "line", "record"}


def kind_of(line):
    kind = line.get("type", "head")
    return f"{line['channel']}_{kind}" if kind in ("request", "reply") else kind


def changed(line):
    """Lines that must be refused."""
    yield {**line, "more": 1}
    for name in line:
        if name != "payload":
            yield {key: value for key, value in line.items() if key != name}
        yield {**line, name: {"no": "text"}}


def main():
    schema = json.load(open(sys.argv[1], encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    seen, problems = {}, []
    for file in sys.argv[2:]:
        for number, text in enumerate(open(file, encoding="utf-8"), 1):
            line = json.loads(text)
            seen.setdefault(kind_of(line), line)
            kind = {"$ref": f"#/$defs/{kind_of(line)}", "$defs": schema["$defs"]}
            for error in jsonschema.Draft202012Validator(kind).iter_errors(line):
                problems.append(f"{file}:{number}: {error.json_path}: {error.message}")
    for kind in schema["$defs"].keys() - NO_LINES - seen.keys():
        problems.append(f"no line of the kind {kind}")
    for line in seen.values():
        problems += [f"accepted: {each}" for each in changed(line) if validator.is_valid(each)]
    print("\n".join(problems), end="\n" if problems else "")
    sys.exit(1 if problems else 0)


main()
