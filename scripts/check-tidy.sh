#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Runs clang-tidy on the library's sources; every finding is an error. Arguments name files to check in place of all.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build test ci
for preset in release windows; do
    [[ -f build/$preset/compile_commands.json ]] || cmake --preset $preset
done
files=("$@")
if [[ ${#files[@]} -eq 0 ]]; then
    mapfile -t files < <(find src -name '*.cpp' | sort)
fi

# clang reads the sources without flags it does not know, and those of Windows with the headers of the cross compiler.
for preset in release windows; do
    mkdir -p build/tidy-$preset
    sed 's/ -fno-keep-inline-dllexport//; s/ -fno-ipa-icf//; s/ -fno-ipa-ra//; s/ -fno-gnu-unique//' build/$preset/compile_commands.json \
        >build/tidy-$preset/compile_commands.json
done
cxxHeaders=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
export cxxHeaders

check() {
    local options=(-p build/tidy-release)
    if [[ "$1" == */windows/* ]]; then
        options=(-p build/tidy-windows --extra-arg=--target=x86_64-w64-mingw32
            "--extra-arg=-isystem$cxxHeaders" "--extra-arg=-isystem$cxxHeaders/x86_64-w64-mingw32")
    fi
    # What goes to stderr is a count of warnings in the headers of others, unless the check fails.
    local errors
    errors=$(clang-tidy-14 "${options[@]}" --quiet --warnings-as-errors='*' "$1" 2>&1 >&3) || {
        echo "$1: clang-tidy found something" >&2
        echo "$errors" >&2
        return 1
    }
} 3>&1
export -f check
# shellcheck disable=SC2016 # the inner shell expands it
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" bash -c 'check "$1"' check
echo "${#files[@]} files checked"
