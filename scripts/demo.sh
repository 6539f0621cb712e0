#!/usr/bin/env bash
# The main job, step by step: a 32-bit program works on the configuration through the whole system.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck disable=SC1091
. scripts/wine-env.sh

work=build/demo
server_log=$work/server.log
trace_key='HKLM\SOFTWARE\TAVRONE\NORIX\TrcParams'
demo_device='Demo line'
rm -rf "$work"
mkdir -p "$work"

title() { printf '\n== %s\n' "$*"; }

# Shows a command as a user would type it, then its output, on one stream; a failure is part of the tour.
kxova() {
  printf '\n$ kxova'
  local argument
  for argument in "$@"; do
    case $argument in *' '*) printf ' "%s"' "$argument" ;; *) printf ' %s' "$argument" ;; esac
  done
  printf '\n'
  local status=0
  scripts/run-wine build/x86/bin/kxova.exe "$@" 2>&1 || status=$?
  [ "$status" = 0 ] || printf '(exit status %s)\n' "$status"
}

trace_value() { wine reg add "$trace_key" /v "$1" /d "$2" /f /reg:32 >/dev/null; }

server_pid=
stop() {
  if [ -n "$server_pid" ]; then kill -INT "$server_pid" 2>/dev/null || true; fi
  wine reg delete "$trace_key" /f /reg:32 >/dev/null 2>&1 || true
  wineserver -k || true
  wineserver -w || true
}
trap stop EXIT

# The trace: all lines of the call frame, as text, into a file of this folder.
trace_file=$(winepath -w "$PWD/$work" 2>/dev/null)
trace_value Output FILE
trace_value Path "$trace_file"
trace_value FileName demo
trace_value Format LONG

title "The 64-bit configuration server starts with the shipped catalogue"
printf '\n$ kxovasrvx run\n'
wine build/x64/bin/kxovasrvx.exe run >"$server_log" 2>&1 &
server_pid=$!
for _ in $(seq 1 300); do
  grep -q '^kxovasrvx: ready' "$server_log" && break
  kill -0 "$server_pid" 2>/dev/null || break
  sleep 0.1
done
if ! grep '^kxovasrvx: ready' "$server_log"; then cat "$server_log"; exit 1; fi
scripts/run-wine build/x86/bin/kxova.exe device delete "$demo_device" >/dev/null 2>&1 || true

title "A logical device is made from a definition, read and written"
kxova device create "$demo_device" --from NX3110.MPI
kxova device list
kxova device show "$demo_device"
kxova device get "$demo_device" busparam
trace_value Level 0xC8  # entries, details and results of the next command
kxova device set "$demo_device" busparam USER
trace_value Level 0
kxova device get "$demo_device" busparam
kxova --json device get "$demo_device" busparam

title "What goes wrong is said in one sentence, with an exit status"
kxova device exists "No such line"
kxova device get "No such line" busparam
kxova device set "$demo_device"

title "The device is deleted"
kxova device delete "$demo_device"
kxova device list

title "The server stops"
kill -INT "$server_pid"
wait "$server_pid" || true
server_pid=
tail -1 "$server_log"
kxova device list

title "What \"device set\" wrote to the trace ($work/demo1.TRC)"
echo
cat "$work/demo1.TRC"
