#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What "morlc check" says of programs that are valid, and of programs with one fault.

    generated_programs.py MORLC WORK [VALID FAULTY]

Nothing may be said of VALID random programs (default: 400), and the first message on each of FAULTY ones (default: 200)
must be about the line of its fault.
"""
import json
import random
import re
import shutil
import subprocess
import sys
from pathlib import Path

VERTEX = """in float3 position : POSITION;
out float4 oProjPos : SV_Position;
out float2 oUV : TEXAUTO;
out float3 oNormal : TEXAUTO;
void main() {
oProjPos = float4(position, 1.0);
oUV = position.xy;
oNormal = position;
}"""
DECLARATIONS = """uniform float gain;
uniform float3 sun;
uniform float4 tint;
uniform float4x4 world;
uniform sampler2D albedo : SAUTO;
uniform samplerCUBE sky : SAUTO;
in float2 oUV : TEXAUTO;
in float3 oNormal : TEXAUTO;
out float4 oColor : COLOR0;
void main() {"""
GLOBALS = {1: ["gain"], 2: ["oUV"], 3: ["sun", "oNormal"], 4: ["tint"]}
TYPES = {1: "float", 2: "float2", 3: "float3", 4: "float4"}


class Program:
    """Random statements, each on its line, of types that all targets take."""

    def __init__(self, dice):
        self.dice = dice
        self.names = {width: list(names) for width, names in GLOBALS.items()}
        self.lines = DECLARATIONS.split("\n")
        self.first = len(self.lines)
        self.unread = {}
        for number in range(dice.randint(3, 8)):
            self.declare(f"k{number}")
            if dice.random() < 0.5:
                self.change()
        sums = [f"float4({', '.join(self.parts(name, width))})" for name, width in self.unread.items()]
        self.lines += [f"oColor = {' + '.join(sums)};", "}"]

    @staticmethod
    def parts(name, width):
        return [name if width == 1 else f"{name}.{'xyzw'[min(i, width - 1)]}" for i in range(4)]

    def declare(self, name):
        width = self.dice.randint(1, 4)
        self.lines.append(f"{TYPES[width]} {name} = {self.value(width, 2)};")
        self.names[width].append(name)
        self.unread[name] = width

    def change(self):
        name, width = self.dice.choice(list(self.unread.items()))
        change = f"{name} {self.dice.choice(['*=', '+=', '-='])} {self.value(width, 1)};"
        kind = self.dice.randrange(6)
        if kind == 0:
            self.lines += [f"if ({self.value(1, 1)} {self.dice.choice(['<', '>', '<=', '>='])} {self.value(1, 1)}) {{", change, "}"]
        elif kind == 1:
            self.lines += [f"for (int i = 0; i < {self.dice.randint(1, 4)}; i++) {{", change, "}"]
        elif kind == 2:
            self.lines += [f"#if {self.dice.choice(['LIGHTS', 'LIGHTS > 1', 'FOG == 0 && LIGHTS > 0', 'FOG'])}", change, "#endif"]
        elif kind == 3:
            self.lines += ["#for LIGHTS : 0", change, "#endfor"]
        else:
            self.lines.append(change)

    def value(self, width, depth):
        kind = self.dice.randrange(9) if depth > 0 else self.dice.randrange(3)
        inner = [self.value(width, depth - 1) for _ in range(2)] if kind > 2 else []
        if kind == 0 and width == 1:
            return f"{self.dice.randint(0, 9)}.{self.dice.randint(0, 99)}"
        if kind == 1:
            wide = self.dice.randint(max(width, 2), 4)
            return f"{self.dice.choice(self.names[wide])}.{self.dice.choice(['xyzw', 'rgba'])[:width]}"
        if kind < 3:
            return self.dice.choice(self.names[width])
        if kind < 5:
            return f"{inner[0]} {self.dice.choice('+-*')} ({inner[1]})"
        if kind == 5:
            return f"{self.dice.choice(['abs', 'sin', 'cos', 'saturate'])}({inner[0]})"
        if kind == 6:
            return f"{self.dice.choice(['max', 'min', 'pow'])}({inner[0]}, {inner[1]})"
        if kind == 7 and width > 1:
            return f"lerp({inner[0]}, {inner[1]}, {self.value(1, depth - 1)})"
        return {
            1: f"dot({self.value(3, depth - 1)}, {self.value(3, depth - 1)})",
            2: f"float2({self.value(1, depth - 1)}, {self.value(1, depth - 1)})",
            3: f"normalize({inner[0]})",
            4: f"tex2D(albedo, {self.value(2, depth - 1)})",
        }[width]

    def spoil(self):
        """Puts one fault into a random line; returns its number, from 1 on."""
        while True:
            line = self.dice.randrange(self.first, len(self.lines) - 1)
            old = self.lines[line]
            pattern, new = self.dice.choice([
                (r";$", ""), (r"\)(?=[^)]*;)", ""), (r"\b(abs|sin|cos|saturate|max|min|pow|lerp|dot|normalize)\(", r"\1e("),
                (r"(?<== )(\d)\.\d+(?=;| [-+*])", r"\1"), (r"^float(\d?) ", r"flaot\1 "), (r"\b(gain|sun|tint|oUV|oNormal)\b", r"\1s"),
                (r"\.[xyzwrgba]+", ".xyzwx"), (r"\((\w+), (\w+)\)", r"(\1)"), (r" \* ", " % "), (r" = ", " == "),
            ])
            self.lines[line] = re.sub(pattern, new, old, count=1)
            if self.lines[line] != old and not old.startswith("#"):
                return line + 1


def check(morlc, project, programs):
    shutil.rmtree(project, ignore_errors=True)
    (project / "morl").mkdir(parents=True)
    files = {"vertex_shader": {"v": VERTEX}, "post_effect": {}, "special_output": {},
             "fragment_shader": {f"p{i}": "\n".join(program.lines) for i, program in enumerate(programs)}}
    for name, nodes in files.items():
        (project / f"morl/{name}.morl").write_text(
            json.dumps([{"name": node, "ref": [], "content": content} for node, content in nodes.items()]))
    shaders = [{"name": f"s{i}", "vertex": ["v"], "fragment": [f"p{i}"], "macros": {"LIGHTS": 2, "FOG": [0, 1]},
                "samplers": {"sky": 1}} for i in range(len(programs))]
    (project / "shaders.json").write_text(json.dumps({"shaders": shaders}))
    result = subprocess.run(
        [morlc, "-C", project, "check", "shaders.json", "--all", "-q", "--diagnostics", "json", "-W", "no-unused-macro",
         "-W", "no-unset-macro"], capture_output=True, text=True)
    told = {}
    for diagnostic in map(json.loads, result.stderr.splitlines()):
        told.setdefault(diagnostic.get("node", ""), []).append(diagnostic)
    return told


def main():
    morlc, work = map(Path, sys.argv[1:3])
    valid, faulty = map(int, (sys.argv[3:] or [400, 200]))
    programs = [Program(random.Random(seed)) for seed in range(valid)]
    for node, messages in check(morlc.resolve(), work, programs).items():
        source = "\n".join(programs[int(node[1:])].lines) if node else ""
        sys.exit(f"a valid program, and yet: {messages[0]}\n{source}")
    spoiled = [Program(random.Random(seed)) for seed in range(faulty)]
    lines = [program.spoil() for program in spoiled]
    told = check(morlc.resolve(), work, spoiled)
    wrong = []
    for i, line in enumerate(lines):
        first = min(told.get(f"p{i}", [{}]), key=lambda each: each.get("nodeLine", 0)).get("nodeLine")
        if first != line:
            wrong.append(f"{spoiled[i].lines[line - 1]!r} in line {line}: {told.get(f'p{i}', ['nothing'])[0]}")
    if wrong:
        sys.exit(f"{len(wrong)} of {faulty} faults are not told at their line:\n" + "\n".join(wrong[:20]))
    print(f"nothing is said of {valid} programs, and {faulty} faults are told at their line")


main()
