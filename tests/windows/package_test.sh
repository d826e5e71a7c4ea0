#!/bin/sh
# SPDX-License-Identifier: MIT
# package_test.sh SOURCE BUILD WINE: what the DLL exports, and hosts that are built with the ZIP alone.
set -eu
source=$1
build=$2
wine=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$1" >&2
    exit 1
}

# The names behind "[Ordinal/Name Pointer] Table".
x86_64-w64-mingw32-objdump -p "$build/bin/morl.dll" |
    sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^[[:space:]]*\[ *[0-9]*\] \([^ ]*\)$/\1/p' >"$work/exports"
grep '^morl_' "$work/exports" | sort >"$work/functions"
diff "$source/tests/package/c_interface.txt" "$work/functions"
sed -n 's/^    //p' "$build/morl.def" | sort | diff "$work/functions" -
grep -v '^morl_' "$work/exports" | c++filt >"$work/classes"
[ "$(wc -l <"$work/classes")" -gt 100 ] || fail "the classes are not exported"
! grep -vE '(^|[( :])(vtable for |typeinfo for |typeinfo name for |virtual thunk to |non-virtual thunk to )?ns_ruke::' \
    "$work/classes" || fail "these names must not be exported"
x86_64-w64-mingw32-objdump -p "$build/bin/morl.dll" | sed -n 's/.*DLL Name: //p' | sort >"$work/needs"
printf 'KERNEL32.dll\nmsvcrt.dll\n' | diff - "$work/needs"

(cd "$work" && cpack -G ZIP -B zip --config "$build/CPackConfig.cmake" >/dev/null)
mkdir "$work/morl"
(cd "$work/morl" && cmake -E tar xf ../zip/morl-*.zip)
prefix=$(echo "$work"/morl/*)
for file in bin/morl.dll bin/morlc.exe lib/libmorl.dll.a lib/morl.def lib/morl.lib lib/libmorl_static.a include/morl/c/morl.h \
    share/doc/morl/LICENSE share/doc/morl/licences/jsoncpp.txt lib/cmake/morl/morl-config.cmake; do
    [ -f "$prefix/$file" ] || fail "the package has no $file"
done

for linkage in OFF ON; do
    for host in embed embed_c embed_hpp; do
        cmake -S "$source/examples/$host" -B "$work/$host-$linkage" -G Ninja -DSTATIC="$linkage" \
            -DCMAKE_TOOLCHAIN_FILE="$source/cmake/mingw.cmake" -Dmorl_DIR="$prefix/lib/cmake/morl" >/dev/null
        cmake --build "$work/$host-$linkage" >/dev/null
        [ "$linkage" = ON ] || cp "$prefix/bin/morl.dll" "$work/$host-$linkage"
    done
    "$wine" "$work/embed-$linkage/embed.exe" "$source/examples" | tr -d '\r' >"$work/embed"
    grep -q '^hlsl: vertex 783 bytes, 2 uniforms, 3 semantics; fragment 1933 bytes' "$work/embed"
    "$wine" "$work/embed-$linkage/edit_loop.exe" "$source/examples" | tr -d '\r' >"$work/loop"
    "$wine" "$work/embed_c-$linkage/embed_c.exe" "$source/examples" | tr -d '\r' | diff "$work/loop" -
    "$wine" "$work/embed_hpp-$linkage/embed_hpp.exe" "$source/examples" | tr -d '\r' | diff "$work/loop" -
    [ "$(wc -l <"$work/loop")" -gt 100 ] || fail "the edit loop prints too little"
done
(cd "$prefix/share/morl/examples" && "$wine" "$prefix/bin/morlc.exe" build shaders.json -o "$work/out") |
    grep '16 shaders, 272 variants'
