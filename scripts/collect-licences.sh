#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes a FOLDER of all licences that go along with a Windows build: Vastrelline's own with its notice, and those of
# what is linked into library and tool, as the installed packages and scripts/build-windows-libraries.sh have them. The
# folder is there when it is whole; one that holds something already is refused.
#
#     scripts/collect-licences.sh FOLDER [BUILD]
#
# BUILD is where library and tool were built: of what is in its workbench's page the licences are there. Without it
# it is build/windows.
set -euo pipefail

folder=${1:?a folder}
folder=${folder%/}
tree=$(cd "$(dirname "$0")/.." && pwd)
build=${2:-$tree/build/windows}
if [[ -e "$folder" && (! -d "$folder" || -n "$(ls -A "$folder")") ]]; then
    echo "$folder: there is something already; name a new folder" >&2
    exit 1
fi

mkdir -p "$(dirname "$folder")"
# Beside it, so that a rename is all that is left to do in the end.
draft=$(mktemp -d "$folder.XXXXXX")
trap 'rm -rf "$draft"' EXIT
install -m 644 "$tree/LICENSE" "$tree/NOTICE" "$draft"
while read -r name package; do
    install -m 644 "/usr/share/doc/$package/copyright" "$draft/$name.txt"
done <<'END'
gcc-runtime     gcc-mingw-w64-base
mingw-w64       mingw-w64-common
zlib            libz-mingw-w64
cli11           libcli11-dev
nlohmann-json   nlohmann-json3-dev
END
for name in libpng libtiff boost; do
    # Of either machine: the sources are the same.
    found=$(find "$tree/build/windows-libraries" -path "*/licences/$name.txt" 2>/dev/null | head -n 1)
    [[ -n "$found" ]] || { echo "no licence of $name; scripts/build-windows-libraries.sh fetches it" >&2; exit 1; }
    install -m 644 "$found" "$draft/$name.txt"
done
if [[ -e "$build/workbench/made/licences.txt" ]]; then
    install -m 644 "$build/workbench/made/licences.txt" "$draft/workbench-page.txt"
fi
install -m 644 /usr/share/common-licenses/GPL-3 "$draft/gpl-3.txt"
chmod 755 "$draft"
# Over an empty folder, or over none
mv -T "$draft" "$folder"
