#!/bin/sh
# SPDX-License-Identifier: MIT
# deb_test.sh PACKAGES: unpacks the Debian packages into a root of their own, runs the tool there, and
# builds a host with them.
set -eu
source=$(cd "$(dirname "$0")/../.." && pwd)
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
for package in "$1"/*.deb; do
    dpkg-deb -x "$package" "$root"
done
lib=$(echo "$root"/usr/lib/*-linux-gnu)
for file in usr/include/morl/morl.h usr/share/man/man1/morlc.1.gz usr/share/doc/libmorl2/copyright \
    usr/share/doc/morl-tools/licences/glslang-dev.txt usr/share/bash-completion/completions/morlc \
    usr/share/doc/morl/docs/engine.md; do
    [ -f "$root/$file" ] || {
        echo "the packages have no $file" >&2
        exit 1
    }
done
LD_LIBRARY_PATH=$lib "$root/usr/bin/morlc" build -C "$root/usr/share/morl/examples" shaders.json -o "$root/out" |
    grep '16 shaders, 272 variants'
cmake -S "$source/examples/embed_c" -B "$root/build" -G Ninja -Dmorl_DIR="$lib/cmake/morl" >/dev/null
cmake --build "$root/build" >/dev/null
"$root/build/embed_c" "$source/examples" | grep -q '^=== edit 2'
echo "the packages work"
