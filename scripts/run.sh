#!/usr/bin/env bash
# Builds the command-line host and lists a folder (default: your home folder).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release
exec build/release/apps/nxfv/nxfv list "${@:-$HOME}"
