#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the picture that README.md shows: a real radiograph before and after section General of profiles/dental.ini, and
# after every stage of it. The times in it are those of this machine.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build
cmake --preset picture
cmake --build --preset picture

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
build/picture/tools/vastrelline run tests/data/frames/bitewing_1300x1668.png --profile profiles/dental.ini \
    --section General --out "$work/result.png" --strip docs/pictures/strip.png --force
