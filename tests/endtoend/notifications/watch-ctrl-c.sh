#!/usr/bin/env bash
# "kxova watch" prints a change and ends with status 0 on Ctrl-C, which is SIGINT here.
set -euo pipefail
# Each background job is a process group of its own, as in a terminal: Ctrl-C reaches the whole group.
set -m
cd "$(dirname "$(readlink -f "$0")")/../../.."
# shellcheck disable=SC1091
. scripts/wine-env.sh

work=$(mktemp -d)
server_pid=
watch_pid=
cleanup() {
  for pid in $watch_pid $server_pid; do kill -INT -- "-$pid" 2>/dev/null || true; wait "$pid" 2>/dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT

await() {  # TEXT FILE
  for _ in $(seq 1 300); do
    if grep -q "$1" "$2"; then return; fi
    sleep 0.1
  done
  cat "$2" >&2
  echo "no \"$1\"" >&2
  exit 1
}

wine build/x64/bin/kxovasrvx.exe run --quiet >"$work/server" 2>&1 </dev/null &
server_pid=$!
await '^kxovasrvx: ready' "$work/server"
wine build/x86/bin/kxova.exe watch >"$work/watch" 2>"$work/notes" </dev/null &
watch_pid=$!
await 'watching for changes' "$work/notes"
wine build/x86/bin/notify_client.exe create 'ctrl-c device' >/dev/null 2>&1 </dev/null || true
wine build/x86/bin/notify_client.exe set 'ctrl-c device' note "$RANDOM" >/dev/null 2>&1 </dev/null
await 'device "ctrl-c device": note is now' "$work/watch"

kill -INT -- "-$watch_pid"
status=0
wait "$watch_pid" || status=$?
watch_pid=
wine build/x86/bin/notify_client.exe delete 'ctrl-c device' >/dev/null 2>&1 </dev/null || true
if [ "$status" != 0 ]; then
  echo "ended with status $status" >&2
  exit 1
fi
