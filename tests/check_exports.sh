#!/usr/bin/env bash
# Fails when the plug-in defines a dynamic symbol of its own other than its two entry points, or
# carries a run path that would lead the loader to a libqdutils.so of the build tree.
set -euo pipefail
lib="$1"

mapfile -t own < <(nm -D --defined-only "$lib" | awk '{print $3}' | grep -v -E '^(_init|_fini|_edata|_end|__bss_start)$' || true)
expected=("GetScPostBlendInterface" "_ZN15snapdragoncolor14printCallStackEPc")

status=0
for sym in "${own[@]}"; do
  if [[ ! " ${expected[*]} " =~ " ${sym} " ]]; then
    echo "unexpected exported symbol: $sym" >&2
    status=1
  fi
done
for sym in "${expected[@]}"; do
  if [[ ! " ${own[*]} " =~ " ${sym} " ]]; then
    echo "missing exported symbol: $sym" >&2
    status=1
  fi
done

runpath=$(readelf -d "$lib" | grep -E 'R(UN)?PATH' || true)
if [[ -n "$runpath" ]]; then
  for dir in $(echo "$runpath" | sed -E 's/.*\[(.*)\].*/\1/' | tr ':' ' '); do
    if [[ -e "$dir/libqdutils.so" ]]; then
      echo "run path $dir leads to libqdutils.so" >&2
      status=1
    fi
  done
fi
[[ $status -eq 0 ]] && echo "exports ok: ${own[*]}"
exit $status
