#!/usr/bin/env bash
# Looks over shell scripts and, where clang-tidy is there, the library's sources.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/format.sh --check
bash -n scripts/*.sh scripts/run-wine .ci/run tests/endtoend/cli/run-session.sh
if command -v shellcheck >/dev/null; then shellcheck -x scripts/*.sh scripts/run-wine; fi
echo "lint: nothing found"
