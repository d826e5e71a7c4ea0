#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""morlc build --watch and check --watch: what a round does, how soon, and what it reports.

    watch_test.py MORLC EXAMPLES WORK
"""
import json
import os
import select
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

import jsonschema

DOCS = Path(__file__).parents[2] / "docs"

# What a round may take from the change, on a machine that is busy with other tests.
SECONDS = 5


def check_form(found):
    """Checks a round against its schema, and its faults against theirs."""
    schema = json.loads((DOCS / "watch.schema.json").read_text())
    faults = json.loads((DOCS / "diagnostics.schema.json").read_text())
    schema["properties"]["faults"]["items"] = faults
    jsonschema.Draft202012Validator(schema).validate(found)
    return found


class Watch:
    def __init__(self, morlc, project, *arguments):
        command = [morlc, *arguments, "-C", project, "--watch", "--diagnostics", "json"]
        self.process = subprocess.Popen(list(map(str, command)), stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def round(self):
        end = time.monotonic() + SECONDS
        line = b""
        while not line.endswith(b"\n"):
            left = end - time.monotonic()
            if left < 0 or not select.select([self.process.stdout], [], [], left)[0]:
                self.process.kill()
                sys.exit(f"no round within {SECONDS} s: {line} {self.process.stderr.read()}")
            read = os.read(self.process.stdout.fileno(), 1 << 20)
            if not read:
                sys.exit(f"it has ended: {self.process.stderr.read()}")
            line += read
        return check_form(json.loads(line))

    def is_silent(self, seconds):
        return not select.select([self.process.stdout], [], [], seconds)[0]

    def end(self):
        self.process.send_signal(signal.SIGINT)
        errors = self.process.communicate(timeout=SECONDS)[1]
        if self.process.returncode != 0 or errors:
            sys.exit(f"Ctrl-C: status {self.process.returncode} {errors}")


def expect(found, wanted, about):
    if found != wanted:
        sys.exit(f"{about}: {found}\nand not {wanted}")


def main():
    morlc, examples, work = (Path(argument).resolve() for argument in sys.argv[1:])
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    shutil.copytree(examples / "morl", work / "morl")
    shutil.copy(examples / "shaders.json", work)
    subprocess.run([morlc, "unpack", "-C", work, "fog"], check=True, capture_output=True)
    manifest = json.loads((work / "shaders.json").read_text())
    fog = work / "morl/fragment_shader/fog.morlsource"
    with_fog = sorted(shader["name"] for shader in manifest["shaders"]
                      if "fog" in shader["vertex"] + shader["fragment"])
    files = work / "morl/post_effect.morl"

    build = Watch(morlc, work, "build", "shaders.json", "-o", "out")
    check = Watch(morlc, work, "check", "shaders.json")
    for watch in (build, check):
        first = watch.round()
        expect((first["whole"], first["faults"]), (True, []), "the first round")
    text = fog.read_text()

    fog.write_text(text.replace("fogRange", "fogLimits"))
    changed = build.round()
    expect((changed["changed"], changed["shaders"]), ([f"{work}/morl/fragment_shader/fog.morlsource"], with_fog), "an edit")
    if not changed["outputs"] or any("fogLimits" not in Path(output).read_text() for output in changed["outputs"]):
        sys.exit(f"outputs of an edit: {changed['outputs']}")
    check.round()

    fog.write_text(text.replace("fogRange.z", "fogRange.q"))
    faults = check.round()["faults"]
    expect({(fault["file"], fault["node"]) for fault in faults}, {(str(fog), "fog")}, "a fault")
    build.round()
    fog.write_text(text)
    expect([watch.round()["faults"] for watch in (build, check)], [[], []], "the fault is mended")

    # Half written, and written to the end before anybody need hear of it.
    whole = files.read_text()
    files.write_text(whole[: len(whole) // 2])
    time.sleep(0.1)
    files.write_text(whole.replace("blurStep", "blurStride"))
    for watch in (build, check):
        expect(watch.round()["faults"], [], "a file that is being written")
    files.write_text(whole[:-5])
    expect([len(watch.round()["faults"]) for watch in (build, check)], [1, 1], "a broken file")
    files.write_text(whole)
    for watch in (build, check):
        expect(watch.round()["faults"], [], "the file is mended")

    manifest["shaders"][0]["name"] = "another"
    (work / "shaders.json").write_text(json.dumps(manifest))
    expect([watch.round()["whole"] for watch in (build, check)], [True, True], "a shader of another name")
    index = json.loads((work / "out/index.json").read_text())
    expect(sorted(index["shaders"]), sorted(shader["name"] for shader in manifest["shaders"]), "the index")
    new = work / "morl/fragment_shader/new.morlsource"
    new.write_text("void main() {}\n")
    expect([watch.round()["shaders"] for watch in (build, check)], [[], []], "a new source")
    new.unlink()
    expect([watch.round()["changed"] for watch in (build, check)], [[str(new)]] * 2, "a source is gone")
    before = fog.stat()
    other = work / "other"
    other.write_text(text.replace("fogRange", "fogRenge"))
    os.utime(other, ns=(before.st_atime_ns, before.st_mtime_ns))
    other.rename(fog)
    expect([watch.round()["changed"] for watch in (build, check)], [[str(fog)]] * 2, "another file of the same size and time")
    fog.write_text(text)
    for watch in (build, check):
        watch.round()
    os.utime(fog)
    expect(build.round()["shaders"], [], "only the time has changed")
    check.round()
    if not build.is_silent(0.5):
        sys.exit(f"a round without a change: {build.round()}")
    build.end()
    check.end()
    print("all rounds are as expected")


main()
