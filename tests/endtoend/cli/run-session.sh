#!/usr/bin/env bash
# Plays a session: commands behind "$ ", each followed by what it must print and, when it is not 0, its exit status in
# brackets. "$ server start" and "$ server stop" do just that. The store is empty at the start of a session.
#
#   run-session.sh FILE            compares, shows the difference, fails when there is one
#   UPDATE=1 run-session.sh FILE   writes what the commands print into the file, to be reviewed as a change
set -euo pipefail
session=$(readlink -f "$1")
root=$(readlink -f "$(dirname "$0")/../../..")
# shellcheck disable=SC1091
. "$root/scripts/wine-env.sh"
cd "$root"

work=$(mktemp -d)
server_pid=
store='HKLM\SOFTWARE\TAVRONE\NORIX'
cleanup() {
  [ -z "$server_pid" ] || { kill -INT "$server_pid" 2>/dev/null || true; wait "$server_pid" 2>/dev/null || true; }
  rm -rf "$work"
}
trap cleanup EXIT

for key in LogDevices LogNames MetaData Special Hardware Instances; do wine reg delete "$store\\$key" /f /reg:32 >/dev/null 2>&1 || true; done

start_server() {
  wine build/x64/bin/kxovasrvx.exe run >"$work/server.log" 2>&1 &
  server_pid=$!
  for _ in $(seq 1 300); do
    if grep -q '^kxovasrvx: ready' "$work/server.log"; then return; fi
    kill -0 "$server_pid" 2>/dev/null || break
    sleep 0.1
  done
  cat "$work/server.log" >&2
  echo "the server did not start" >&2
  exit 1
}

stop_server() {
  kill -INT "$server_pid"
  wait "$server_pid" || true
  server_pid=
}

play() {
  local line words
  while IFS= read -r line; do
    case $line in
      '#'*) echo "$line" ;;
      '$ server start') echo "$line"; start_server ;;
      '$ server stop') echo "$line"; stop_server ;;
      '$ '*)
        echo "$line"
        eval "words=(${line#\$ })"
        local program=${words[0]} binary=build/x86/bin/${words[0]}.exe status=0
        [ -e "$binary" ] || binary=build/x64/bin/$program.exe
        scripts/run-wine "$binary" "${words[@]:1}" >"$work/out" 2>"$work/err" || status=$?
        tr -d '\r' <"$work/out"
        tr -d '\r' <"$work/err"
        [ "$status" = 0 ] || echo "[$status]"
        ;;
    esac
  done <"$session"
}

play >"$work/played"
if [ -n "${UPDATE:-}" ]; then
  cp "$work/played" "$session"
else
  diff -u --label expected "$session" --label played "$work/played"
fi
