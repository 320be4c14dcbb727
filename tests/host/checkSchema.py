"""Checks JSON files against a JSON schema.

    checkSchema.py SCHEMA FILE...
"""
import json
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file)
jsonschema.Draft202012Validator.check_schema(schema)
for path in sys.argv[2:]:
    with open(path, encoding="utf-8") as file:
        jsonschema.validate(json.load(file), schema, jsonschema.Draft202012Validator)
