#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Messages lead editors to their places: Vim's default errorformat, and the pattern of Visual Studio Code for gcc.

    editor_places.py MORLC WORK
"""
import json
import re
import shutil
import subprocess
import sys
from pathlib import Path

# "$gcc" of Visual Studio Code: file, line, column, severity, message.
GCC = re.compile(r"^(.*?):(\d+):(\d*):?\s+(?:fatal\s+)?(warning|error):\s+(.*)$")

# Each unknown name in these is where a message has to lead.
CONTENT = "uniform float4 u;\nout float4 o : COLOR0;\nvoid main()\n{\n\t/* \u00e9\U0001f600 \"\\ */ o = unknown0 + u;\n    o = unknown1;\n}"


def main():
    morlc, work = Path(sys.argv[1]).resolve(), Path(sys.argv[2])
    shutil.rmtree(work, ignore_errors=True)
    folder = work / "morl/fragment_shader"
    folder.mkdir(parents=True)
    escaped = json.dumps([{"name": "plain", "content": CONTENT}], indent=1)
    raw = json.dumps([{"content": CONTENT.replace("unknown", "unknowm"), "name": "raw"}], ensure_ascii=False)
    (work / "morl/post_effect.morl").write_text(escaped, encoding="utf-8")
    (work / "morl/special_output.morl").write_text(raw, encoding="utf-8")
    (folder / "own.morlsource").write_text("//! at: 1 2\n" + CONTENT.replace("unknown", "unknowp"), encoding="utf-8")
    messages = ""
    for node in ("plain", "raw", "own"):
        command = [morlc, "check", "-s", "fragment", "-t", "glsl", "-W", "no-verdict", node]
        messages += subprocess.run(command, cwd=work, capture_output=True, encoding="utf-8").stderr
    (work / "errors").write_text(messages, encoding="utf-8")
    script = ('set encoding=utf-8 | cgetfile errors | call writefile(map(filter(getqflist(), "v:val.valid"), '
              '{_, e -> join([bufname(e.bufnr), e.lnum, e.col], ":")}), "places") | '
              'cfirst | call writefile([getline(".")[col(".") - 1:]], "jump") | qa!')
    subprocess.run(["vim", "-u", "NONE", "-i", "NONE", "-N", "-es", "-c", script], cwd=work, check=True, timeout=60)
    by_vim = (work / "places").read_text(encoding="utf-8").splitlines()
    by_code = [found for found in map(GCC.match, messages.splitlines()) if found]
    if [f"{found[1]}:{found[2]}:{found[3]}" for found in by_code] != by_vim:
        sys.exit(f"Vim finds {by_vim} in\n{messages}")
    led = []
    for file, line, column, *_ in (found.groups() for found in by_code):
        text = (work / file).read_bytes().split(b"\n")[int(line) - 1][int(column) - 1:]
        led += re.findall(rb"^unknow\w\d", text)
    if sorted(led) != [b"unknow%c%d" % (letter, i) for letter in b"mnp" for i in (0, 1)]:
        sys.exit(f"the messages lead to {led}:\n{messages}")
    if not (work / "jump").read_text(encoding="utf-8").startswith("unknow"):
        sys.exit(f"Vim jumps to {(work / 'jump').read_text(encoding='utf-8')}")
    print(f"{len(led)} messages lead to their places")


main()
