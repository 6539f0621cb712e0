#!/usr/bin/env bash
# Brings all C and C++ sources into the project's format: format.sh [--check]
set -euo pipefail
cd "$(dirname "$0")/.."
command -v clang-format >/dev/null || { echo "format: clang-format is missing: apt-get install clang-format" >&2; exit 1; }
mapfile -t files < <(git ls-files '*.cpp' '*.h' '*.c')
if [ "${1:-}" = --check ]; then
  clang-format --dry-run --Werror "${files[@]}" || { echo "format: \"make format\" mends this" >&2; exit 1; }
else
  clang-format -i "${files[@]}"
fi
