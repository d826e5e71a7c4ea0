#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs a Windows program without a display, in a Windows of the build's own (build/wine).
# wine.sh --server OPTION: to the process that all programs of this Windows share
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${MORL_WINE_PREFIX:-$here/build/wine}" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# Wine reads arguments and names of files in this encoding.
export LC_ALL=C.UTF-8
unset DISPLAY
if [ "${1:-}" = --server ]; then
    shift
    exec "$(command -v wineserver64 || echo /usr/lib/wine/wineserver64)" "$@"
fi
exec "$(command -v wine64 || echo /usr/lib/wine/wine64)" "$@"
