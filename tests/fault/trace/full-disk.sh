#!/usr/bin/env bash
# A trace whose disk is full or read-only costs lines and nothing else: a traced program prints and returns what it does
# without a trace, the file holds whole lines only, and goes on when there is room.
#   full-disk.sh
# The disk is a small one in memory where this user may mount one, else a file that takes nothing (/dev/full). Where there
# is neither, the status is 77: skipped.
set -euo pipefail
root=$(readlink -f "$(dirname "$0")/../../..")
# shellcheck disable=SC1091
. "$root/scripts/wine-env.sh"
parameters='HKLM\Software\TAVRONE\NORIX\TrcParams'
work=$(mktemp -d)
disk=$work/disk
mkdir "$disk"
mounted=

cleanup() {
  wine reg delete "$parameters" /f /reg:32 >/dev/null 2>&1 || true
  [ -z "$mounted" ] || umount -l "$disk"
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "$1" >&2
  ls -l "$disk" >&2
  exit 1
}

trace_into() {
  local pair
  for pair in Level=0xFFFFFFFF Format=SHORT Output=FILE FileName=Ova "Path=Z:${1//\//\\}"; do
    wine reg add "$parameters" /v "${pair%%=*}" /d "${pair#*=}" /f /reg:32 >/dev/null
  done
}

# Asks the library for many things, most of them in vain: nobody serves.
traced_program() {
  local status=0
  "$root/scripts/run-wine" "$root/build/x86/bin/kxova.exe" device list >"$work/printed" 2>&1 || status=$?
  echo "status $status" >>"$work/printed"
}

expect_as_without_trace() {
  traced_program
  cmp -s "$work/printed" "$work/untraced" || fail "$1: the program prints $(cat "$work/printed")"
}

# The doctor says why there are no lines.
expect_doctor_says() {
  "$root/scripts/run-wine" "$root/build/x86/bin/kxova.exe" doctor >"$work/doctor" 2>&1 || true
  grep -q "trace .*$2" "$work/doctor" || fail "$1: the doctor says $(cat "$work/doctor")"
}

# Every line begins as a line does, none begins in the middle of one, and the last one has its end.
expect_whole_lines() {
  [ -s "$disk/Ova1.TRC" ] || fail "$1: nothing was traced"
  ! grep -av '^S KXOVATDX ' "$disk/Ova1.TRC" || fail "$1: there is a line that is none"
  ! grep -a '.S KXOVATDX ' "$disk/Ova1.TRC" || fail "$1: two lines are one"
  [ -z "$(tail -c 1 "$disk/Ova1.TRC")" ] || fail "$1: the last line is cut: $(tail -n 1 "$disk/Ova1.TRC")"
  [ ! -e "$disk/Ova2.TRC" ] || fail "$1: the other file has come"
}

size() { stat -c %s "$disk/Ova1.TRC"; }

traced_program
cp "$work/printed" "$work/untraced"
if mount -t tmpfs -o size=64k tmpfs "$disk" 2>/dev/null; then
  mounted=yes
  trace_into "$disk"
  expect_as_without_trace "room"
  expect_whole_lines "room"

  # What is left is the rest of the file's last block, which has no room for all lines of one run.
  dd if=/dev/zero of="$disk/filler" bs=4096 2>/dev/null || true
  for _ in 1 2 3 4; do expect_as_without_trace "full disk"; done
  expect_whole_lines "full disk"
  expect_doctor_says "full disk" "has no room for its files in"
  full=$(size)
  rm "$disk/filler"
  expect_as_without_trace "room again"
  expect_whole_lines "room again"
  [ "$(size)" -gt "$full" ] || fail "nothing was traced when there was room again"

  mount -o remount,ro "$disk"
  readonly_size=$(size)
  expect_as_without_trace "read-only disk"
  expect_doctor_says "read-only disk" "files cannot be written in"
  [ "$(size)" = "$readonly_size" ] || fail "the read-only disk was written to"
  mount -o remount,rw "$disk"
  expect_as_without_trace "writable again"
  expect_whole_lines "writable again"
  [ "$(size)" -gt "$readonly_size" ] || fail "nothing was traced on the disk that is writable again"
elif [ -c /dev/full ]; then
  echo "no disk can be mounted here; /dev/full stands in for it"
  ln -s /dev/full "$disk/Ova1.TRC"
  trace_into "$disk"
  expect_as_without_trace "/dev/full"
  rm "$disk/Ova1.TRC"
  expect_as_without_trace "room again"
  expect_whole_lines "room again"
else
  echo "skipped: this user may mount no disk, and there is no /dev/full"
  exit 77
fi
