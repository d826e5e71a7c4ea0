#!/bin/sh
# SPDX-License-Identifier: MIT
# languages.sh BUILD: the examples in Rust and C# print what the one in Python prints, which the tests
# compare with those in C++ and C.
set -eu
source=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$1" --prefix "$work/morl" >/dev/null
export LD_LIBRARY_PATH="$work/morl/lib"

python3 "$source/examples/python/edit_loop.py" "$work/morl/lib/libmorl.so" "$source/examples" >"$work/expected"
[ "$(wc -l <"$work/expected")" -gt 100 ]

rustc --edition 2021 -D warnings "$source/examples/rust/edit_loop.rs" -L "$work/morl/lib" -o "$work/edit_loop"
mcs -warnaserror "$source/examples/csharp/EditLoop.cs" -out:"$work/EditLoop.exe"
# Runs a host: its name, and the command.
try() {
    name=$1
    shift
    "$@" "$source/examples" | diff "$work/expected" -
    if "$@" /nowhere 2>"$work/error"; then
        echo "$name: a missing folder is no error" >&2
        exit 1
    fi
    grep -q 'cannot read /nowhere/morl/vertex_shader.morl: No such file or directory' "$work/error"
    echo "$name: $(wc -l <"$work/expected") equal lines"
}
try Rust "$work/edit_loop"
try C# mono "$work/EditLoop.exe"
