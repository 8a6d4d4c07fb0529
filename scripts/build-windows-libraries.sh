#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Builds what the tool needs on Windows: the PNG and the TIFF library, from the sources of Debian's packages and with its
# patches, over Debian's zlib for mingw-w64; and lays the header-only libraries beside them, for a cross compiler
# must not look into the folder of this machine's own headers.
#
#     scripts/build-windows-libraries.sh [32]
#
# Everything goes to build/windows-libraries/x64 or x86: include, lib, share/cmake, and licences. What is there already, of
# the same versions, stays.
set -euo pipefail
cd "$(dirname "$0")/.."

if [[ "${1:-64}" == 32 ]]; then
    machine=x86 toolchain=mingw32
else
    machine=x64 toolchain=mingw64
fi
work=$PWD/build/windows-libraries/work
prefix=$PWD/build/windows-libraries/$machine
mkdir -p "$work"

# The sources stand where the machine's own packages come from; its settings stay as they are.
lists=$work/lists parts=$work/parts
mkdir -p "$lists/partial" "$parts"
python3 - "$parts/sources.sources" <<'EOF'
"""Writes the machine's own package sources anew, as sources of source packages."""
import pathlib
import re
import sys

found = []
for path in sorted(pathlib.Path("/etc/apt/sources.list.d").glob("*.sources")):
    for block in re.split(r"\n\s*\n", path.read_text()):
        block = "\n".join(line for line in block.splitlines() if not line.startswith("#"))
        if re.search(r"^Components:.*\bmain\b", block, re.M) and "debian-archive-keyring" in block:
            found.append(re.sub(r"^Types:.*$", "Types: deb-src", block, flags=re.M))
pathlib.Path(sys.argv[1]).write_text("\n\n".join(found) + "\n")
EOF
: >"$parts/sources.list"
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [[ -e "$list" ]] || continue
    { grep -E '^deb .*\bdebian(-security)?/? .*\bmain\b' "$list" || true; } | sed 's/^deb /deb-src /' >>"$parts/sources.list"
done
mv "$parts/sources.list" "$parts/listed.list"
apt=(-qq -o "Dir::Etc::SourceList=/dev/null" -o "Dir::Etc::SourceParts=$parts" -o "Dir::State::Lists=$lists"
     -o "APT::Sandbox::User=")
apt-get "${apt[@]}" update

# Fetches the newest version of a source package that can be had, and prints it: some mirrors list what they do not have.
mkdir -p "$work/archives"
fetch() {
    local version
    for version in $(apt-cache "${apt[@]:1}" showsrc --only-source "$1" | sed -n 's/^Version: //p' | sort -Vru); do
        if (cd "$work/archives" && apt-get "${apt[@]}" source --download-only "$1=$version") >"$work/fetch.log" 2>&1; then
            echo "$version"
            return
        fi
    done
    cat "$work/fetch.log" >&2
    return 1
}
png=$(fetch libpng1.6)
tiff=$(fetch tiff)
zlib=$(dpkg-query -W -f '${Version}' libz-mingw-w64-dev)
cli=$(dpkg-query -W -f '${Version}' libcli11-dev)
json=$(dpkg-query -W -f '${Version}' nlohmann-json3-dev)
boost=$(dpkg-query -W -f '${Depends}' libboost-dev | grep -o 'libboost[0-9.]*-dev' | head -n 1)
stamp="libpng $png, libtiff $tiff, zlib $zlib, CLI11 $cli, nlohmann-json $json"
stamp+=", Boost $(dpkg-query -W -f '${Version}' "$boost"), by $(sha256sum <"$0" | cut -c 1-16)"
if [[ -e "$prefix/stamp" && "$(cat "$prefix/stamp")" == "$stamp" ]]; then
    exit 0
fi
echo "building for Windows ($machine): $stamp"
rm -rf "$prefix" "${work:?}/source" "${work:?}/$machine"
mkdir -p "$prefix/licences" "$prefix/include" "$prefix/share/cmake" "$work/source"
for name in "libpng1.6_$png" "tiff_$tiff"; do
    dpkg-source --no-check -x "$work/archives/$name.dsc" "$work/source/${name%%_*}" >"$work/unpack.log" 2>&1 ||
        { cat "$work/unpack.log" >&2; exit 1; }
done

# As our own code is protected; no path of this machine in what is built.
flags="-O2 -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -ffile-prefix-map=$work=."
build() {
    local source=$1 folder=$work/$machine/$2
    shift 2
    cmake -S "$source" -B "$folder" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchain-$toolchain.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMAKE_C_FLAGS_RELEASE="$flags" -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$folder"
    cmake --install "$folder"
}
mkdir -p "$work/$machine"
exec 3>&1
trap '[[ $? -eq 0 ]] || cat "$work/build.log" >&3' EXIT
exec >"$work/build.log" 2>&1
build "$work"/source/libpng1.6 png -DPNG_SHARED=OFF -DPNG_STATIC=ON -DPNG_TESTS=OFF -DPNG_EXECUTABLES=OFF \
    -DSKIP_INSTALL_EXECUTABLES=ON -DSKIP_INSTALL_PROGRAMS=ON -DSKIP_INSTALL_FILES=ON
build "$work"/source/tiff tiff -Djbig=OFF -Djpeg=OFF -Dlerc=OFF -Dlibdeflate=OFF -Dlzma=OFF -Dwebp=OFF -Dzstd=OFF \
    -Dold-jpeg=OFF -Dpixarlog=OFF -Dcxx=OFF -Dtiff-tools=OFF -Dtiff-tests=OFF -Dtiff-contrib=OFF -Dtiff-docs=OFF \
    -Dtiff-deprecated=OFF

cp -R /usr/include/CLI /usr/include/nlohmann "$prefix/include/"
ln -s /usr/include/boost "$prefix/include/"  # a copy would be of all its 15000 files
cp -R /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$prefix/share/cmake/"
cp "$work"/source/libpng1.6/LICENSE "$prefix/licences/libpng.txt"
cp "$work"/source/tiff/LICENSE.md "$prefix/licences/libtiff.txt"
cp /usr/share/doc/libz-mingw-w64-dev/copyright "$prefix/licences/zlib.txt"
cp /usr/share/doc/libcli11-dev/copyright "$prefix/licences/CLI11.txt"
cp /usr/share/doc/nlohmann-json3-dev/copyright "$prefix/licences/nlohmann-json.txt"
# Of the thousands of paragraphs there the one with Boost's own licence.
awk 'BEGIN { RS = "" } /^License: BSL-1.0\n Boost/' "/usr/share/doc/$boost/copyright" |
    sed -e 1d -e 's/^ //' -e 's/^\.$//' >"$prefix/licences/boost.txt"
[[ -s "$prefix/licences/boost.txt" ]]
echo "$stamp" >"$prefix/stamp"
