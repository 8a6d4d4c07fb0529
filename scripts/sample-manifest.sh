#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the manifest that every build is held to, for a tree that has none: the phantom and both real frames
# through every section of the sample profiles, and weak frames through those that decide about the exposure.
#
#     scripts/sample-manifest.sh TOOL [MANIFEST]
#
# One that is there is changed by `vastrelline verify MANIFEST --update --reason`, which keeps its old hashes.
set -euo pipefail
cd "$(dirname "$0")/.."

tool=$1
manifest=${2:-proof/manifest.json}
if [[ -e $manifest ]]; then
    echo "$manifest is there already" >&2
    exit 1
fi
frames=(--frame tests/data/frames/bitewing_1300x1668.png --frame tests/data/frames/periapical_a_1012x1316.png
    --frame phantom:1300x1668)
add() { "$tool" verify "$manifest" --add "$@"; }

add "${frames[@]}" --profile profiles/general.ini --profile profiles/dental.ini
add --frame phantom:650x834:0.12 --profile profiles/dental.ini --section LowDose --section LowDoseFullFrame
add "${frames[@]}" --profile profiles/fixed.ini --section General
add "${frames[@]}" --profile profiles/fixed.ini --section Cr --export ImageProcessingCR
add "${frames[@]}" --profile profiles/extended.ini --export ImageProcessing_NE
for section in PreContrast Stretch Clahe AdaptiveUnsharp AdaptiveSmoothing Pyramid Median Gaussian Sigmoid Gamma Linear \
    PreProcessing; do
    add "${frames[@]}" --profile profiles/stages.ini --section "$section"
done
add "${frames[@]}" --profile profiles/stages.ini --section Hdr --export ImageProcessing_NE
# The functions that leave a bitmap.
add --frame tests/data/frames/periapical_a_1012x1316.png --profile profiles/dental.ini --section General --export ImageProcessing_N
add --frame tests/data/frames/periapical_a_1012x1316.png --profile profiles/dental.ini --section LowDose --export ImageProcessing_NS
