#!/usr/bin/env bash
# Runs a 64-bit Windows program under wine64 with a prefix kept in the build tree.
# The prefix lives beside the program's build folder so parallel builds never share it.
set -euo pipefail
: "${ZQ_WINEPREFIX:=${WINEPREFIX:-$(pwd)/.wineprefix}}"
export WINEPREFIX="$ZQ_WINEPREFIX"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
# Tests that pin the date with faketime share a wine server with tests that do
# not: the server measures every wait on its own monotonic clock, and a client
# whose monotonic clock was moved by hours would wait that long. Only the date
# and time of day are meant to move.
export FAKETIME_DONT_FAKE_MONOTONIC=1
# Nor the times of files: wine would take its own files for newer than the
# prefix and update the prefix at every start (and, with 32-bit wine
# installed, start 32-bit helpers for it, which faketime's library cannot join).
export NO_FAKE_STAT=1
exec /usr/lib/wine/wine64 "$@"
