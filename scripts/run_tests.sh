#!/usr/bin/env bash
# Sets up the machine, then builds and runs every test suite:
#   native: a plain build with the platform build's flags (and one run of the benchmarks), one
#           under AddressSanitizer + UndefinedBehaviorSanitizer, the concurrency tests under
#           ThreadSanitizer, and a short fuzzing run of every fuzz target;
#   arm64:  the whole suite cross-built for AArch64 (platform flags on) and run under qemu-user.
# Usage: run_tests.sh [--native | --arm64]   (default: native, then arm64)
set -euo pipefail
cd "$(dirname "$0")/.."

want_native=1 want_arm64=1
case "${1:-}" in
  "") ;;
  --native) want_arm64=0 ;;
  --arm64) want_native=0 ;;
  *) echo "usage: $0 [--native | --arm64]" >&2; exit 1 ;;
esac

jobs=$(nproc)
run_suite() {  # name, extra cmake arguments...
  local dir="build/$1"; shift
  echo "=== $dir ==="
  cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
  cmake --build "$dir" -j "$jobs" ${STC_BUILD_TARGETS:+--target $STC_BUILD_TARGETS}
  ctest --test-dir "$dir" --output-on-failure -j "$jobs" ${STC_CTEST_ARGS:-}
}

if ((want_native)); then
  bash scripts/setup.sh
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
  run_suite plain -DSTC_PLATFORM_FLAGS=ON
  # Each benchmark once, with few samples: CI checks that it runs, not how fast.
  build/plain/tests/stc_bench --benchmark-samples 3 --benchmark-resamples 10 \
    --benchmark-warmup-time 10
  # The ASan build also holds the fuzz targets (and replays their corpora as tests).
  run_suite asan -DSTC_SANITIZE=ON -DSTC_FUZZ=ON
  export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1
  # Only the concurrency tests run under ThreadSanitizer, so only their executable is built.
  STC_BUILD_TARGETS=stc_unit_tests STC_CTEST_ARGS="-R $(paste -sd'|' tests/tsan_suite.txt)" \
    run_suite tsan -DSTC_TSAN=ON
  # Replays every fuzz corpus and fuzzes each target briefly.
  STC_FUZZ_BUILD=build/asan bash scripts/run_fuzz.sh 3
fi

if ((want_arm64)); then
  bash scripts/setup.sh
  bash scripts/setup_arm64.sh
  run_suite arm64 -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake -DSTC_PLATFORM_FLAGS=ON
fi
