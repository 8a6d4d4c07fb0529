#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Builds the library for 64-bit Arm with Debian's cross compiler and runs the test programs under qemu-user.
#
#     scripts/test-aarch64.sh [PROGRAM...]
#
# Arguments name test programs, such as operators_tests: then it is these, the digest of whole runs, the manifest of
# every stage's pixels and what looks into the library alone.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build workbench test aarch64
cmake --preset aarch64
if [[ $# -eq 0 ]]; then
    cmake --build --preset aarch64
    ctest --preset aarch64
else
    cmake --build --preset aarch64 --target vastrelline vastrelline_digest manifest_check "$@"
    chosen=$(IFS='|'; echo "$*")
    ctest --preset aarch64 --tests-regex "^(SharedLibrary\..*|Digest\.IsAsExpected|Proof\..*|$chosen)\$"
fi
