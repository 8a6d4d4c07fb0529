#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Fails if a file of the tree is under no licence, or if one that can hold a comment does not name its own.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh ci
reuse lint

# .reuse/dep5 answers for every file of these kinds, also for one that lost its line or never had it.
kinds=('*.c' '*.cpp' '*.h' '*.hpp' '*.inl' '*.cs' '*.pas' '*.js' '*.mjs' '*.css' '*.sh' '*.py' '*.cmake' '*CMakeLists.txt'
    '*.map' '*.rc' '*.toml' .ci/run)
# In brackets, lest the line be read as this file's own.
silent=$(git grep --files-without-match 'SPDX-[L]icense-Identifier: Apache-2[.]0' -- "${kinds[@]}" || true)
if [[ -n "$silent" ]]; then
    echo "No licence in the first lines of:" >&2
    echo "$silent" >&2
    exit 1
fi
