#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# From a fresh clone to a picture: builds the library and the tool, and processes a real radiograph and a dental
# phantom with section General of profiles/dental.ini. Leaves out/picture.png and out/phantom.png, each with the frame
# before, after, and after every stage, and out/report.txt, which tells what ran and how long it took.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build
cmake --preset picture
cmake --build --preset picture
tool=build/picture/tools/vastrelline

mkdir -p out
process() {
    "$tool" run "$1" --profile profiles/dental.ini --section General --out "out/$2-result.png" --strip "out/$2.png" --force
}
{
    echo "1. A bitewing radiograph"
    echo
    process tests/data/frames/bitewing_1300x1668.png picture
    echo
    echo "2. A dental phantom as a sensor would deliver it"
    echo
    "$tool" phantom --out out/phantom_1300x1668.raw --size 1300x1668 --force
    echo
    process out/phantom_1300x1668.raw phantom
} >out/report.txt

cat out/report.txt
echo
echo "before, after and every stage:  $PWD/out/picture.png"
echo "the same of the phantom:        $PWD/out/phantom.png"
echo "report:                         $PWD/out/report.txt"
