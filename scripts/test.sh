#!/usr/bin/env bash
# Installs what is missing, builds everything and runs all tests. An argument names another preset than
# release: debug, scalar, asan or tsan.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=${1:-release}
scripts/install-dependencies.sh build test
cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset"
