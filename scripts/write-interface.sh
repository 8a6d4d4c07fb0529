#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Writes tests/package/libvastrelline.abi, the binary interface that a test holds every build to: after a function was
# added, or a new soname (SOVERSION in src/CMakeLists.txt, the package's name in packaging/debian) was due.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build test
cmake --preset release >/dev/null
cmake --build --preset release --target vastrelline >/dev/null
# What differs from machine to machine and from line to line is left out.
abidw --debug-info-dir build/release/src --headers-dir include --drop-private-types --exported-interfaces-only \
    --no-show-locs --no-corpus-path --no-comp-dir-path --no-elf-needed --no-parameter-names --type-id-style hash \
    --out-file tests/package/libvastrelline.abi build/release/src/libvastrelline.so.1
git diff --stat -- tests/package/libvastrelline.abi
