#!/usr/bin/env bash
# Builds the libFuzzer targets (ASan + UBSan) in build/fuzz, or in $STC_FUZZ_BUILD, and fuzzes
# each one for SECONDS (default 60), starting from its checked-in corpus in
# tests/fuzz/corpus/<target>, which is only read: new inputs go to <build>/scratch/<target>,
# crashes to <build>/artifacts/<target>/, the fuzzer's output to <build>/logs/<target>.log. Exits
# non-zero when any target finds a crash, a leak or a broken invariant.
# Usage: run_fuzz.sh [SECONDS_PER_TARGET]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
[[ $seconds =~ ^[0-9]+$ ]] || { echo "usage: $0 [SECONDS_PER_TARGET]" >&2; exit 1; }

bash scripts/setup.sh
# The ASan suite of the test command builds the targets too and lends its directory.
dir=${STC_FUZZ_BUILD:-build/fuzz}
# Every target has a corpus directory of its own name.
targets=$(cd tests/fuzz/corpus && ls -d -- */ | tr -d /)
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DSTC_SANITIZE=ON -DSTC_FUZZ=ON \
  >/dev/null
# shellcheck disable=SC2086
cmake --build "$dir" -j "$(nproc)" --target $targets

# Seeds too big to check in: calibration files larger than any read buffer the readers may use.
seeds="$dir/seeds"
python3 - "$seeds" <<'PY'
import os, sys
root = sys.argv[1]
def write(target, name, text):
    os.makedirs(os.path.join(root, target), exist_ok=True)
    with open(os.path.join(root, target, name), "w", newline="") as f:
        f.write(text)
lut = "".join("%d %d %d %d %d %d\n" % (i // 289 * 64, i // 17 % 17 * 64, i % 17 * 64,
                                       i // 289 * 64 + 1, i // 17 % 17 * 64, i % 17 * 64)
              for i in range(4914))
write("lut_file_fuzz", "4914_lines_wide_values", lut)
write("lut_file_fuzz", "crlf_and_long_tail", lut.replace("\n", "\r\n")[:-2] + "x" * 9000)
pcc = "0.9 0 0 0 0 0 0 0 0 0 0 # red, padded" + " " * 400 + "\n"
write("pcc_file_fuzz", "four_hundred_lines", pcc * 400)
write("pcc_file_fuzz", "three_lines_long_tail", pcc * 3 + "y" * 70000)
PY

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
mkdir -p "$dir/logs"
failed=()
for target in $targets; do
  scratch="$dir/scratch/$target" artifacts="$dir/artifacts/$target" log="$dir/logs/$target.log"
  mkdir -p "$scratch" "$artifacts"
  extra=()
  # A host session is a few hundred bytes; calibration files may be larger than a read buffer.
  case $target in
    host_calls_fuzz) extra+=(-max_len=2048) ;;
    lut_file_fuzz | pcc_file_fuzz) extra+=(-max_len=131072) ;;
  esac
  [[ -d $seeds/$target ]] && extra+=("$seeds/$target")
  status=ok
  if ! "$dir/tests/fuzz/$target" -max_total_time="$seconds" -timeout=20 -print_final_stats=1 \
      -artifact_prefix="$artifacts/" "$scratch" "tests/fuzz/corpus/$target" "${extra[@]}" \
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
