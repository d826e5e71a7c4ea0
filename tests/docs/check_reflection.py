#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks what "morlc build" writes about the sample shaders, and what it says of faults, against the schemas.

    check_reflection.py SOURCE MORLC WORK
"""
import json
import subprocess
import sys
from pathlib import Path

import jsonschema


def read_schema(path):
    schema = json.loads(path.read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    return schema, jsonschema.Draft202012Validator(schema)


def check_diagnostics(source, morlc):
    schema, validator = read_schema(source / "docs/diagnostics.schema.json")
    command = [morlc, "check", "-C", source / "examples", "--diagnostics", "json", "--show-generated"]
    passes = ["--vertex", "vertex_static,transform", "--fragment", "unlit,surface_out"]
    lines = subprocess.run(command + passes, capture_output=True, text=True).stderr.splitlines()
    for line in lines:
        for error in validator.iter_errors(json.loads(line)):
            sys.exit(f"{line}: {error.json_path}: {error.message}")
    if not any("nodeLine" in json.loads(line) for line in lines):
        sys.exit(f"no line has a place in a node: {lines}")


def main():
    source, morlc, work = map(Path, sys.argv[1:])
    check_diagnostics(source, morlc)
    schema, validator = read_schema(source / "docs/reflection.schema.json")
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
