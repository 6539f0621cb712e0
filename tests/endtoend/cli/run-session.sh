#!/usr/bin/env bash
# Plays a session: commands behind "$ ", each followed by what it must print and, when it is not 0, its exit status in
# brackets. "$ server start" and "$ server stop" do just that. The store is empty at the start of a session. The
# session's directory holds copies of the files in files/.
#
#   $ store save NAME         keeps the registry keys of the configuration, as the system exports them
#   $ store wipe              deletes all logical devices and names; the server must not run
#   $ store compare NAME      says whether the keys are what they were when they were saved, byte for byte
#   $ server hang             stops the server from running, while it stays there; "server stop" ends that, too
#   $ install FILE [NAME]     copies a built program or library into the folder x86; "$ x86/kxova" runs it there
#   $ bound MILLISECONDS      how long the channel waits for an answer from now on
#   $ value set KEY NAME TEXT writes a registry value below the configuration's key, past server and library
#
#   run-session.sh FILE            compares, shows the difference, fails when there is one
#   UPDATE=1 run-session.sh FILE   writes what the commands print into the file, to be reviewed as a change
set -euo pipefail
session=$(readlink -f "$1")
root=$(readlink -f "$(dirname "$0")/../../..")
# shellcheck disable=SC1091
. "$root/scripts/wine-env.sh"

work=$(mktemp -d)
server_pid=
store='HKLM\SOFTWARE\TAVRONE\NORIX'
cleanup() {
  [ -z "$server_pid" ] || { kill -INT "$server_pid" 2>/dev/null || true; kill -CONT "$server_pid" 2>/dev/null || true; wait "$server_pid" 2>/dev/null || true; }
  rm -rf "$work"
}
trap cleanup EXIT

for key in LogDevices LogNames MetaData Special Hardware Instances; do
  wine reg delete "$store\\$key" /f /reg:32 >/dev/null 2>&1 || true
done
cp -r "$(dirname "$session")/files/." "$work"
cd "$work"

# On a busy machine Wine now and then ends a program before it has begun, without a word; that is no finding here.
start_server() {
  for _ in 1 2 3; do
    wine "$root/build/x64/bin/kxovasrvx.exe" run >"$work/server.log" 2>&1 &
    server_pid=$!
    for _ in $(seq 1 300); do
      if grep -q '^kxovasrvx: ready' "$work/server.log"; then return; fi
      kill -0 "$server_pid" 2>/dev/null || break
      sleep 0.1
    done
    [ -s "$work/server.log" ] && break
  done
  cat "$work/server.log" >&2
  echo "the server did not start" >&2
  exit 1
}

stop_server() {
  kill -INT "$server_pid"
  kill -CONT "$server_pid"
  wait "$server_pid" || true
  server_pid=
}

install() {
  local file
  mkdir -p "$work/x86"
  for file in "$root/build/x86/bin/$1" "$root/build/x64/bin/$1"; do
    if [ -e "$file" ]; then cp "$file" "$work/x86/${2:-$1}"; return; fi
  done
  echo "$1 has not been built" >&2
  exit 1
}

store_save() {
  local key
  for key in LogDevices LogNames; do wine reg export "$store\\$key" "$1.$key.reg" /y /reg:32 >/dev/null; done
}

# An existing key of logical names keeps the next server from making the catalogue's.
store_wipe() {
  local key
  for key in LogDevices LogNames; do
    wine reg delete "$store\\$key" /f /reg:32 >/dev/null
    wine reg add "$store\\$key" /f /reg:32 >/dev/null
    wine reg delete "$store\\$key" /ve /f /reg:32 >/dev/null  # adding a key gives it a default value
  done
}

store_compare() {
  local key
  store_save now
  for key in LogDevices LogNames; do
    cmp -s "$1.$key.reg" "now.$key.reg" && echo "$key: the same" || echo "$key: different"
  done
}

# As it stands in plain output and in JSON.
windows_pattern() { printf 'Z:%s' "$1" | sed 's|/|[\\]{1,2}|g; s|\.|\\.|g'; }
windows_root=$(windows_pattern "$root")
windows_work=$(windows_pattern "$work")

play() {
  local line words
  while IFS= read -r line; do
    case $line in
      '#'*) echo "$line" ;;
      '$ server start') echo "$line"; start_server ;;
      '$ server stop') echo "$line"; stop_server ;;
      '$ server hang') echo "$line"; kill -STOP "$server_pid" ;;
      '$ bound '*) echo "$line"; export KXONLINX_TIMEOUT_MS=${line#\$ bound } ;;
      '$ install '*)
        echo "$line"
        eval "words=(${line#\$ install })"
        install "${words[@]}"
        ;;
      '$ store '*)
        echo "$line"
        eval "words=(${line#\$ store })"
        "store_${words[0]}" "${words[@]:1}"
        ;;
      '$ value set '*)
        echo "$line"
        eval "words=(${line#\$ value set })"
        wine reg add "$store\\${words[0]}" /v "${words[1]}" /d "${words[2]}" /f /reg:32 >/dev/null
        ;;
      '$ '*)
        echo "$line"
        eval "words=(${line#\$ })"
        local program=${words[0]} binary=$root/build/x86/bin/${words[0]}.exe status=0
        [ -e "$binary" ] || binary=$root/build/x64/bin/$program.exe
        case $program in x86/*) binary=$work/$program.exe ;; esac
        "$root/scripts/run-wine" "$binary" "${words[@]:1}" >"$work/out" 2>"$work/err" || status=$?
        # What depends on where the sources lie is shown as ROOT, the session's directory as WORK.
        tr -d '\r' <"$work/out" | sed -E "s|$windows_root|ROOT|g; s|$windows_work|WORK|g"
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
