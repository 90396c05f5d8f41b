"""Holds JSON documents against the schemas of a page: check_json.py PAGE DOCUMENT..."""

import json
import re
import sys

import jsonschema


def schemas(page):
    with open(page, encoding="utf-8") as text:
        blocks = re.findall(r"^```json (zek-\S+)\n(.*?)^```$", text.read(), re.MULTILINE | re.DOTALL)
    return {name: json.loads(block) for name, block in blocks}


def main():
    known = schemas(sys.argv[1])
    for schema in known.values():
        jsonschema.Draft202012Validator.check_schema(schema)
    for file in sys.argv[2:]:
        with open(file, encoding="utf-8") as text:
            document = json.load(text)
        error = jsonschema.exceptions.best_match(
            jsonschema.Draft202012Validator(known[document["schema"]]).iter_errors(document))
        if error:
            sys.exit(f"{file}: {error.json_path}: {error.message}")


main()
