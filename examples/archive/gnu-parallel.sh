#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# An archive by GNU parallel: one run of the tool a frame.
#
#     bash gnu-parallel.sh SCANS RESULTS PROFILE SECTION [OPTION OF PARALLEL]...
#     bash gnu-parallel.sh scans results dental.ini General --jobs 8
#     bash gnu-parallel.sh scans results dental.ini General --sshloginfile machines --workdir .
#
# RESULTS/joblog has a line for each attempt. Called again, it does what has failed or was not begun; it knows names
# only, so delete the joblog when frames, profile or options have changed. The result of sub/a.raw is sub/a.raw.png.
# The exit code is the highest of those of the frames.
set -euo pipefail

if [[ "${1:-}" == --frame ]]; then
    scans=$2 results=$3 profile=$4 section=$5 frame=$6
    mkdir -p -- "$(dirname -- "$results/$frame")"
    # The result takes its name when it is whole; one of an attempt before is replaced.
    exec vastrelline run "$scans/$frame" --profile "$profile" --section "$section" --out "$results/$frame.png" --force \
        --quiet >/dev/null
fi
if [[ $# -lt 4 ]]; then
    echo "usage: $0 SCANS RESULTS PROFILE SECTION [OPTION OF PARALLEL]..." >&2
    exit 2
fi
scans=$1 results=$2 profile=$3 section=$4
shift 4
mkdir -p -- "$results"
joblog=$results/joblog

# Sorted, for the joblog counts lines. --quote: names and sections may have blanks.
failed=0
(cd -- "$scans" && find . -type f \( -name '*.raw' -o -name '*.pgm' -o -name '*.png' -o -name '*.tif' -o -name '*.bmp' \) \
    -printf '%P\0') | LC_ALL=C sort --zero-terminated |
    parallel --will-cite --null --quote --joblog "$joblog" --resume-failed --retries 3 "$@" \
        bash "$0" --frame "$scans" "$results" "$profile" "$section" {} || failed=$?

# parallel itself tells only how many failed. Of each frame the last attempt counts.
code=$(awk -F '\t' 'NR > 1 { last[$1] = $8 > 0 ? 4 : $7 } END { for (each in last) if (last[each] > code) code = last[each]
                    print code + 0 }' "$joblog")
if [[ "$code" -eq 0 && "$failed" -ne 0 ]]; then
    code=4 # it did not come to begin them all
fi
exit "$code"
