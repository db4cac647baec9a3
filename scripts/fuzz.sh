#!/usr/bin/env bash
# Runs one libFuzzer target for a while: scripts/fuzz.sh NAME [SECONDS].
# New interesting inputs go to build/fuzz/corpus-NAME; copy the small ones worth
# keeping into tests/fuzz/corpus/NAME so the test suites replay them.
set -euo pipefail
source "$(dirname "$0")/common.sh"
name=$1
seconds=${2:-60}
scripts/install-deps.sh
build_preset fuzz
work="build/fuzz/corpus-$name"
mkdir -p "$work"
"build/fuzz/fuzz_$name" -max_total_time="$seconds" -print_final_stats=1 "$work" "tests/fuzz/corpus/$name"
