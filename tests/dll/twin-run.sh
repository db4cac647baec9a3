#!/usr/bin/env bash
# One run of the host tool through the 32-bit product and through the 64-bit
# DLL of the same sources, each by its own build's host tool under its own
# wine, and what the two wrote compared. Faults that live only in the 32-bit
# build (record layouts, calling conventions, stack alignment, the x87/SSE
# boundary, 32-bit pointer arithmetic) show as a difference from the 64-bit
# twin, which the 64-bit tests check in depth.
#
#   twin-run.sh [--autoload TEXT] [--wav-compare CMD] [--files-only] WORKDIR WIN32_BUILD WIN64_BUILD VSTHOST_ARGS...
#
# VSTHOST_ARGS name the plug-in as @PLUGIN@ and write their files into the
# current folder: each twin runs in WORKDIR/32 or WORKDIR/64. Then every file
# the 32-bit run wrote must be the 64-bit one's: byte for byte, and a WAV file
# sample for sample; the standard output too, the plug-in's file name set
# aside. The 32-bit run's standard output is printed for the test to check.
#
# --autoload TEXT: each twin gets a wine prefix of its own whose registry
# turns the settings autoload on and names a file holding TEXT.
# --wav-compare CMD: WAV files are alike when `CMD A.wav B.wav` exits with 0,
# for settings under which the two builds' last-bit rounding differences grow
# into different (but equally good) sound.
# --files-only: the standard output is not compared (it holds timings).
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)

autoload=""
wav_compare=""
skip_stdout=0
while [[ $1 == --* ]]; do
  case $1 in
  --autoload) autoload=$2 && shift ;;
  --wav-compare) wav_compare=$2 && shift ;;
  --files-only) skip_stdout=1 ;;
  *) echo "twin-run.sh: unknown option $1" >&2 && exit 2 ;;
  esac
  shift
done
work=$1 build32=$2 build64=$3
shift 3
# tools/vsthost/tests/with-display.sh marks the prefixes of runs on a virtual
# display of their own: keep them apart from those of runs without one.
prefix_suffix=""
[[ ${ZQ_WINEPREFIX:-} == *-display ]] && prefix_suffix=-display

fail() {
  echo "FAIL: $*"
  exit 1
}

# run_twin BITS WRAPPER BUILD DLL: the run of one twin, in WORKDIR/BITS.
run_twin() {
  local bits=$1 wrapper=$2 build=$3 dll=$4
  local dir=$work/$bits
  mkdir -p "$dir"
  [ -f "$build/$dll" ] || fail "$build/$dll is missing: build that configuration first"
  export ZQ_WINEPREFIX="$build/.wineprefix$prefix_suffix"
  if [ -n "$autoload" ]; then
    if [ -f "$ZQ_WINEPREFIX/system.reg" ]; then
      # A linked copy of the build's prefix costs nothing where a new one
      # costs a minute emulated. Wine replaces the registry's files when it
      # saves them, and changes no others here; still, they are copied.
      cp -al "$ZQ_WINEPREFIX" "$dir/.wineprefix"
      for reg in "$dir"/.wineprefix/*.reg; do
        cp --remove-destination "$ZQ_WINEPREFIX/${reg##*/}" "$reg"
      done
    fi
    export ZQ_WINEPREFIX="$dir/.wineprefix"
    local key='HKCU\Software\Velnor\Zarquette\Autoload'
    local dos_path="Z:${work//\//\\}\\settings.cfg"
    "$wrapper" reg add "$key" /v LatestConfigAutoload /t REG_SZ /d 1 /f >/dev/null 2>&1
    "$wrapper" reg add "$key" /v LatestConfigFile /t REG_SZ /d "$dos_path" /f >/dev/null 2>&1
  fi
  local args=("${@:5}")
  (cd "$dir" && "$wrapper" "$build/tools/vsthost/vsthost.exe" "${args[@]/@PLUGIN@/$build/$dll}") \
    >"$dir/stdout.txt" 2>"$dir/stderr.txt" || {
    cat "$dir/stdout.txt" "$dir/stderr.txt"
    fail "the $bits-bit run failed"
  }
  sed -i "s#$build/$dll#@PLUGIN@#g" "$dir/stdout.txt"
}

# A WAV file's difference from its twin, as the peak of the difference.
wav_difference() {
  sox -m -v 1 "$1" -v -1 "$2" -n stats 2>&1 | awk '/^Pk lev dB/ { print "peak of the difference " $4 " dBFS" }'
}

rm -rf "$work"
mkdir -p "$work"
[ -z "$autoload" ] || printf '%s\n' "$autoload" >"$work/settings.cfg"
run_twin 32 "$root/cmake/wine32-run.sh" "$build32" Zarquette_vst2win.dll "$@"
run_twin 64 "$root/cmake/wine-run.sh" "$build64" Zarquette_vst2win64.dll "$@"
cat "$work/32/stdout.txt"

compared=0
for file32 in "$work"/32/*; do
  name=$(basename "$file32")
  [ "$name" != stderr.txt ] || continue
  [ "$name:$skip_stdout" != stdout.txt:1 ] || continue
  file64=$work/64/$name
  [ -f "$file64" ] || fail "the 64-bit run wrote no $name"
  if [ -n "$wav_compare" ] && [[ $name == *.wav ]]; then
    $wav_compare "$file32" "$file64" || fail "$name does not sound like the 64-bit render"
  elif ! cmp -s "$file32" "$file64"; then
    case $name in
    *.wav) fail "$name differs from the 64-bit render: $(wav_difference "$file32" "$file64")" ;;
    *) fail "$name differs from the 64-bit run's: $(diff "$file32" "$file64" | head -n 5 | tr '\n' ' ')" ;;
    esac
  fi
  compared=$((compared + 1))
done
echo "the 32-bit and the 64-bit run agree on $compared files"
