#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Fails if a file of the tree is under no licence, or if one that can hold a comment does not begin with its own.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh ci
reuse lint

# .reuse/dep5 answers for every file of these kinds, also for one that lost its line or never had it.
kinds=('*.c' '*.cpp' '*.h' '*.hpp' '*.inl' '*.cs' '*.pas' '*.js' '*.mjs' '*.css' '*.sh' '*.py' '*.cmake' '*CMakeLists.txt'
    '*.in' '*.map' '*.rc' '*.toml' '*.postinst' '*.prerm' '*.lintian-overrides' packaging/debian/control
    .ci/run .clang-format .clang-tidy .gitignore)
# In brackets, lest the line be read as this file's own.
line='^(//|/\*|#) SPDX-[L]icense-Identifier: Apache-2[.]0( \*/)?$'

# By a file, for a loop does not see how its input ended.
list=$(mktemp)
trap 'rm -f "$list"' EXIT
git ls-files -z -- "${kinds[@]}" >"$list"
looked=0
silent=()
while IFS= read -r -d '' file; do
    # Taken away, and git does not know yet
    [[ -e "$file" ]] || continue
    mapfile -t -n 2 lines <"$file"
    first=${lines[0]:-}
    [[ "$first" != '#!'* ]] || first=${lines[1]:-}
    [[ "$first" =~ $line ]] || silent+=("$file")
    looked=$((looked + 1))
done <"$list"
if [[ $looked -eq 0 ]]; then
    echo "git lists no file to look at" >&2
    exit 1
fi
if [[ ${#silent[@]} -gt 0 ]]; then
    echo "These do not begin with their licence:" >&2
    printf '%s\n' "${silent[@]}" >&2
    exit 1
fi
