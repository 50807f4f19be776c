#!/usr/bin/python3
"""Validates documents of cmifctl against the schema.

validate_documents.py SCHEMA DOCUMENTS [--every-command]

DOCUMENTS has one document on each line. Each is checked against the definition of its own command,
or that of errors, help or version, so that a message names the member that is wrong. With
--every-command there must be a document of each command that has one.
"""
import json
import sys

import jsonschema


def definition_of(document):
    for kind in ("error", "help", "program"):
        if kind in document:
            return kind
    return "verb." + str(document.get("command")).replace(" ", ".")


def problems(schema, documents):
    for document in documents:
        name = definition_of(document)
        if name not in schema["$defs"]:
            yield f"no definition {name}"
            continue
        rule = {"$ref": f"#/$defs/{name}", "$defs": schema["$defs"]}
        for error in jsonschema.Draft202012Validator(rule).iter_errors(document):
            details = [error, *(error.context or [])]
            yield "; ".join(f"{name}: {part.json_path}: {part.message}" for part in details)


def main():
    schema = json.load(open(sys.argv[1], encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    documents = [json.loads(line) for line in open(sys.argv[2], encoding="utf-8")]
    found = list(problems(schema, documents))
    if "--every-command" in sys.argv:
        seen = {definition_of(document) for document in documents}
        found += [
            f"no document of {name}"
            for name, rule in schema["$defs"].items()
            if name.startswith("verb.") and name not in seen and "not" not in rule
        ]
    print("\n".join(found), end="\n" if found else "")
    sys.exit(1 if found else 0)


main()
