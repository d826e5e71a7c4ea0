#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Node files under git, and commands that are killed.

    node_files_test.py MORLC WORK EDITOR [COUNT]

EDITOR is the library of save_meanwhile.cpp. Merges COUNT random pairs of edits (default: 100), some of them by git itself, and kills as many "pack"s and "unpack"s.
"""
import copy
import json
import os
import random
import shutil
import signal
import subprocess
import sys
from pathlib import Path

FILE = Path("morl/fragment_shader.morl")


def run(*command, expect=(0,), **options):
    result = subprocess.run(list(map(str, command)), capture_output=True, text=True, **options)
    if result.returncode not in expect:
        sys.exit(f"{command}: status {result.returncode}\n{result.stdout}{result.stderr}")
    return result


def write(path, nodes):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps([{**node, "name": name} for name, node in nodes.items()]))


def read(path):
    return {node.pop("name"): node for node in json.loads(path.read_text())}


def make_base():
    return {
        f"node{i}": {
            "x": i, "y": 0.5, "ref": ["first", "second"], "k": i,
            "content": "\n".join(f"line {j} of node {i};" for j in range(9)),
        }
        for i in range(4)
    }


class Side:
    """The edits of one side. Each is a key, what it touches, and a function."""

    def __init__(self, name, base, dice):
        self.edits = []
        self.tokens = []
        for number in range(dice.randint(1, 4)):
            token = f"{name}{number}"
            node = dice.choice(list(base))
            kind = dice.choice(["line", "line", "line", "ref", "at", "member", "add", "remove", "rename"])
            touched = {key[:2] for key, _ in self.edits}
            gone = ("remove", node) in touched or ("rename", node) in touched
            if gone or (kind in ("remove", "rename") and any(other == node for _, other in touched)):
                continue
            line = dice.randrange(9)
            key = (kind, node if kind != "add" else token, line if kind == "line" else 0)
            if key in (other for other, _ in self.edits):
                continue
            self.edits.append((key, self.edit(kind, node, line, token)))
            if kind in ("line", "ref", "add"):
                self.tokens.append(token)

    @staticmethod
    def edit(kind, node, line, token):
        def change(nodes):
            if kind == "add":
                nodes[token] = {"x": 0, "y": 0, "ref": [], "content": token}
            elif kind == "remove":
                del nodes[node]
            elif kind == "rename":
                nodes[node + token] = nodes.pop(node)
            elif kind == "line":
                lines = nodes[node]["content"].split("\n")
                lines[line] = token
                nodes[node]["content"] = "\n".join(lines)
            elif kind == "ref":
                nodes[node]["ref"].append(token)
            elif kind == "at":
                nodes[node]["x"] += 100 + len(token)
            else:
                nodes[node][token] = {"by": token}

        return change

    def apply(self, nodes):
        # A node has its old name until everything else is done.
        for _, change in sorted(self.edits, key=lambda edit: edit[0][0] in ("remove", "rename")):
            change(nodes)
        return nodes


def touches(one, other):
    (kind, node, line), (other_kind, other_node, other_line) = one, other
    if node != other_node or "add" in (kind, other_kind):
        return False
    if "remove" in (kind, other_kind):
        return True
    return kind == other_kind and kind not in ("member", "ref") and abs(line - other_line) < 2


def merge_pairs(morlc, work, count):
    clean = 0
    for seed in range(count):
        dice = random.Random(seed)
        base = make_base()
        one, other = Side("ours", base, dice), Side("theirs", base, dice)
        for name, nodes in (("base", base), ("ours", one.apply(copy.deepcopy(base))),
                            ("theirs", other.apply(copy.deepcopy(base)))):
            write(work / name, nodes)
        is_clean = not any(touches(a, b) for a, _ in one.edits for b, _ in other.edits)
        clean += is_clean
        result = run(morlc, "merge", work / "base", work / "ours", work / "theirs", expect=(0,) if is_clean else (0, 1))
        merged = read(work / "ours")
        if is_clean:
            expected = copy.deepcopy(base)
            edits = sorted(one.edits + other.edits, key=lambda edit: edit[0][0] in ("remove", "rename"))
            for _, change in edits:
                change(expected)
            if merged != expected:
                sys.exit(f"pair {seed}: {merged}\nand not {expected}\n{result.stderr}")
        text = json.dumps(merged)
        lost = [token for token in one.tokens + other.tokens if token not in text]
        if lost or (result.returncode != 0) != ("<<<<<<<" in text):
            sys.exit(f"pair {seed}: lost {lost}, status {result.returncode}: {text}")
    if not count // 4 < clean < count:
        sys.exit(f"{clean} of {count} pairs touch nothing in common")
    print(f"{count} pairs merged, {clean} of them without a conflict")


def use_git(morlc, work):
    """What docs/morlc.md says about git."""
    repository = work / "repository"
    git = ["git", "-C", repository, "-c", "user.name=a", "-c", "user.email=a"]
    run("git", "init", "-q", "-b", "main", repository)
    (repository / ".gitattributes").write_text("*.morl diff=morl merge=morl\n")
    run(*git, "config", "diff.morl.textconv", f"'{morlc}' text")
    run(*git, "config", "merge.morl.driver", f"'{morlc}' merge %O %A %B --path %P")
    base = make_base()

    def commit(nodes, name):
        write(repository / FILE, nodes)
        run(*git, "add", ".")
        run(*git, "commit", "-qm", name)

    commit(base, "base")
    run(*git, "checkout", "-qb", "side")
    commit({**base, "node1": {**base["node1"], "content": base["node1"]["content"].replace("line 7", "theirs")}}, "side")
    run(*git, "checkout", "-q", "main")
    commit({**base, "node1": {**base["node1"], "content": base["node1"]["content"].replace("line 2", "ours")}}, "main")
    shown = run(*git, "show", "HEAD").stdout
    if "\n-line 2 of node 1;\n+ours of node 1;\n" not in shown:
        sys.exit(f"git shows\n{shown}")
    run(*git, "merge", "-q", "side", "-m", "merge")
    content = read(repository / FILE)["node1"]["content"]
    if "ours of node 1" not in content or "theirs of node 1" not in content:
        sys.exit(f"git merges to\n{content}")
    run(*git, "checkout", "-qb", "other", "HEAD~2")
    commit({**base, "node1": {**base["node1"], "content": base["node1"]["content"].replace("line 2", "other")}}, "other")
    result = run(*git, "merge", "-q", "main", expect=(1,))
    if f"{FILE}: error: both have changed node 'node1'" not in result.stderr:
        sys.exit(f"git says\n{result.stderr}")
    content = read(repository / FILE)["node1"]["content"]
    if content.count("<<<<<<<") != 1:
        sys.exit(f"a conflict becomes\n{content}")


def kill_commands(morlc, work, count):
    """However often a command is killed, all nodes are there, and the next run finishes."""
    project = work / "project"
    nodes = {f"node{i}": {"x": i, "y": 0, "ref": [f"node{i + 1}"], "content": "// text\n" * 50 + f"// {i}"} for i in range(300)}
    for name in ("vertex_shader", "post_effect", "special_output"):
        write(project / f"morl/{name}.morl", {})
    write(project / FILE, nodes)
    dice = random.Random(1)
    killed = 0
    for number in range(count):
        command = [morlc, "-C", project, dice.choice(["pack", "unpack"])]
        process = subprocess.Popen(list(map(str, command)), stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        try:
            process.wait(dice.uniform(0.001, 0.03))
        except subprocess.TimeoutExpired:
            process.send_signal(signal.SIGKILL)
            killed += 1
        error = process.communicate()[1]
        if process.returncode not in (0, -signal.SIGKILL):
            sys.exit(f"{command}: {error}")
        listed = run(morlc, "-C", project, "list").stdout.splitlines()
        if sum(line.startswith("node") for line in listed) != len(nodes):
            sys.exit(f"after run {number}, {command[-1]}, these are left:\n{listed}")
    run(morlc, "-C", project, "pack")
    run(morlc, "-C", project, "pack")
    if (project / "morl/fragment_shader").exists() or list(project.glob("morl/.*")) or read(project / FILE) != nodes:
        sys.exit("the nodes are not what they were")
    if killed < count // 10:
        sys.exit(f"only {killed} of {count} commands were killed")
    print(f"{count} commands, {killed} of them killed")


def meet(morlc, work, count):
    """Commands that run at once wait for each other."""
    project = work / "meeting"
    nodes = {f"node{i}": {"x": i, "y": 0, "ref": [], "content": f"// {i}"} for i in range(60)}
    for name in ("vertex_shader", "post_effect", "special_output"):
        write(project / f"morl/{name}.morl", {})
    write(project / FILE, nodes)
    for number in range(count):
        commands = [subprocess.Popen([morlc, "-C", project, each], stdout=subprocess.DEVNULL) for each in ("pack", "unpack") * 2]
        if any(command.wait() != 0 for command in commands):
            sys.exit(f"a command of round {number} has failed")
        sources = {path.stem for path in (project / "morl/fragment_shader").glob("*.morlsource")}
        if len(sources | set(read(project / FILE))) != len(nodes):
            sys.exit(f"nodes are lost in round {number}")
    print(f"{count} meetings")


def save_meanwhile(morlc, work, editor):
    """What an editor saves between the last look at a file and its replacement stays."""
    source = FILE.with_suffix("") / "node0.morlsource"
    for command, target in (("pack", FILE), ("pack", source), ("unpack", FILE)):
        project = work / f"saved-{command}-{target.suffix}"
        for name in ("vertex_shader", "post_effect", "special_output"):
            write(project / f"morl/{name}.morl", {})
        write(project / FILE, make_base())
        if command == "pack":
            run(morlc, "-C", project, "unpack", "node0")
        saved = (project / target).read_text() + " "
        (project / "saved").write_text(saved)
        result = run(morlc, command, expect=(1,), cwd=project,
                     env={"LD_PRELOAD": editor, "SAVED": "saved", "TARGET": str(target)})
        if f"{target} has been changed meanwhile" not in result.stderr or (project / target).read_text() != saved:
            sys.exit(f"{target} was saved while {command} ran, and is lost: {result.stderr}")
        if list(project.glob("morl/.*")) or list((project / source).parent.glob(".*")):
            sys.exit(f"{command} leaves files")


def main():
    morlc, work, editor = map(Path, sys.argv[1:4])
    count = int(sys.argv[4]) if len(sys.argv) > 4 else 100
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    os.environ["GIT_CONFIG_GLOBAL"] = os.devnull
    merge_pairs(morlc.resolve(), work, count)
    use_git(morlc.resolve(), work)
    save_meanwhile(morlc.resolve(), work, editor.resolve())
    kill_commands(morlc.resolve(), work, min(count, 200))
    meet(morlc.resolve(), work, min(count, 60))


main()
