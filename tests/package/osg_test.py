#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Builds the OpenSceneGraph example against the installed library, edits a node while it runs, and
compares its picture.

    osg_test.py BUILD [update]

The picture is compared by the mean colours of 8 by 8 fields, which osg_sphere.txt has.
"""
import json
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCE = Path(__file__).resolve().parent.parent.parent
EXPECTED = SOURCE / "tests/package/osg_sphere.txt"
FIELDS = 8
TOLERANCE = 4  # of 255


def fields(picture):
    magic, size, _, pixels = picture.read_bytes().split(b"\n", 3)
    assert magic == b"P6"
    width, height = map(int, size.split())
    step = width // FIELDS
    rows = []
    for top in range(0, height, step):
        means = []
        for left in range(0, width, step):
            for channel in range(3):
                total = sum(pixels[3 * (y * width + x) + channel]
                            for y in range(top, top + step) for x in range(left, left + step))
                means.append(round(total / step / step))
        rows.append(means)
    return rows


def edit(directory, change):
    """Changes the source of the node "lighting"."""
    path = directory / "morl/fragment_shader.morl"
    nodes = json.loads(path.read_text())
    for node in nodes:
        if node["name"] == "lighting":
            node["content"] = change(node["content"])
    path.write_text(json.dumps(nodes))


class Engine:
    """The example at work: it draws a frame for each line of input."""

    def __init__(self, program, directory, frames, picture):
        self.process = subprocess.Popen([program, directory, str(frames), picture], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE)

    def frame(self):
        self.process.stdin.write("\n")
        self.process.stdin.flush()
        return self.process.stdout.readline().strip()

    def end(self):
        _, errors = self.process.communicate(timeout=60)
        assert self.process.returncode == 0, errors
        return errors


def run(work, build):
    prefix = work / "morl"
    subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "-S", SOURCE / "examples/osg", "-B", work / "build", "-G", "Ninja",
                    f"-DCMAKE_PREFIX_PATH={prefix}"], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", work / "build"], check=True, stdout=subprocess.DEVNULL)
    nodes = work / "nodes"
    shutil.copytree(SOURCE / "examples/morl", nodes / "morl")
    pictures = [work / "first.ppm", work / "second.ppm"]
    said = []
    engine = Engine(work / "build/osg_sphere", nodes, 2, pictures[0])
    said += [engine.frame(), engine.frame()]
    errors = engine.end()
    assert errors == "", errors

    engine = Engine(work / "build/osg_sphere", nodes, 3, pictures[1])
    said.append(engine.frame())
    edit(nodes, lambda content: content.replace("diffuse = ambientColor;", "diffuse = ambientColor"))
    said.append(engine.frame())
    edit(nodes, lambda content: content.replace("diffuse = ambientColor", "diffuse = ambientColor * 5.0;"))
    said.append(engine.frame())
    errors = engine.end()
    assert said == ["new shaders", "the same shaders", "new shaders", "the same shaders", "new shaders"], said
    assert "miss ';':" in errors, errors
    return [fields(picture) for picture in pictures]


def distance(one, other):
    return max(abs(a - b) for rows in zip(one, other) for a, b in zip(*rows))


def main():
    work = Path(tempfile.mkdtemp())
    try:
        first, second = run(work, sys.argv[1])
    finally:
        shutil.rmtree(work)
    if sys.argv[2:] == ["update"]:
        EXPECTED.write_text("".join(" ".join(map(str, row)) + "\n" for row in first))
    expected = [list(map(int, line.split())) for line in EXPECTED.read_text().splitlines()]
    if distance(first, expected) > TOLERANCE:
        sys.exit(f"the picture differs by {distance(first, expected)} of 255: {first}")
    if distance(first, second) < 20:
        sys.exit("the edit has not changed the picture")
    print(f"the picture differs by {distance(first, expected)} of 255; an edit changes it by {distance(first, second)}")


main()
