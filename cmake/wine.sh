#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs a Windows program without a display, in a Windows of the build's own (build/wine).
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${MORL_WINE_PREFIX:-$here/build/wine}" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# Wine reads arguments and names of files in this encoding.
export LC_ALL=C.UTF-8
unset DISPLAY
exec "$(command -v wine64 || echo /usr/lib/wine/wine64)" "$@"
