#!/usr/bin/env bash
# Runs the measurements. Client, server and Wine's server share one processor: waking an idle one would cost more than
# what is measured.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck disable=SC1091
. scripts/wine-env.sh
wineserver -k 2>/dev/null || true
log=build/bench-server.log
taskset -c 0 wine build/x64/bin/kxovasrvx.exe run --quiet >"$log" 2>&1 &
server_pid=$!
trap 'kill -INT $server_pid 2>/dev/null || true; wait $server_pid 2>/dev/null || true; wineserver -k || true' EXIT
for _ in $(seq 1 300); do grep -q '^kxovasrvx: ready' "$log" && break; sleep 0.1; done
for bench in bench_roundtrip bench_listing bench_notify; do
  taskset -c 0 scripts/run-wine build/x86/bin/$bench.exe | tr -d '\r'
done
