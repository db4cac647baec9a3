#!/usr/bin/env bash
# The main job: install what is missing, build every configuration, then render
# the host tool's built-in demo (an 8-bar drum and bass loop at 120 BPM)
# through the real Windows plug-in under wine64, into build/demo/zarquette-demo.wav,
# and capture the plug-in's editor in a window on a virtual display, into
# build/demo/zarquette-editor.png (and the Linux plug-in's in an X11 window,
# into build/demo/zarquette-editor-linux.png).
set -euo pipefail
source "$(dirname "$0")/common.sh"

scripts/install-deps.sh
for preset in native win32 win64; do
  build_preset "$preset"
done
init_wine_prefix "$root/build/win64"

mkdir -p build/demo
echo "== render the demo through Zarquette_vst2win64.dll under wine64"
# 10:00 on the 9th: a cat day, well away from the plug-in's lunch break.
(cd build/win64 && ZQ_WINEPREFIX="$root/build/win64/.wineprefix" faketime '2026-11-09 10:00:00' \
  "$root/cmake/wine-run.sh" tools/vsthost/vsthost.exe render Zarquette_vst2win64.dll \
  -o ../demo/zarquette-demo.wav --set Gauloises=70 --set Oignons=55 --set Bof=40 \
  --set "Vin Rouge=35" --set "Nuclear Power=OUI" 2> >(grep -v -E 'ALSA|^wine: ' >&2))

echo "== capture the editor of Zarquette_vst2win64.dll under wine64"
(cd build/win64 && ZQ_WINEPREFIX="$root/build/win64/.wineprefix" \
  "$root/tools/vsthost/tests/with-display.sh" "$root/cmake/wine-run.sh" tools/vsthost/vsthost.exe \
  screenshot Zarquette_vst2win64.dll -o ../demo/zarquette-editor.png --set Gauloises=70 --set Oignons=55 \
  --set Bof=40 --set "Vin Rouge=35" --set "Nuclear Power=OUI" --after-ms 500 \
  2> >(grep -v -E 'ALSA|^wine: |X connection' >&2))

echo "== capture the editor of Zarquette_vst2linux.so in an X11 window"
# A scratch key store: the user's own "Editor Zoom" must not change the picture.
(cd build/native && XDG_CONFIG_HOME="$root/build/demo/linux-keys" "$root/tools/vsthost/tests/with-display.sh" \
  tools/vsthost/vsthost screenshot Zarquette_vst2linux.so -o ../demo/zarquette-editor-linux.png \
  --set Gauloises=70 --set Oignons=55 --set Bof=40 --set "Vin Rouge=35" --set "Nuclear Power=OUI" \
  --after-ms 500)

echo
echo "Built:"
echo "  build/win32/Zarquette_vst2win.dll     the plug-in for 32-bit Windows hosts (the product)"
echo "  build/win64/Zarquette_vst2win64.dll   the same plug-in for 64-bit Windows hosts"
echo "  build/native/Zarquette_vst2linux.so   the same plug-in for Linux hosts (VST 2, editor in X11)"
echo "  build/native/zarquette.lv2/           the same plug-in as an LV2 bundle, with its editor (LV2 UI)"
echo "  build/*/tools/vsthost/vsthost[.exe]   the VST 2 host tool (info, render, preset, validate)"
echo "Demo: build/demo/zarquette-demo.wav"
echo "Editor: build/demo/zarquette-editor.png, build/demo/zarquette-editor-linux.png"
