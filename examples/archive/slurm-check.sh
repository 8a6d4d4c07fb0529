#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# After slurm-array.sh: did all shares end well, and is there a result of every frame? The exit code is the highest of
# those of the shares, 4 if one did not come to its end, 5 if results are missing.
#
#     slurm-check.sh LIST RESULTS SHARES
#
#SBATCH --job-name=vastrelline-check
#SBATCH --output=vastrelline-check-%j.log
set -euo pipefail

if [[ $# -ne 3 ]]; then
    echo "usage: $0 LIST RESULTS SHARES" >&2
    exit 2
fi
list=$1 results=$2 shares=$3

code=0
for ((share = 0; share < shares; ++share)); do
    told=4
    if [[ -f "$results/share-$share.exit" ]]; then
        told=$(<"$results/share-$share.exit")
    fi
    if [[ "$told" -ne 0 ]]; then
        echo "$results/share-$share: ended with code $told; send the array again" >&2
    fi
    code=$((told > code ? told : code))
done

wanted=$(awk 'END { print NR }' "$list")
there=$(find "$results"/share-* -type f ! -name '*.jsonl' ! -name '*.exit' ! -name '.*' -printf . | wc -c)
echo "frames   $wanted: $there results in $results"
if [[ "$code" -eq 0 && "$there" -lt "$wanted" ]]; then
    echo "$results: $((wanted - there)) results are missing; send the array again" >&2
    code=5
fi
exit "$code"
