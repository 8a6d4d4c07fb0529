#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Saves a profile 1,000 times in each of four ways beside a host that calls, and kills 500 hosts. Runs whole
# calls while every allocation, every call on a file and the start of threads fail, one after the
# other and all from one on: some thousand faults for each chain, of which the ordinary tests try a few. What
# the calls write goes to memory if there is a place for it.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build test
cmake --preset release
cmake --build --preset release --target faults_tests
if [[ -d /dev/shm && -w /dev/shm ]]; then
    export TMPDIR=/dev/shm
fi
VASTRELLINE_SWEEP=whole exec build/release/tests/faults/faults_tests --gtest_brief=1 "$@"
