#!/usr/bin/env bash
# Builds the libFuzzer targets (ASan + UBSan) in build/fuzz and fuzzes each one for SECONDS
# (default 60), starting from its checked-in corpus in tests/fuzz/corpus/<target>, which is only
# read: new inputs go to build/fuzz/scratch/<target>, crashes to build/fuzz/artifacts/<target>/,
# the fuzzer's output to build/fuzz/logs/<target>.log. Exits non-zero when any target finds a
# crash, a leak or a broken invariant.
# Usage: run_fuzz.sh [SECONDS_PER_TARGET]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
[[ $seconds =~ ^[0-9]+$ ]] || { echo "usage: $0 [SECONDS_PER_TARGET]" >&2; exit 1; }

bash scripts/setup.sh
dir=build/fuzz
# Every target has a corpus directory of its own name.
targets=$(cd tests/fuzz/corpus && ls -d -- */ | tr -d /)
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DSTC_SANITIZE=ON -DSTC_FUZZ=ON \
  >/dev/null
# shellcheck disable=SC2086
cmake --build "$dir" -j "$(nproc)" --target $targets

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
mkdir -p "$dir/logs"
failed=()
for target in $targets; do
  scratch="$dir/scratch/$target" artifacts="$dir/artifacts/$target" log="$dir/logs/$target.log"
  mkdir -p "$scratch" "$artifacts"
  extra=()
  # A host session is a few hundred bytes; the file targets take the size of their seeds.
  [[ $target == host_calls_fuzz ]] && extra+=(-max_len=2048)
  status=ok
  if ! "$dir/tests/fuzz/$target" -max_total_time="$seconds" -timeout=20 -print_final_stats=1 \
      -artifact_prefix="$artifacts/" "${extra[@]}" "$scratch" "tests/fuzz/corpus/$target" \
      >"$log" 2>&1; then
    status=FAILED
    failed+=("$target")
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  printf '%-20s %-7s %8s runs   (log: %s)\n' "$target" "$status" "${runs:-?}" "$log"
  if [[ $status == FAILED ]]; then
    grep -E 'INVARIANT FAILED|ERROR: |SUMMARY: |Test unit written' "$log" | head -5 | sed 's/^/    /'
  fi
done

if ((${#failed[@]})); then
  echo "fuzzing found failures in: ${failed[*]} (inputs under $dir/artifacts/)" >&2
  exit 1
fi
