#!/usr/bin/env bash
# lv2bench on the LV2 bundle beside Debian's LV2 effects, in one run:
#   scripts/bench-lv2.sh [BUNDLE] [FRAMES] [BLOCK]
# (default build/native/zarquette.lv2, 2^20 frames, blocks of 512). lv2bench
# runs every plug-in at 48 kHz on silence with its controls at their defaults
# and prints the seconds it took; the real-time factor is the audio's length
# over that time. Plug-ins that need a feature lv2bench does not offer (the
# zam-plugins and DPF ones want options:options) are reported as skipped.
# Timing is shared with whatever else runs: the load average is printed too.
set -euo pipefail

bundle=$(realpath "${1:-build/native/zarquette.lv2}")
frames=${2:-1048576}
block=${3:-512}
others=(
  http://gareus.org/oss/lv2/fil4#stereo
  http://gareus.org/oss/lv2/dpl#stereo
  http://gareus.org/oss/lv2/darc#stereo
  http://lsp-plug.in/plugins/lv2/art_delay_stereo
  http://lsp-plug.in/plugins/lv2/compressor_stereo
  http://lsp-plug.in/plugins/lv2/para_equalizer_x16_stereo
  http://lsp-plug.in/plugins/lv2/mb_compressor_stereo
  urn:zamaudio:ZamDelay
  http://distrho.sf.net/plugins/MVerb
)

work=$(mktemp -d)
err=$(mktemp)
trap 'rm -rf "$work" "$err"' EXIT
# The search path holds the bundle and the system's plug-ins, nothing else.
ln -s "$bundle" "$work/$(basename "$bundle")"
export LV2_PATH="$work:/usr/lib/lv2"

echo "load average before: $(cut -d' ' -f1-3 /proc/loadavg)"
printf '%-55s %10s %8s\n' plug-in seconds realtime
for uri in urn:velnor:zarquette "${others[@]}"; do
  line=$(lv2bench -b "$block" -n "$frames" "$uri" 2>"$err" | tail -n 1 || true)
  if [ -z "$line" ]; then
    printf '%-55s %s\n' "$uri" "skipped: $(grep -m1 . "$err" | cut -c1-90 | tr '\n' ' ')"
    continue
  fi
  seconds=${line%% *}
  printf '%-55s %10s %7.0fx\n' "$uri" "$seconds" "$(awk -v f="$frames" -v s="$seconds" 'BEGIN { print f / 48000 / s }')"
done
echo "load average after: $(cut -d' ' -f1-3 /proc/loadavg)"
