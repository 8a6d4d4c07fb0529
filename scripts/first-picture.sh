#!/usr/bin/env bash
# From a fresh clone to a picture: builds the library and the tool, makes the raw frame of a dental phantom,
# enhances it with profiles/general.ini, and leaves out/picture.png and out/report.txt.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build
cmake --preset picture
cmake --build --preset picture
tool=build/picture/tools/vastrelline

# A profile is copied before use: the log lies beside it, and old lines are no part of this report.
mkdir -p out
rm -f out/ExtraOralLog.txt
cp profiles/general.ini out/general.ini

{
    echo "1. A dental phantom as a sensor would deliver it"
    echo
    "$tool" phantom --out out/frame.raw --size 1300x1668 --force
    echo
    echo "2. Enhanced with out/general.ini, section General"
    echo
    "$tool" run out/frame.raw --size 1300x1668 --profile out/general.ini --section General \
        --out out/picture.png --force
    echo
    echo "3. What the stages did, and how long each took (from out/ExtraOralLog.txt)"
    echo
    tr -d '\r' <out/ExtraOralLog.txt | grep -E '^####|^[[:space:]]+[A-Z]'
} >out/report.txt

cat out/report.txt
echo
echo "picture:  $PWD/out/picture.png"
echo "report:   $PWD/out/report.txt"
