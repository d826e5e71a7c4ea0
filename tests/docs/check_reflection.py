#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks what "morlc build" writes about the sample shaders against the schema.

    check_reflection.py SOURCE MORLC WORK
"""
import json
import subprocess
import sys
from pathlib import Path

import jsonschema


def main():
    source, morlc, work = map(Path, sys.argv[1:])
    schema = json.loads((source / "docs/reflection.schema.json").read_text())
    validator = jsonschema.Draft202012Validator(schema)
    validator.check_schema(schema)
    subprocess.run([morlc, "build", "-C", source / "examples", "shaders.json", "-o", work, "-q"], check=True)
    texts = 0
    unused = set(schema["$defs"]["declaration"]["properties"])
    for record in work.glob("*.json"):
        for name, text in json.loads(record.read_text()).get("texts", {}).items():
            texts += 1
            for error in validator.iter_errors(text):
                sys.exit(f"{record}: {name}: {error.json_path}: {error.message}")
            for declare in sum(text["declarations"].values(), []):
                unused -= declare.keys()
    if texts < 200 or unused:
        sys.exit(f"{texts} texts; no declaration has {sorted(unused)}")
    print(f"{texts} texts are as the schema says")


main()
