#!/usr/bin/env bash
# Shows the message box of the string and message helpers on a display of its own and takes pictures of it, for
# somebody to look at: build/look/*.png. Not part of the tests. Needs Debian's xvfb, imagemagick, xdotool, fonts-wine.
#
# The program is built for 64 bits from the same sources: in 32-bit programs the Wine that is used here draws every
# message box, of whatever program, as a small empty square.
set -euo pipefail
cd "$(dirname "$0")/.."
for tool in Xvfb import xdotool; do
  command -v "$tool" >/dev/null || { echo "$tool is missing: apt-get install xvfb imagemagick xdotool fonts-wine" >&2; exit 1; }
done

look=$PWD/build/look
rm -rf "$look"
mkdir -p "$look"
x86_64-w64-mingw32-g++-posix -std=c++20 -O1 -static -fexec-charset=windows-1252 -DKXOVAAPI_STATIC -DNOMINMAX \
  -D_WIN32_WINNT=0x0601 -Iframework -I__src -Iinclude -Itrace -Itests/unit/kxstring32x \
  framework/{AnsiCodePage,CString,CStringEdit,CStringFormat,CStringParts,Exceptions,ModuleState,StringManager,WinApp,CWnd}.cpp \
  __src/kxstring32x.cpp tests/unit/kxstring32x/{recordedTrace,showMessageBox}.cpp -o "$look/showmessagebox.exe"

# A prefix of its own: the tests' one has no display driver.
export KXOVA_PREFIX=$look/prefix
# shellcheck disable=SC1091
. scripts/wine-env.sh
cp -a build/wine/prefix "$KXOVA_PREFIX"
sed -i 's/^"Graphics"="null"/"Graphics"="x11"/' "$KXOVA_PREFIX/user.reg"  # sed makes a file of its own, not a link's

display_file=$look/display
Xvfb -displayfd 3 -screen 0 800x400x24 -nolisten tcp 3>"$display_file" 2>"$look/xvfb.log" &
xvfb=$!
trap 'wineserver -k || true; kill "$xvfb" 2>/dev/null || true' EXIT
for _ in $(seq 50); do [ -s "$display_file" ] && break; sleep 0.1; done
DISPLAY=:$(cat "$display_file")
export DISPLAY

wait_for() {  # wait_for TITLE: the window with this title, once it is shown
  local window
  for _ in $(seq 100); do
    window=$(xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1)
    if [ -n "$window" ]; then sleep 0.5; printf '%s' "$window"; return; fi
    sleep 0.1
  done
  echo "no window \"$1\" appeared" >&2
  return 1
}

show() {  # show PICTURE LETTER HELPID TEXT TITLE
  wine "$look/showmessagebox.exe" "$2" "$3" "$4" "$5" >"$look/$1.txt" 2>/dev/null &
  local program=$! window
  window=$(wait_for "$5")
  import -window root "$look/$1.png"
  xdotool windowfocus "$window"
  # With a help button, the fourth: press it. The box stays; Escape cancels it. (Wine 8.0 does not pass the request
  # on to the program yet, so no line "help: context 4711, command 1" is seen with it.)
  [ "$3" = 0 ] || xdotool key --delay 100 Tab Tab Tab space
  xdotool key --delay 100 Escape
  wait "$program"
  printf '%s.png\n' "$look/$1"
  tr -d '\r' <"$look/$1.txt"
}

question='Delete the logical device?'
frage=$'L\xc3\xb6schen des Ger\xc3\xa4ts best\xc3\xa4tigen?'
show english-plain B 0 "$question" 'kxovaapi B'
show english-help B 4711 "$question" 'kxovaapi B help'
show german-plain A 0 "$frage" 'kxovaapi A'
show german-help A 4711 "$frage" 'kxovaapi A help'
show french-plain C 0 "$question" 'kxovaapi C'
show system-plain x 0 "$question" 'kxovaapi x'
