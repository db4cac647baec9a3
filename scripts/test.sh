#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test: native,
# AddressSanitizer + UndefinedBehaviorSanitizer, ThreadSanitizer (the thread
# stress tests), and the win64 tests under wine64. Ends with one summary line.
set -euo pipefail
source "$(dirname "$0")/common.sh"

scripts/install-deps.sh
jobs=$(nproc)

passed=0
failed=0
failed_runs=()

# run_ctest NAME DIR [ctest args...]: runs one suite and adds up its counts.
run_ctest() {
  local name=$1 dir=$2
  shift 2
  echo "== test $name"
  local log="$dir/ctest-summary.log"
  local status=0
  ${ZQ_CTEST_WRAPPER:-} ctest --test-dir "$dir" -j "$jobs" --output-on-failure "$@" 2>&1 | tee "$log" || status=$?
  local line total bad
  line=$(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | tail -n 1 || true)
  if [ -z "$line" ]; then
    failed=$((failed + 1))
    failed_runs+=("$name (no result)")
    return
  fi
  total=$(sed -E 's/.*out of ([0-9]+).*/\1/' <<<"$line")
  bad=$(sed -E 's/.*passed, ([0-9]+) tests failed.*/\1/' <<<"$line")
  passed=$((passed + total - bad))
  failed=$((failed + bad))
  if [ "$bad" -ne 0 ] || [ "$status" -ne 0 ]; then
    failed_runs+=("$name")
  fi
}

# The product itself, Zarquette_vst2win.dll, under 32-bit wine; some are
# compared with the 64-bit DLL's runs, so this comes after the win64 build.
# Where 32-bit wine cannot be had the run fails with the reason, unless
# ZQ_SKIP_I386=1 asks to skip it.
skipped_runs=()
run_i386() {
  local route start
  if [ "${ZQ_SKIP_I386:-0}" = 1 ]; then
    skipped_runs+=("wine32 (ZQ_SKIP_I386=1)")
    return
  fi
  if ! route=$(scripts/install-i386.sh --check); then
    echo "$route"
    failed=$((failed + 1))
    failed_runs+=("wine32 (${route#i386 route: })")
    return
  fi
  echo "$route"
  start=$SECONDS
  init_wine_prefix "$root/build/win32" "$root/cmake/wine32-run.sh"
  ZQ_CTEST_WRAPPER="xvfb-run -a" run_ctest wine32 build/win32 -L i386 --timeout 300
  echo "== wine32 took $((SECONDS - start)) s"
}

for preset in native asan win32 win64; do
  build_preset "$preset"
done
# ThreadSanitizer guards the code that crosses threads: build only the stress
# test programs there.
echo "== build tsan (thread stress tests)"
cmake --preset tsan >/dev/null
stress_targets=$(ninja -C build/tsan -t targets all | grep -oE '^test_[A-Za-z0-9_]+_stress' | sort -u)
cmake --build --preset tsan --target $stress_targets
init_wine_prefix "$root/build/win64"

run_ctest native build/native
run_ctest asan build/asan
run_ctest tsan build/tsan -L threads
# Windows programs that open windows (editors) need a display: one virtual X
# server for the whole wine64 run.
ZQ_CTEST_WRAPPER="xvfb-run -a" run_ctest wine64 build/win64 --timeout 600
run_i386

echo
if [ ${#failed_runs[@]} -ne 0 ]; then
  echo "Failed runs: ${failed_runs[*]}"
fi
if [ ${#skipped_runs[@]} -ne 0 ]; then
  echo "Skipped runs: ${skipped_runs[*]}"
fi
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
