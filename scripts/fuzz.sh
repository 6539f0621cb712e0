#!/usr/bin/env bash
# Fuzzes what takes bytes of strangers, natively, with clang's address and undefined-behaviour sanitizers:
#
#   fuzz.sh [-s SECONDS] [TARGET ...]
#
# Every target, or the named ones, for 60 seconds each or as long as told. Finds go to build/fuzz/finds/TARGET; an input
# that was found, or that reaches code that the corpus does not, belongs into tests/fuzz/corpus/TARGET, from where
# `make test` replays it.
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(clang libclang-rt-14-dev)
out=build/fuzz
seconds=60
all=(buffers filters commandLine lists numbers requests serverTexts)

while getopts s: option; do
  case $option in
    s) seconds=$OPTARG ;;
    *) exit 2 ;;
  esac
done
shift $((OPTIND - 1))
targets=("${@:-${all[@]}}")

if [ "$(dpkg-query -W -f='${db:Status-Status}\n' "${packages[@]}" 2>/dev/null | grep -c '^installed$')" != 2 ]; then
  as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends "${packages[@]}" >/dev/null
fi

library=ovaapi/kxovaapi
text=(framework/{AnsiCodePage,CString,CStringEdit,CStringParts,CStringList,Exceptions,StringManager}.cpp
      __src/keyAndList.cpp tests/fuzz/native/trace.cpp)
sources_of() {
  case $1 in
    buffers) echo $library/buffers/*.cpp tests/fuzz/native/trace.cpp ;;
    filters) echo trace/trcFilter.cpp ;;
    commandLine) echo $library/kxovaSS/{commandLine,language,languageCodes}.cpp "${text[@]}" ;;
    lists) echo $library/frame/textList.cpp $library/kxLegacy/kxLegacy{Route,Wow64}.cpp "${text[@]}" ;;
    numbers) echo $library/kxLegacy/valueCheck.cpp "${text[@]}" ;;
    requests) echo server/wire/{FrameCodec,RequestReader}.cpp ;;
    serverTexts) echo server/keys/KeyPath.cpp server/catalogue/{LessNoCase,number}.cpp ;;
    *) echo "fuzz.sh: there is no target $1; there are ${all[*]}" >&2; return 1 ;;
  esac
}

# The server keeps texts in standard strings, which are the machine's and have its wide characters; everything else is
# built with the 16-bit ones of Windows.
build() {
  local target=$1 sources units=()
  read -ra sources <<<"$(sources_of "$target")"
  [ "$target" = serverTexts ] || units=(-fshort-wchar -Xlinker --wrap=wcslen tests/support/native/units.cpp)
  clang++ -std=c++20 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all -Wno-ignored-attributes \
    -include tests/support/native/windows.h -DKXOVAAPI_STATIC -DFUZZ_TARGET="fuzz${target^}" \
    -Itests/support/native -Itests/fuzz/native -Itests/fuzz -Itests/fuzz/targets -I$library -I__src -Iframework -Itrace -Iinclude -I. -Iserver \
    "${units[@]}" tests/fuzz/native/driver.cpp tests/support/native/windows.cpp "tests/fuzz/targets/$target.cpp" "${sources[@]}" \
    -o "$out/$target"
}

mkdir -p "$out"
status=0
for target in "${targets[@]}"; do
  build "$target"
  mkdir -p "$out/corpus/$target" "$out/finds/$target"
  log=$out/$target.log
  if "$out/$target" -max_total_time="$seconds" -max_len=9000 -rss_limit_mb=1024 -timeout=5 \
       -artifact_prefix="$out/finds/$target/" "$out/corpus/$target" "tests/fuzz/corpus/$target" >"$log" 2>&1; then
    printf 'fuzz: %-12s %s\n' "$target" "$(grep -o 'Done [0-9]* runs in [0-9]* second(s)' "$log")"
  else
    printf 'fuzz: %-12s FOUND something:\n' "$target"
    grep -m1 -A12 'ERROR: \|runtime error\|^broken' "$log" || tail -20 "$log"
    status=1
  fi
done
exit $status
