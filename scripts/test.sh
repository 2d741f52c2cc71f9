#!/usr/bin/env bash
# Builds everything with AddressSanitizer + UndefinedBehaviorSanitizer and
# runs all tests; then checks the installed library and the Debian package
# (scripts/check-package.sh) and runs each fuzz target for a bounded time.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset asan >/dev/null
cmake --build --preset asan
ctest --preset asan -j2
scripts/check-package.sh
if [ -x scripts/fuzz.sh ]; then scripts/fuzz.sh; fi
