#!/usr/bin/env bash
# Runs the measurements: bench.sh [NAME ...] (all of them; docs/benchmarks.md says what each is). Client, server and
# Wine's server share one processor: waking an idle one would cost more than what is measured.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck disable=SC1091
. scripts/wine-env.sh
out=build/bench
# On one processor, and before whatever else the machine does, where that is allowed.
alone=(taskset -c 0)
if nice -n -15 true 2>/dev/null && [ "$(nice -n -15 nice 2>/dev/null)" = -15 ]; then alone+=(nice -n -15); fi
mkdir -p "$out"
all=(roundtrip throughput encoding trace values transfer devices load notify)
names=("${@:-${all[@]}}")

# Packages that only the measurements need. Without them the lines that need them are left out.
install_packages() {
  local packages=(mingw-w64-tools libflatbuffers-dev flatbuffers-compiler libprotobuf-dev protobuf-compiler)
  [ "$(dpkg-query -W -f='${db:Status-Status}\n' "${packages[@]}" 2>/dev/null | grep -c '^installed$')" = "${#packages[@]}" ] && return 0
  echo "bench: installing packages: ${packages[*]}"
  local as_root=sudo
  [ "$(id -u)" = 0 ] && as_root=
  { $as_root apt-get update && $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${packages[@]}"; } \
    >"$out/packages.log" 2>&1 || echo "bench: not all packages could be installed ($out/packages.log); what needs them is left out"
}

build() {
  local preset
  for preset in x86 x64; do
    { cmake --preset "$preset" && cmake --build --preset "$preset" --target bench; } >"$out/build-$preset.log" 2>&1 || {
      tail -30 "$out/build-$preset.log" >&2
      exit 1
    }
  done
  { cmake -S bench/native -B "$out/native" && cmake --build "$out/native"; } >"$out/build-native.log" 2>&1 || {
    tail -30 "$out/build-native.log" >&2
    exit 1
  }
}

# start NAME COMMAND...: runs in the background; waits until it says "ready".
pids=()
start() {
  local log=$out/$1.log i
  shift
  : >"$log"
  "${alone[@]}" "$@" >>"$log" 2>&1 &
  pids+=($!)
  for ((i = 0; i < 300; ++i)); do
    grep -q 'ready' "$log" && return 0
    sleep 0.1
  done
  echo "bench: no start; the log is $log" >&2
  exit 1
}
# Wine's server in this script's scheduling group: as a daemon it would have one of its own, and a process that lets others
# run would not let it run.
start_wineserver() {
  wineserver -k 2>/dev/null || true
  wineserver -w || true
  "${alone[@]}" wineserver -f &
  pids+=($!)
  sleep 0.3
}

start_server() { start server wine build/x64/bin/kxovasrvx.exe run --quiet; }
start_peers() { start peers wine build/x64/bin/bench_peers.exe; }

stop_all() {
  wineserver -k 2>/dev/null || true
  wait "${pids[@]}" 2>/dev/null || true
  pids=()
}

# run PROGRAM ARGUMENT...: in the foreground, its lines without carriage returns
run() {
  local program=build/x86/bin/$1.exe
  shift
  "${alone[@]}" scripts/run-wine "$program" "$@" | tr -d '\r'
}

# The next run counts requests: Wine's server writes down each of them.
start_log() {
  local log=$out/wineserver.log
  wineserver -k 2>/dev/null || true
  wineserver -w
  rm -f "$log"
  "${alone[@]}" wineserver -f -d1 2>"$log" &
  pids+=($!)
  sleep 0.3
}

# counted NAME: a program that needs no server, once to count its requests and once for its times
counted() {
  start_log
  run "bench_$1" --log "$out/wineserver.log" --requests "$out/$1.requests"
  stop_all
  run "bench_$1" --requests "$out/$1.requests" --json "$out/$1.json"
  stop_all
}

bench_roundtrip() {
  start_log
  start_server
  start_peers
  run bench_roundtrip --log "$out/wineserver.log" --requests "$out/roundtrip.requests"
  stop_all
  start_wineserver
  start_server
  start_peers
  run bench_roundtrip --requests "$out/roundtrip.requests" --json "$out/roundtrip.json"
  stop_all
}

# As the machine is, and on one processor.
bench_throughput() {
  local everything_alone=("${alone[@]}")
  alone=("${alone[@]:3}")
  measure_throughput "$(nproc) processors" throughput-all
  alone=("${everything_alone[@]}")
  measure_throughput "one processor" throughput
}
measure_throughput() {
  start_wineserver
  start_server
  start_peers
  run bench_throughput --on "$1" --json "$out/$2.json"
  stop_all
}

bench_encoding() {
  "${alone[@]}" "$out/native/encoding" "$out/encoding.json"
}

bench_values() {
  start_server
  run bench_values --json "$out/values.json"
  stop_all
}

bench_transfer() {
  start_server
  run bench_transfer --json "$out/transfer.json"
  stop_all
}

# Starts servers of its own.
bench_devices() {
  run bench_devices --json "$out/devices.json"
  stop_all
}

bench_load() { counted load; }

bench_notify() {
  start_server
  run bench_notify --json "$out/notify.json"
  stop_all
}

bench_trace() { counted trace; }

install_packages
build
trap stop_all EXIT
stop_all
for name in "${names[@]}"; do "bench_$name"; done
