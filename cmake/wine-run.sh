#!/usr/bin/env bash
# Runs a 64-bit Windows program under wine64 with a prefix kept in the build tree.
# The prefix lives beside the program's build folder so parallel builds never share it.
set -euo pipefail
: "${ZQ_WINEPREFIX:=${WINEPREFIX:-$(pwd)/.wineprefix}}"
export WINEPREFIX="$ZQ_WINEPREFIX"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
exec /usr/lib/wine/wine64 "$@"
