#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# An archive as a Slurm job array: each task does its share of a list of frames by one batch.
#
#     find scans -type f -name '*.raw' | LC_ALL=C sort >frames.txt
#     job=$(sbatch --parsable --array=0-15 slurm-array.sh frames.txt results dental.ini General)
#     sbatch --dependency=afterany:$job slurm-check.sh frames.txt results 16
#
# Send it again with the same array, and it does what is not done, or what has changed. New frames go to the end of the
# list: a frame's share is by its line. Share 3 leaves its results and their manifest in results/share-3, and the exit
# code of its batch in results/share-3.exit. What follows the four arguments goes to the batch (--format tif, --mapping).
#
#SBATCH --job-name=vastrelline
#SBATCH --array=0-15
#SBATCH --cpus-per-task=4
#SBATCH --output=vastrelline-%A-%a.log
set -euo pipefail

if [[ $# -lt 4 ]]; then
    echo "usage: $0 LIST RESULTS PROFILE SECTION [OPTION OF BATCH]..." >&2
    exit 2
fi
list=$1 results=$2 profile=$3 section=$4
shift 4
share=$((SLURM_ARRAY_TASK_ID - ${SLURM_ARRAY_TASK_MIN:-0}))
shares=${SLURM_ARRAY_TASK_COUNT:?start it by sbatch with --array}

# The share as a folder of links that lie as the list names them: a result has one name, whatever else is in the share.
mkdir -p "$results"
frames=$results/.frames-$share
rm -rf "$frames"
mkdir "$frames"
code=0
line=0
while IFS= read -r frame || [[ -n "$frame" ]]; do
    [[ $((line++ % shares)) -eq "$share" ]] || continue
    name=${frame#/}
    if [[ "/$name/" == */../* ]]; then
        echo "$list: goes up by '..': $frame; name frames from the folder that holds all" >&2
        exit 2
    fi
    if [[ ! -f "$frame" ]]; then
        echo "$frame: does not exist" >&2
        code=3
        continue
    fi
    mkdir -p -- "$(dirname -- "$frames/$name")"
    ln -s -- "$(realpath -s -- "$frame")" "$frames/$name"
done <"$list"

if [[ -n "$(ls -A "$frames")" ]]; then
    told=0
    vastrelline batch "$frames" --profile "$profile" --section "$section" --out "$results/share-$share" --resume \
        --keep-going --jobs "${SLURM_CPUS_PER_TASK:-1}" "$@" || told=$?
    code=$((told > code ? told : code))
fi
echo "$code" >"$results/.exit-$share"
mv "$results/.exit-$share" "$results/share-$share.exit"
exit "$code"
