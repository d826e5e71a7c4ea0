#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Turns what "morlc build" wrote for hlsl10 into SPIR-V, the Metal shading language and GLSL ES 3.00.

    convert.py BUILT OUTPUT

BUILT is the folder of "morlc build -o". Needs glslangValidator and spirv-cross.
"""
import json
import subprocess
import sys
from pathlib import Path

STAGES = {"vertex": "vert", "fragment": "frag"}
VARYINGS = 16


def run(*command):
    result = subprocess.run(list(map(str, command)), capture_output=True, text=True)
    if result.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{result.stdout}{result.stderr}")


def to_spirv(source, stage, spirv):
    # Every uniform and sampler gets a binding, and every varying the location of its place in the
    # struct, which is the same in both passes ("morlc check" warns of those for which it is not).
    run("glslangValidator", "-D", "-V", "-e", "main", "-S", stage, "--auto-map-bindings",
        "--auto-map-locations", source, "-o", spirv)


def to_gles(spirv, stage, gles):
    # GLSL ES 3.00 matches varyings by name, so they get names by their locations.
    direction = "out" if stage == "vert" else "in"
    names = [word for place in range(VARYINGS)
             for word in ("--rename-interface-variable", direction, place, f"varying{place}")]
    run("spirv-cross", spirv, "--es", "--version", "300", *names, "--output", gles)
    # Each pass has a block of uniforms, and a program's blocks need names of their own.
    gles.write_text(gles.read_text().replace("_Global", f"{stage}_Global"))


def convert(built, output, file, stage):
    spirv = output / (file + ".spv")
    gles = output / (file + ".gles." + stage)
    if not spirv.exists():
        spirv.parent.mkdir(parents=True, exist_ok=True)
        to_spirv(built / file, stage, spirv)
        run("spirv-cross", spirv, "--msl", "--output", output / (file + ".metal"))
        to_gles(spirv, stage, gles)
    return gles


def main():
    built, output = map(Path, sys.argv[1:])
    programs = set()
    for shader in json.loads((built / "index.json").read_text())["shaders"].values():
        for files in shader["hlsl10"].values():
            programs.add(tuple(sorted((STAGES[stage], file) for stage, file in files.items())))
    for program in sorted(programs):
        run("glslangValidator", "-l", *(convert(built, output, file, stage) for stage, file in program))
    print(f"{len(programs)} programs")


main()
