#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# How much of src/ the fuzz corpus reaches, and nothing but it: builds the replays with clang's counters, runs each
# on its folder of fuzz/corpus, and fails below 95 % of the lines or 85 % of the branches. Left out is what belongs
# to the other system. With --files it tells of each file, and build/coverage/report shows each line.
set -euo pipefail
cd "$(dirname "$0")/.."

linesWanted=95
branchesWanted=85

scripts/install-dependencies.sh build workbench test fuzz
cmake --preset coverage
cmake --build --preset coverage --target fuzz_targets

results=build/coverage/results
rm -rf "$results"
mkdir -p "$results"
objects=()
for source in fuzz/*Fuzz.cpp; do
    target=$(basename "$source" .cpp)
    LLVM_PROFILE_FILE=$results/$target.profraw "build/coverage/fuzz/$target" "fuzz/corpus/$target" >/dev/null
    objects+=(-object "build/coverage/fuzz/$target")
done
llvm-profdata merge -sparse "$results"/*.profraw -o "$results/all.profdata"
# The first program is named without the option.
measure=("${objects[@]:1}" -instr-profile="$results/all.profdata" -ignore-filename-regex="/(fuzz|tests|include)/|^/usr/")
llvm-cov export "${measure[@]}" -summary-only >"$results/summary.json"
if [[ "${1:-}" == --files ]]; then
    llvm-cov show "${measure[@]}" -format=html -show-branches=count -output-dir=build/coverage/report
fi

python3 - "$results/summary.json" "$linesWanted" "$branchesWanted" "${1:-}" <<'END'
import json
import sys

with open(sys.argv[1]) as file:
    data = json.load(file)["data"][0]
wanted = {"lines": float(sys.argv[2]), "branches": float(sys.argv[3])}


def share(summary, kind):
    return f"{summary[kind]['covered']:6} of {summary[kind]['count']:6} {kind}"


if sys.argv[4] == "--files":
    for entry in sorted(data["files"], key=lambda entry: entry["filename"]):
        name = entry["filename"].split("/src/", 1)[1]
        print(f"{name:60} {share(entry['summary'], 'lines')} {share(entry['summary'], 'branches')}")
failed = False
for kind, limit in wanted.items():
    total = data["totals"][kind]
    percent = 100 * total["covered"] / total["count"]
    print(f"{share(data['totals'], kind)}: {percent:.1f} %, wanted {limit:.0f} %")
    failed = failed or percent < limit
sys.exit(1 if failed else 0)
END
