#!/usr/bin/env bash
# Sets up the machine, builds the plug-in and the host simulator, and runs the demo session on the
# bundled sample device. Extra arguments go to stc-host (for example --json or --log-level W).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build/plain -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build/plain -j "$(nproc)" --target stcZuvaColor qdutils stc-host
build/plain/tools/stc-host/stc-host --session examples/sessions/demo.json "$@"
