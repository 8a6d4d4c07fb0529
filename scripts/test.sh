#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Installs what is missing, builds everything and runs all tests. An argument names another preset than
# release: debug, scalar, asan or tsan.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=${1:-release}
scripts/install-dependencies.sh build workbench test
options=()
if [[ "$preset" == release ]]; then
    # What they need was just installed: they are not left out.
    options=(-DVASTRELLINE_BROWSER_TESTS=ON -DVASTRELLINE_PYTHON_TESTS=ON -DVASTRELLINE_LANGUAGE_TESTS=ON
        -DVASTRELLINE_ARCHIVE_TESTS=ON)
fi
cmake --preset "$preset" "${options[@]}"
cmake --build --preset "$preset"
ctest --preset "$preset"
