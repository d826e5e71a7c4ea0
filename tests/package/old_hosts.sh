#!/bin/sh
# SPDX-License-Identifier: MIT
# Hosts in C++ of other versions are refused by the loader, which says what they need.
#
#     old_hosts.sh BUILD
#
# BUILD has the library that they are run with. Other versions are built from git's history below it.
set -eu
source=$(cd "$(dirname "$0")/../.." && pwd)
build=$1
work=$build/old_hosts
mkdir -p "$work"

# Builds the shared library of a commit.
build_commit() {
    [ ! -e "$work/$1/libmorl.so" ] || return 0
    rm -rf "$work/source-$1"
    mkdir -p "$work/source-$1"
    git -C "$source" archive "$1" | tar -x -C "$work/source-$1"
    cmake -S "$work/source-$1" -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE=Release -DMORL_TESTS=OFF -DMORL_TOOLS=OFF >/dev/null
    cmake --build "$work/$1" --target morl >/dev/null
}

# Builds a host: its name, the headers, the folder of the library.
build_host() {
    c++ -std=c++17 -I "$2" "$source/tests/package/old_hosts.cpp" -o "$work/$1" -L "$3" -lmorl
}

# Runs a host with the library of a folder, and compares what is said.
expect() {
    said=$(cd "$work" && LD_LIBRARY_PATH="$2" "$work/$1" 2>&1 || true)
    case "$said" in
    *"$3"*) echo "$1: $3" ;;
    *)
        echo "$1: should be told '$3', but:" >&2
        echo "$said" >&2
        exit 1
        ;;
    esac
}

for version in 1.0:94929fa~1 1.1:cc60066; do
    commit=$(git -C "$source" rev-parse --verify -q "${version#*:}^{commit}") || {
        echo "NOT CHECKED: a host of ${version%:*}, as this clone has no commit ${version#*:} (git fetch --unshallow)" >&2
        continue
    }
    host=host-${version%:*}
    build_commit "$commit"
    build_host "$host" "$work/source-$commit" "$work/$commit"
    expect "$host" "$work/$commit" "the host runs"
    expect "$host" "$build" "libmorl.so.1: cannot open shared object file"
done

# A library of the next minor version, with the same code.
build_host host-now "$source" "$build"
expect host-now "$build" "the host runs"
mkdir -p "$work/next"
now=$(sed -n 's/^\(MORL_CXX_[0-9.]*\) {/\1/p' "$build/exports.map")
sed "s/^$now /${now%.*}.999 /" "$build/exports.map" >"$work/next/exports.map"
find "$build/CMakeFiles/morl_shared_objects.dir" -name '*.o' -printf '"%p"\n' >"$work/next/objects"
c++ -shared -o "$work/next/libmorl.so.2" -Wl,-soname,libmorl.so.2 \
    -Wl,--version-script="$work/next/exports.map" "@$work/next/objects" -ljsoncpp
expect host-now "$work/next" "version \`$now' not found"
