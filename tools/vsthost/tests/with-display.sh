#!/usr/bin/env bash
# Runs a program that opens windows: on the X display the caller has (the
# test script runs the whole wine64 suite under one virtual server), or on a
# virtual server of its own with true colour, so captures are exact. A wine
# session started without a display cannot open windows later, so a run with
# its own server also gets a wine prefix of its own, apart from the tests that
# run at the same time without a display. ZQ_VIRTUAL_DISPLAY=1 asks for a
# virtual server even where there is a display (tests that move the real
# mouse must not take the user's).
set -euo pipefail
if [ -n "${DISPLAY:-}" ] && [ -z "${ZQ_VIRTUAL_DISPLAY:-}" ]; then
  exec "$@"
fi
if [ -n "${ZQ_WINEPREFIX:-}" ]; then
  export ZQ_WINEPREFIX="$ZQ_WINEPREFIX-display"
fi
exec xvfb-run -a -s "-screen 0 1280x1024x24" "$@"
