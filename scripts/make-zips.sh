#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the archives for Windows, of 64 and of 32 bits: out/zips/*.zip, and for debuggers ones of their own. Each holds an
# install tree, an import library for Visual C++, the licences of what is inside, sums and a page to begin with.
#
#     scripts/make-zips.sh [64|32]
set -euo pipefail
cd "$(dirname "$0")/.."

read -r -a widths <<<"${1:-64 32}"
scripts/install-dependencies.sh build workbench zips
output=$PWD/out/zips
rm -rf "$output"
mkdir -p "$output"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
version=$(sed -n 's/^#define VASTRELLINE_VERSION_STRING "\(.*\)"$/\1/p' include/vastrelline.h)
[[ -n "$version" ]] || { echo "include/vastrelline.h tells no version" >&2; exit 1; }
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

# Names in one order, all of one time and with the rights of a plain file.
pack() {
    python3 - "$@" <<'EOF'
"""pack ARCHIVE FOLDER: zips the folder, such that the same files give the same bytes."""
import os
import pathlib
import sys
import time
import zipfile

archive, folder = sys.argv[1], pathlib.Path(sys.argv[2])
when = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
with zipfile.ZipFile(archive, "w") as target:
    for path in sorted(path for path in folder.rglob("*") if path.is_file()):
        entry = zipfile.ZipInfo(path.relative_to(folder.parent).as_posix(), when)
        entry.external_attr = 0o644 << 16
        entry.compress_type = zipfile.ZIP_DEFLATED
        target.writestr(entry, path.read_bytes(), compresslevel=9)
EOF
}

for width in "${widths[@]}"; do
    if [[ "$width" == 32 ]]; then
        preset=windows32 machine=x86 format=i386
    else
        preset=windows machine=x64 format=i386:x86-64
    fi
    scripts/build-windows-libraries.sh "$width"
    cmake --preset "$preset" -DVASTRELLINE_WORKBENCH=ON >"$scratch/log" 2>&1 || { cat "$scratch/log" >&2; exit 1; }
    cmake --build --preset "$preset" --target vastrelline vastrelline_archive vastrelline_tool vastrelline_forms \
        vastrelline_sbom >"$scratch/log" 2>&1 || { cat "$scratch/log" >&2; exit 1; }

    name=vastrelline-$version-windows-$machine
    cmake --install "build/$preset" --prefix "$scratch/$name" >/dev/null
    llvm-dlltool-14 -m "$format" -d src/Vastrelline.def -l "$scratch/$name/lib/Vastrelline.lib"
    scripts/collect-licences.sh "$scratch/$name/licences" "build/$preset"
    sed -e "s/@VERSION@/$version/" -e "s/@MACHINE@/$machine/" -e 's/$/\r/' packaging/windows-readme.txt >"$scratch/$name/README.txt"
    (cd "$scratch/$name" && find . -type f -printf '%P\0' | LC_ALL=C sort -z | xargs -0 sha256sum) >"$scratch/sums"
    mv "$scratch/sums" "$scratch/$name/SHA256SUMS"
    pack "$output/$name.zip" "$scratch/$name"

    cmake --install "build/$preset" --prefix "$scratch/$name-debug" --component debug >/dev/null
    pack "$output/$name-debug.zip" "$scratch/$name-debug"
done
(cd "$output" && sha256sum -- *.zip >SHA256SUMS && cat SHA256SUMS)
