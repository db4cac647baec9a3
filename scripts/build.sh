#!/usr/bin/env bash
# The main job: install what is missing, build every configuration and show
# what was built.
set -euo pipefail
source "$(dirname "$0")/common.sh"

scripts/install-deps.sh
for preset in native win32 win64; do
  build_preset "$preset"
done

echo
echo "Built:"
for f in build/win32/Zarquette_vst2win.dll build/win64/Zarquette_vst2win64.dll; do
  if [ -f "$f" ]; then
    echo "  $f"
  fi
done
echo "  native libraries and tests: build/native"
echo "  win32 libraries:            build/win32"
echo "  win64 libraries and tests:  build/win64"
