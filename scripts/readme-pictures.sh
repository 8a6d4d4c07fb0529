#!/usr/bin/env bash
# Makes the pair of pictures that README.md shows: the raw frame of the phantom, and what section General of
# profiles/dental.ini makes of it.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build
cmake --preset picture
cmake --build --preset picture
tool=build/picture/tools/vastrelline
size=420x540

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp profiles/dental.ini "$work/dental.ini"
# A list without stages shows the frame as it is.
printf '[Raw]\nPROCMODE=2\nINTRAORAL_MASK=0\nINVERSE_INTENSITY=0\n' >"$work/raw.ini"

"$tool" phantom --out "$work/frame.raw" --size $size
"$tool" run "$work/frame.raw" --size $size --profile "$work/raw.ini" --section Raw \
    --out docs/pictures/before.png --force
"$tool" run "$work/frame.raw" --size $size --profile "$work/dental.ini" --section General \
    --out docs/pictures/after.png --force
