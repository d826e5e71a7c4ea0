#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""direct3d_test.py MORLC DLL QUESTIONS EXAMPLES PROBES: Microsoft's compiler takes every text of the samples without a
word, every name that the checks are silent about, and of the probes what tests/pictures/probes.json says."""

import json
import subprocess
import sys

GROUPS = ("names", "macros", "lost-code", "values", "stages", "targets", "limits")


def judge(morlc, dll, project):
    """What the compiler says, by shader and target; everything else is switched off."""
    command = [morlc, "check", "-C", project, "shaders.json", "-q", "-t", "hlsl,hlsl10", "--diagnostics", "json",
               "--d3dcompiler", dll] + [word for group in GROUPS for word in ("-W", f"no-{group}")]
    result = subprocess.run(command, capture_output=True, text=True)
    if result.returncode not in (0, 1):
        sys.exit(f"{' '.join(command)}: status {result.returncode}: {result.stderr}")
    said = {}
    for line in result.stderr.splitlines():
        fault = json.loads(line)
        if fault["severity"] == "info":
            sys.exit(f"{project}: {fault['message']}")
        for target in fault.get("targets", ["hlsl", "hlsl10"]):
            said.setdefault((fault.get("shader", ""), target), []).append(fault)
    return said


def expect_silence(said, what):
    for (shader, target), faults in said.items():
        sys.exit(f"{what}, {shader} in {target}: {faults[0]['message']} ({faults[0].get('node')})")


def refused(said, shader):
    return [target for target in ("hlsl", "hlsl10")
            if any(fault["severity"] == "error" for fault in said.get((shader, target), []))]


def main():
    morlc, dll, questions, examples, probe_file = sys.argv[1:]
    expect_silence(judge(morlc, dll, examples), "samples")
    expect_silence(judge(morlc, dll, f"{questions}/words"), "words")
    said = judge(morlc, dll, f"{questions}/probes")
    with open(probe_file, encoding="utf-8") as file:
        probes = json.load(file)
    wrong = []
    for number, probe in enumerate(probes):
        for target in refused(said, f"right_{number}") if probe.get("right") else []:
            wrong.append(f"{probe['row']}: {target} refuses the right line: "
                         f"{said[f'right_{number}', target][0]['message']}")
        found = refused(said, f"wrong_{number}")
        if found != probe.get("direct3d", []):
            wrong.append(f"{probe['row']}: \"direct3d\": {json.dumps(found)}")
    if wrong:
        sys.exit("\n".join(wrong))
    print(f"Microsoft's compiler takes the samples and the words, and judges {len(probes)} probes as documented")


main()
