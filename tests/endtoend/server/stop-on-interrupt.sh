#!/usr/bin/env bash
# Ctrl-C ends the server cleanly and within its bound.
#   stop-on-interrupt.sh SERVER.exe
set -euo pipefail
server=$(readlink -f "$1")
# shellcheck disable=SC1091
. "$(dirname "$(readlink -f "$0")")/../../../scripts/wine-env.sh"
work=$(mktemp -d)
pid=
trap '[ -z "$pid" ] || kill -KILL "$pid" 2>/dev/null || true; rm -rf "$work"' EXIT
fail() { echo "$1" >&2; cat "$work"/log* >&2; exit 1; }

wine "$server" run >"$work/log" 2>&1 &
pid=$!
for _ in $(seq 1 300); do
  grep -q '^kxovasrvx: ready' "$work/log" && break
  kill -0 "$pid" 2>/dev/null || fail "the server did not start"
  sleep 0.1
done

kill -INT "$pid"
for _ in $(seq 1 150); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
kill -0 "$pid" 2>/dev/null && fail "the server still runs 15 s after Ctrl-C"
status=0
wait "$pid" || status=$?
pid=
[ "$status" = 0 ] || fail "the server ended with status $status"
grep -q ' stopped' "$work/log" || fail "the server did not say that it stopped"
