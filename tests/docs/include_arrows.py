#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that the folders of the library include only those before them, and no tool or binding their insides."""
import re
import sys
from pathlib import Path

FOLDERS = ["core", "ast", "parser", "linker", "translator", "check", "compiler", "c"]
# What several folders need although it stands further on: docs/architecture.md names them.
SHARED = {
    "parser/token.h",
    "compiler/morl_node.h",
    "compiler/pass_property.h",
    "compiler/pass_report.h",
    "compiler/shader_output.h",
}
INCLUDE = re.compile(r'^#include ["<](?:\.\./)*morl/(\w+)/([^">]+)[">]', re.MULTILINE)


def includes(root):
    for file in sorted(Path(root).rglob("*")):
        if file.suffix in (".h", ".cpp", ".c") and "node_modules" not in file.parts:
            for folder, rest in INCLUDE.findall(file.read_text()):
                yield file, folder, f"{folder}/{rest}"


def faults():
    for file, folder, header in includes("morl"):
        own = file.parts[1]
        if own in FOLDERS and FOLDERS.index(folder) > FOLDERS.index(own) and header not in SHARED:
            yield f"{file}: includes morl/{header}, from a later folder"
    for root in ("tools/morlc", "bindings"):
        for file, _, header in includes(root):
            if "/internal/" in header:
                yield f"{file}: includes morl/{header}, which is the library's own"


found = list(faults())
print("\n".join(found), file=sys.stderr, end="\n" if found else "")
sys.exit(1 if found else 0)
