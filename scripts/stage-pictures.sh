#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the picture of each stage in docs/pictures/stages/: a piece of a real frame of tests/data/frames, inverted, on
# the left before the stage and on the right after it, with the stage's section of profiles/stages.ini.
#
#     scripts/stage-pictures.sh [--check] [TOOL]
#
# With --check it writes nothing and fails if a picture shows other pixels than the library of now gives. TOOL is a
# built vastrelline; without one it builds its own.
set -euo pipefail
cd "$(dirname "$0")/.."

isCheck=
if [[ "${1:-}" == --check ]]; then
    isCheck=yes
    shift
fi
tool=${1:-}
if [[ -z "$tool" ]]; then
    scripts/install-dependencies.sh build test
    cmake --preset picture
    cmake --build --preset picture
    tool=build/picture/tools/vastrelline
fi

edge=224 # of each half, in pixels
folder=docs/pictures/stages
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp profiles/stages.ini "$work/stages.ini"
# A straight ramp over the full range: the frame comes out as it is, inverted.
printf '[Before]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=11\n00_POST_LINEAR_LIMITBIN=-1\n' >"$work/before.ini"

# piece PROFILE SECTION EXPORT > PGM: the piece, at the size of a half.
piece() {
    local picture=png toPnm=pngtopnm options=(--window "$window") scale=(cat)
    if [[ "$3" == ImageProcessing_NE ]]; then
        picture=bmp toPnm=bmptopnm options=()
    fi
    "$tool" run "$frame" --profile "$1" --section "$2" --export "$3" "${options[@]}" --out "$work/run.$picture" \
        --force >"$work/said" 2>&1 || { cat "$work/said" >&2; return 1; }
    if [[ $size -gt $edge ]]; then
        scale=(pamscale -quiet -reduce $((size / edge)))
    elif [[ $size -lt $edge ]]; then
        scale=(pamenlarge $((edge / size)))
    fi
    $toPnm "$work/run.$picture" 2>/dev/null | ppmtopgm | pamcut -left "$left" -top "$top" -width "$size" \
        -height "$size" | "${scale[@]}"
}

mkdir -p "$folder"
faults=0
while read -r page section export name left top size window; do
    frame=tests/data/frames/$name.png
    piece "$work/before.ini" Before "$export" >"$work/before.pgm"
    piece "$work/stages.ini" "$section" "$export" >"$work/after.pgm"
    pnmcat -leftright "$work/before.pgm" "$work/after.pgm" >"$work/pair.pgm"
    if [[ -z "$isCheck" ]]; then
        pnmtopng -compression 9 "$work/pair.pgm" >"$folder/$page.png" 2>/dev/null
    elif ! pngtopnm "$folder/$page.png" 2>/dev/null | cmp -s - "$work/pair.pgm"; then
        echo "$folder/$page.png does not show what the stage does: run scripts/stage-pictures.sh" >&2
        faults=$((faults + 1))
    fi
done <<'END'
pre-contrast       PreContrast       ImageProcessing    bitewing_1300x1668      100  300 896 0:4095
stretch            Stretch           ImageProcessing    periapical_a_1012x1316  200  150 672 0:4095
clahe              Clahe             ImageProcessing    periapical_a_1012x1316    0  150 672 0:4095
adaptive-unsharp   AdaptiveUnsharp   ImageProcessing    bitewing_1300x1668     1020 1060 224 400:2900
adaptive-smoothing AdaptiveSmoothing ImageProcessing    bitewing_1300x1668      930  940 224 900:2900
pyramid            Pyramid           ImageProcessing    periapical_a_1012x1316  120  220 224 900:2700
median             Median            ImageProcessing    bitewing_1300x1668      140  660 112 900:3300
gaussian           Gaussian          ImageProcessing    bitewing_1300x1668     1000 1040 112 900:2900
sigmoid            Sigmoid           ImageProcessing    bitewing_1300x1668      300  600 896 0:4095
gamma              Gamma             ImageProcessing    bitewing_1300x1668      300  600 896 0:4095
linear             Linear            ImageProcessing    bitewing_1300x1668      300  600 896 0:4095
preprocessing      PreProcessing     ImageProcessing    bitewing_1300x1668      880  880 224 700:3300
hdr                Hdr               ImageProcessing_NE bitewing_1300x1668        0  300 896 0:4095
END
exit $((faults > 0))
