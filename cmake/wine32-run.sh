#!/usr/bin/env bash
# Runs a 32-bit Windows program under 32-bit wine with a prefix kept in the
# build tree, as cmake/wine-run.sh does for 64-bit ones. 32-bit wine runs on
# the kernel's own 32-bit support or, where that is off, on the emulator that
# scripts/install-i386.sh registers; either way the program starts here.
set -euo pipefail
: "${ZQ_WINEPREFIX:=${WINEPREFIX:-$(pwd)/.wineprefix}}"
export WINEPREFIX="$ZQ_WINEPREFIX"
export WINEARCH=win32
export WINEDEBUG=-all
# A crash ends the program with its fault at once, rather than waiting in
# wine's debugger until the test's time runs out.
export WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d"
# Only the date and time of day may move, not the monotonic clock nor the
# times of files (see cmake/wine-run.sh).
export FAKETIME_DONT_FAKE_MONOTONIC=1
export NO_FAKE_STAT=1

# faketime's library does not reach the 64-bit time functions that 32-bit wine
# calls: under faketime, preload the project's shim for those instead. $LIB
# lets each loader pick the library of its own class (the 64-bit wine server
# gets an empty one), so no process is left with faketime's half of the pair.
if [ -n "${FAKETIME:-}" ]; then
  shim=${ZQ_FAKETIME32:-$(cd "$(dirname "$0")/.." && pwd)/build/win32/faketime32}
  if ! [[ $FAKETIME =~ ^[+-]?[0-9]+$ ]]; then
    echo "wine32-run.sh: FAKETIME=$FAKETIME: 32-bit runs pin the clock only as 'faketime DATE' does" >&2
    exit 2
  fi
  if [ ! -f "$shim/lib/i386-linux-gnu/libzqfaketime32.so" ]; then
    echo "wine32-run.sh: $shim has no 32-bit clock shim: build the win32 configuration first" >&2
    exit 2
  fi
  export LD_PRELOAD="$shim/\$LIB/libzqfaketime32.so"
fi
exec /usr/lib/wine/wine "$@"
