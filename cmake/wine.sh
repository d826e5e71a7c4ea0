#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs a Windows program without a display, in a Windows of the build's own (build/wine).
# wine.sh --server start|stop: keeps the process that all programs of this Windows share, or ends it
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${MORL_WINE_PREFIX:-$here/build/wine}" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;d3dcompiler_47=n"
# Wine reads arguments and names of files in this encoding.
export LC_ALL=C.UTF-8
unset DISPLAY
if [ "${1:-}" = --server ]; then
    server=$(command -v wineserver64 || echo /usr/lib/wine/wineserver64)
    "$server" -k || true
    if [ "$2" = start ]; then
        mkdir -p "$WINEPREFIX"
        "$server" -p
    fi
    exit
fi
exec "$(command -v wine64 || echo /usr/lib/wine/wine64)" "$@"
