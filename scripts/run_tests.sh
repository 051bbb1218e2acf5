#!/usr/bin/env bash
# Sets up the machine, then builds and runs every test: a plain build and one under
# AddressSanitizer + UndefinedBehaviorSanitizer (and ThreadSanitizer for the concurrency tests).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc)
run_suite() {  # name, extra cmake arguments...
  local dir="build/$1"; shift
  echo "=== $dir ==="
  cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
  cmake --build "$dir" -j "$jobs" ${STC_BUILD_TARGETS:+--target $STC_BUILD_TARGETS}
  ctest --test-dir "$dir" --output-on-failure -j "$jobs" ${STC_CTEST_ARGS:-}
}

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
run_suite plain
run_suite asan -DSTC_SANITIZE=ON
if [[ -f tests/tsan_suite.txt ]]; then
  export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1
  # Only the concurrency tests run under ThreadSanitizer, so only their executable is built.
  STC_BUILD_TARGETS=stc_unit_tests STC_CTEST_ARGS="-R $(paste -sd'|' tests/tsan_suite.txt)" \
    run_suite tsan -DSTC_TSAN=ON
fi
