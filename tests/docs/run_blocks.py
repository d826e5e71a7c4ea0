#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the commands and code blocks of the documents named, and compares what they print.

Each document runs from top to bottom in its own copy of the repository, so a block can build on
those above it. The language of a block says what it is:

  console      "$ COMMAND" lines, each followed by what it prints; times and the line "..." may differ
  sh           commands that must succeed
  cpp, c       all cpp blocks of a document form one program, which is compiled and run in examples/;
               so do all c blocks
  cmake        how that program is built, as the target "engine"
  json         a JSON document
  morl [WORDS] a source that compiles in all targets; WORDS are macro values, or "errors" for one with
               faults, whose messages a "text" block then shows
  TARGET       what the source above becomes in a fragment pass; a line "..." stands for the rest

"<!-- file: NAME -->" before a block writes it to a file. "<!-- prepare: COMMAND -->" runs a command that
readers need not see. Blocks without a language, or called "text", are not run.
"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile



class Failure(Exception):
    pass


def list_targets(build):
    """The targets that morlc offers."""
    usage = subprocess.run([os.path.join(build, "tools/morlc"), "compile", "--help"], capture_output=True, text=True, check=True)
    return re.search(r"TARGET:\{(.*),all\}", usage.stdout)[1].split(",")


def expect(condition, text):
    if not condition:
        raise Failure(text)


def same(shown, printed):
    """Whether a block shows what was printed: "..." ends the comparison, and times differ."""
    shown, printed = (re.sub(r"\d+\.\d\d s$", "TIME", text, flags=re.M) for text in (shown, printed))
    if shown.endswith("...\n"):
        start = shown[: -len("...\n")]
        return printed.startswith(start)
    return shown == printed


class Document:
    """Runs the blocks of one document."""

    def __init__(self, path, source, build, directory):
        self.path = path
        self.source = source
        self.build = build
        self.directory = directory
        self.targets = list_targets(build)
        self.programs = {"cpp": [], "c": []}
        self.cmake = "find_package(morl 2.0 REQUIRED)\ntarget_link_libraries(engine PRIVATE morl::morl)\n"
        self.morl = None  # the last source, with its macros
        self.count = 0
        tools = os.path.join(build, "tools")
        self.environment = dict(os.environ, HOME=os.path.join(directory, "home"), PATH=tools + ":" + os.environ["PATH"],
                                CMAKE_PREFIX_PATH=build, MORL_BUILD=build,
                                CMAKE_TOOLCHAIN_FILE=os.path.join(source, "tests/docs/toolchain.cmake"))

    def run(self):
        with open(os.path.join(self.source, self.path), encoding="utf-8") as file:
            text = file.read()
        block = re.compile(r"<!-- prepare: (?P<prepare>.*?) -->|"
                           r"(?:<!-- file: (?P<file>\S+) -->\n)?"
                           r"^```(?P<language>\S*)(?P<words>[^\n]*)\n(?P<body>.*?)^```$", re.M | re.S)
        for match in block.finditer(text):
            line = text.count("\n", 0, match.start()) + 1
            try:
                self.block(match)
            except Failure as failure:
                raise Failure(f"{self.path}:{line}: {failure}") from None
        if any(self.programs.values()):
            self.run_programs()

    def block(self, match):
        if match["prepare"]:
            self.shell(match["prepare"])
            return
        language, body = match["language"], match["body"]
        if match["file"]:
            self.write(match["file"], body)
        words = match["words"].split()
        if language in self.targets:
            self.compare_target(language, body)
        elif language == "morl":
            self.compile_morl(words, body)
        elif language == "text" and self.morl and "errors" in self.morl:
            self.compare_errors(body)
        elif language in ("text", ""):
            return
        else:
            expect(hasattr(self, "run_" + language), f"unknown language of a block: {language}")
            getattr(self, "run_" + language)(body)
        self.count += 1

    def write(self, name, text):
        path = os.path.join(self.directory, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)

    def shell(self, command):
        developer = re.match(r"\./dev (\w+)", command)
        if developer:
            self.check_dev(developer[1])
            return ""
        result = subprocess.run(["bash", "-c", command], cwd=self.directory, env=self.environment,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        self.status = result.returncode
        return result.stdout

    def check_dev(self, command):
        """Checks a command of ./dev. This test is part of "./dev test", and other commands take
        minutes and are run by .ci/run, so only "demo" is run, whose build exists already."""
        usage = subprocess.run(["./dev", "help"], cwd=self.source, capture_output=True, text=True, check=True)
        expect(re.search(rf"^  {command} ", usage.stdout, re.M), f"./dev help does not know {command}")
        self.status = 0
        if command == "demo":
            demo = subprocess.run(["./dev", "demo"], cwd=self.source, capture_output=True, text=True, check=False)
            expect(demo.returncode == 0 and demo.stdout.count("\n=== ") == 2 * len(self.targets), demo.stdout + demo.stderr)

    def run_console(self, body):
        commands = re.split(r"^\$ ", body, flags=re.M)
        expect(commands[0] == "", "the block does not begin with a command")
        for command in commands[1:]:
            lines = re.match(r"(?:[^\n]*\\\n)*[^\n]*\n", command)[0]
            printed = self.shell(lines)
            shown = command[len(lines):]
            expect(same(shown, printed), f"$ {lines}prints\n{printed}and not\n{shown}")

    def run_sh(self, body):
        for command in re.findall(r"(?:[^\n]*\\\n)*[^\n]+\n", body):
            command = re.sub(r"\s+# .*", "", command)
            printed = self.shell(command)
            expect(self.status == 0, f"{command}fails:\n{printed}")

    def run_json(self, body):
        try:
            json.loads(body)
        except ValueError as error:
            raise Failure(error) from None

    def run_cpp(self, body):
        self.programs["cpp"].append(body)

    def run_c(self, body):
        self.programs["c"].append(body)

    def run_cmake(self, body):
        self.cmake = body

    def write_program(self, language):
        """Writes a project with the program that the blocks of a language form."""
        lines = "".join(self.programs[language]).splitlines(keepends=True)
        includes = [line for line in lines if line.startswith("#")]
        rest = [line for line in lines if not line.startswith("#")]
        main = "int main(void)\n{\n" + "".join(rest) + "    return 0;\n}\n"
        self.write(f"program/{language}/main.{language}", "".join(includes) + main)
        self.write(f"program/{language}/CMakeLists.txt",
                   f"cmake_minimum_required(VERSION 3.25)\nproject(program {'CXX' if language == 'cpp' else 'C'})\n"
                   f"add_executable(engine main.{language})\n" + self.cmake)

    def run_programs(self):
        for language, blocks in self.programs.items():
            if not blocks:
                continue
            self.write_program(language)
            build = f"program/{language}/build"
            printed = self.shell(f"cmake -S program/{language} -B {build} -G Ninja && cmake --build {build} && "
                                 f"cd examples && ../{build}/engine")
            expect(self.status == 0, f"{self.path}: the program of its {language} blocks fails:\n{printed}")

    def compile_morl(self, words, body):
        self.morl = {"words": words}
        if "errors" in words:
            self.morl["errors"] = True
        for name in ("vertex_shader", "post_effect", "special_output"):
            self.write(f"blocks/morl/{name}.morl", "[]")
        self.write("blocks/morl/fragment_shader/node.morlsource", body)
        for target in self.targets:
            self.morl[target] = self.shell(f"morlc -C blocks --all -t {target} -s fragment node "
                                           + " ".join("-D" + word for word in words if "=" in word))
            expect("errors" in words or self.status == 0, f"does not compile in {target}:\n{self.morl[target]}")

    def compare_target(self, target, body):
        expect(self.morl, "there is no source before this block")
        expect(same(body, self.morl[target]), f"the source becomes\n{self.morl[target]}and not\n{body}")

    def compare_errors(self, body):
        messages = re.findall(r"^\S+/(node.morlsource:\S+ error: .*) \(node node, .*\)$", self.morl["glsl"], re.M)
        printed = "".join(message + "\n" for message in messages)
        self.morl = None
        expect(printed == body, f"the source gives\n{printed}and not\n{body}")


def is_made(is_root, name):
    """Whether a file or folder is no part of the source: what is built, and the logs that ./dev keeps for a moment."""
    return name == "node_modules" or is_root and (name in ("build", ".git") or name.startswith("build-"))


def main():
    source, build, *documents = sys.argv[1:]
    failures = 0
    for document in documents:
        with tempfile.TemporaryDirectory() as directory:
            shutil.copytree(source, directory, symlinks=True, dirs_exist_ok=True,
                            ignore=lambda folder, names: [name for name in names if is_made(folder == source, name)])
            run = Document(document, source, build, directory)
            try:
                run.run()
                print(f"{document}: {run.count} blocks")
            except Failure as failure:
                print(failure)
                failures += 1
    sys.exit(1 if failures else 0)


main()
