#!/usr/bin/python3
"""validate_status.py SCHEMA DOCUMENTS: validates documents of cmif-sim status --json, one on each line.

Each of them is also tried without each of its members, and with one more, which must not fit."""
import json
import sys

import jsonschema


def main():
    schema = json.load(open(sys.argv[1], encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    documents = [json.loads(line) for line in open(sys.argv[2], encoding="utf-8")]
    problems = [f"{error.json_path}: {error.message}" for each in documents for error in validator.iter_errors(each)]
    for document in documents:
        changed = [{key: document[key] for key in document if key != name} for name in document]
        problems += [f"accepted: {each}" for each in changed + [{**document, "more": 1}] if validator.is_valid(each)]
    if {"clock", "replay"} - {name for document in documents for name in document}:
        problems.append("not a document of each form")
    print("\n".join(problems), end="\n" if problems else "")
    sys.exit(1 if problems else 0)


main()
