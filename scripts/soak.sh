#!/usr/bin/env bash
# Long runs: hostile bytes by the million, and servers that are killed under running clients. SOAK_MINUTES (default 10)
# says for how long; at 10 there are a million replies and a hundred thousand requests. KXOVA_FUZZ_SEED repeats a run; it
# is the time otherwise. Prints one table, and fails if anything crashed, broke a promise, was lost or changed.
set -uo pipefail
cd "$(dirname "$0")/.." || exit
# shellcheck disable=SC1091
. scripts/wine-env.sh

minutes=${SOAK_MINUTES:-10}
export KXOVA_FUZZ_SEED=${KXOVA_FUZZ_SEED:-$(date +%s)}
seconds=$((minutes * 60))
out=build/soak
writers=4
rm -rf "$out"
mkdir -p "$out"

cmake --build --preset x86 --target soak_writer >"$out/build.log" 2>&1 || { tail -20 "$out/build.log"; exit 1; }

wineserver -k 2>/dev/null || true
server_pid=
# shellcheck disable=SC2317  # called at the end
finish() {
  [ -z "$server_pid" ] || kill -9 "$server_pid" 2>/dev/null
  [ -z "${native_pid:-}" ] || kill -- "-$native_pid" 2>/dev/null
  wineserver -k || true
}
trap finish EXIT

table=()
failures=0
# row PART ROUNDS BYTES FAULTS LOST
row() {
  table+=("$(printf '%-38s %12s %14s %8s %16s' "$@")")
  [ "$4" = 0 ] && [ "${5/-/0}" = 0 ] || failures=$((failures + 1))
}
# figures LOG WHAT COLUMN: the sum of a column of what programs said
figures() { tr -d '\r' <"$1" | awk -v what="$2" -v column="$3" '$1 == "figure:" && $2 == what { sum += $column } END { print sum + 0 }'; }

# twice LOG COMMAND ...: again if it fails. Everything here is repeatable by its seed, but Wine now and then ends a
# 32-bit program at an arbitrary place; what is really wrong goes wrong again. The first log is kept beside the second.
twice() {
  local log=$1
  shift
  "$@" >"$log" 2>&1 && return 0
  mv "$log" "$log.first"
  echo "soak: run again: $(grep -m1 CRASH "$log.first" || tail -1 "$log.first")"
  "$@" >"$log" 2>&1
}
# fuzzed TITLE WHAT ROUNDS PROGRAM FILTER: one test, as often as told
fuzzed() {
  local log=$out/$2.log faults=0
  KXOVA_FUZZ_ROUNDS=$3 twice "$log" scripts/run-wine "$4" --gtest_filter="$5" || { faults=1; tail -5 "$log"; }
  row "$1" "$(figures "$log" "$2" 3)" "$(figures "$log" "$2" 5)" "$faults" -
}

# Wine now and then ends a program before it has begun, without a word; then it is started once more.
start_server() {
  local log=$out/server.log attempt state
  for attempt in 1 2; do
    : >"$log"
    wine build/x64/bin/kxovasrvx.exe run --quiet >"$log" 2>&1 </dev/null &
    server_pid=$!
    state="does not become ready"
    for _ in $(seq 1 300); do
      grep -q '^kxovasrvx: ready' "$log" && return 0
      kill -0 "$server_pid" 2>/dev/null || { state="ends"; break; }
      sleep 0.05
    done
    echo "soak: the server $state (attempt $attempt): $(head -1 "$log")" >&2
    if [ "$state" != ends ] || [ -s "$log" ]; then return 1; fi
  done
  return 1
}

# Kills the server at any moment, again and again, while clients write.
restarts() {
  local log=$out/writers.log pids=() kills=0 faults=0 pid
  start_server || { row "servers killed under clients" 0 0 1 0; return; }
  for i in $(seq "$writers"); do
    scripts/run-wine build/x86/bin/soak_writer.exe "Soak $i" "$1" >>"$log" 2>&1 </dev/null &
    pids+=($!)
  done
  local end=$((SECONDS + $1))
  while [ $SECONDS -lt $end ]; do
    sleep "$((RANDOM % 2)).$((RANDOM % 10))"
    kill -9 "$server_pid" 2>/dev/null
    wait "$server_pid" 2>/dev/null
    kills=$((kills + 1))
    start_server || { faults=$((faults + 1)); break; }
  done
  for pid in "${pids[@]}"; do wait "$pid" || faults=$((faults + 1)); done
  kill -INT "$server_pid" 2>/dev/null
  wait "$server_pid" 2>/dev/null
  server_pid=
  grep LOST "$log" | head -5
  [ "$(grep -c 'figure: writers' "$log")" = "$writers" ] || faults=$((faults + 1))
  row "writes under servers killed ($kills)" "$(figures "$log" writers 3)" "$(figures "$log" writers 5)" "$faults" \
    "$(figures "$log" writers 9)"
}

setsid scripts/fuzz.sh -s $((seconds / 20 + 1)) >"$out/native.log" 2>&1 &  # a process group of its own
native_pid=$!

restarts $((seconds / 4))
fuzzed "hostile replies, every export" replies $((minutes * 65000)) build/x86/wire/fault_replies.exe '*DoNotHarmTheCaller'
fuzzed "damaged requests, every operation" requests $((minutes * 10000)) build/x64/bin/fault_requests.exe 'DamagedRequests.AreAnswered*'
fuzzed "damaged messages on the server pipe" messages $((minutes * 2000)) build/x64/bin/fault_requests.exe 'DamagedMessages.AreAnswered*'
fuzzed "damaged frames on the channel" frames $((minutes * 1000)) build/x64/bin/fault_requests.exe 'DamagedFrames.*'

log=$out/lifecycle.log
faults=0
twice "$log" scripts/run-wine build/x86/wire/wire_lifecycle.exe --gtest_filter='*leaveNothing' || { faults=1; tail -5 "$log"; }
row "loads, uses and unloads" 2100 - "$faults" -

faults=0
wait "$native_pid" || { faults=1; grep -A12 FOUND "$out/native.log"; }
native_pid=
row "native, with sanitizers" "$(awk '{ for (i = 1; i < NF; i++) if ($i == "Done") sum += $(i + 1) } END { print sum + 0 }' "$out/native.log")" - "$faults" -

printf '\n%-38s %12s %14s %8s %16s\n' "soak, seed $KXOVA_FUZZ_SEED" rounds bytes faults "lost or changed"
printf '%s\n' "${table[@]}"
exit $((failures > 0))
