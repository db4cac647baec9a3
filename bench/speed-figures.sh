#!/usr/bin/env bash
# The speed figures of the loop engine and the whole effect, before and after a
# change, from one run on one machine: the benchmark programs of two build
# trees, then vsthost bench of both plug-ins (the Linux library natively, the
# 64-bit DLL under wine64) in the busiest setting, then Debian's VST 2 plug-ins
# through the same host for scale. Every figure is the median of the repeats
# and a real-time factor on one core (CPU time).
#
#   bench/speed-figures.sh BEFORE_REPO AFTER_REPO
#
# Each repository needs build/native (preset native) and, for the DLL,
# build/win64 (preset win64) with the targets built. Numbers move with the
# machine's load: the load average is printed first and last. ZQ_BENCH_REPEATS,
# ZQ_BENCH_SECONDS and ZQ_BENCH_DLL_SECONDS set the passes and their lengths.
set -euo pipefail
before=$(cd "${1:?before repository}" && pwd)
after=$(cd "${2:?after repository}" && pwd)
repeats=${ZQ_BENCH_REPEATS:-7}
seconds=${ZQ_BENCH_SECONDS:-20}
# wine's CPU clock ticks every 15.6 ms: the DLL's passes must be long enough.
dll_seconds=${ZQ_BENCH_DLL_SECONDS:-300}

# The busiest setting (120 BPM), at 10:00 on a cat day: no lunch break.
busy=(--norm Tempo=0.333333 --norm Bof=0.5 --norm Gauloises=1 --norm "Nuclear Power=1" --norm Oignons=1
      --norm "Vin Rouge=1")
morning=(faketime '2026-11-09 10:00:00')
debian_plugins=(ZamTube ZaMaximX2 ZamVerb ZamComp ZamEQ2 MVerb SoulForce 3BandEQ lsp-plugins/compressor-stereo
                lsp-plugins/limiter-stereo)

medians() {
  "$1" --benchmark_repetitions="$repeats" --benchmark_report_aggregates_only=true 2>/dev/null |
    awk '/_median/ { for (i = 1; i <= NF; ++i) if ($i ~ /^realtime_x=/) { sub("realtime_x=", "", $i); print "  " $1, $i } }'
}

factor() {
  grep -o 'median [0-9.]*x' | sed 's/median //'
}

echo "load: $(uptime)"
for bench in bench_BeretBench bench_ZarquetteDspBench; do
  for repo in "$before" "$after"; do
    echo "$bench, $repo:"
    medians "$repo/build/native/bench/$bench"
  done
done

for block in 512 32; do
  for repo in "$before" "$after"; do
    native=$(cd "$repo/build/native" && "${morning[@]}" ./tools/vsthost/vsthost bench Zarquette_vst2linux.so \
             --block "$block" --seconds "$seconds" --repeats "$repeats" "${busy[@]}" | factor)
    dll="not built"
    if [ -f "$repo/build/win64/Zarquette_vst2win64.dll" ]; then
      dll=$(cd "$repo/build/win64" && ZQ_WINEPREFIX="$PWD/.wineprefix" "${morning[@]}" ../../cmake/wine-run.sh \
            tools/vsthost/vsthost.exe bench Zarquette_vst2win64.dll --block "$block" --seconds "$dll_seconds" \
            --repeats "$repeats" "${busy[@]}" 2>/dev/null | factor)
    fi
    echo "vsthost bench, busiest setting, blocks of $block, $repo: .so $native, win64 DLL $dll"
  done
done

for plugin in "${debian_plugins[@]}"; do
  path=/usr/lib/vst/$plugin.so
  [ -f "$path" ] || path=/usr/lib/vst/$plugin-vst.so
  [ -f "$path" ] || continue
  echo "vsthost bench, blocks of 512, $path: $("$after/build/native/tools/vsthost/vsthost" bench "$path" \
        --block 512 --seconds "$seconds" --repeats "$repeats" 2>/dev/null | factor)"
done
echo "load: $(uptime)"
