#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Fails if a source file is not formatted as .clang-format says; with --fix it formats them all.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh ci
action=(--dry-run --Werror)
if [[ "${1:-}" == --fix ]]; then
    action=(-i)
fi
find include src tools tests bench fuzz examples bindings -name '*.h' -print0 -o -name '*.hpp' -print0 -o -name '*.c' -print0 -o -name '*.cpp' -print0 -o -name '*.inl' -print0 |
    xargs -0 clang-format-14 "${action[@]}"
