#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Lists the files in git that nothing uses: no other file names them, and nothing reads their whole folder."""
import re
import subprocess
import sys
from pathlib import Path

# Read as a whole, file by file, by the tests, the fuzzers and the tools.
FOLDERS = ("tests/cases/", "tests/golden/", "fuzz/regressions/", "examples/morl/")
# Found by their names by git, GitHub, CMake, clang, Prettier and npm.
BY_NAME = {
    ".clang-format", ".clang-tidy", ".editorconfig", ".gitattributes", ".gitignore", ".npmrc", ".prettierignore",
    ".prettierrc.json", "CHANGELOG.md", "CMakePresets.json", "CONTRIBUTING.md", "LICENSE", "README.md", "SECURITY.md",
    "dev", "eslint.config.js", "package-lock.json", "package.json", "run", "tsconfig.json", "CMakeLists.txt",
}


def main():
    listed = subprocess.run(["git", "ls-files", "-z"], check=True, capture_output=True, text=True).stdout
    files = [Path(name) for name in listed.split("\0") if name]
    words = {}
    for file in files:
        text = file.read_bytes().decode("utf-8", "replace")
        for word in set(re.findall(r"[\w-]+", text)):
            words.setdefault(word, set()).add(file)

    # CMake names process_posix.cpp as "process_$<IF:...>", say; TypeScript reads all declarations.
    def is_named(file):
        stem = file.stem.split(".")[0]
        names = (stem, re.sub("[^_]*$", "", stem) or stem)
        return file.name.endswith(".d.ts") or any(words.get(name, set()) - {file} for name in names)

    unused = [
        file
        for file in files
        if file.name not in BY_NAME and not str(file).startswith(FOLDERS) and not is_named(file)
    ]
    for file in unused:
        print(f"{file}: nothing names this file, or reads its folder", file=sys.stderr)
    return 1 if unused else 0


sys.exit(main())
