#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Copies the licences of all that a Windows build links into library and tool, as the installed packages have them.
#
#     scripts/collect-licences.sh FOLDER
set -euo pipefail

folder=${1:?a folder}
mkdir -p "$folder"
while read -r name package; do
    install -m 644 "/usr/share/doc/$package/copyright" "$folder/$name.txt"
done <<'END'
gcc-runtime     gcc-mingw-w64-base
mingw-w64       mingw-w64-common
zlib            libz-mingw-w64
cli11           libcli11-dev
nlohmann-json   nlohmann-json3-dev
END
install -m 644 /usr/share/common-licenses/GPL-3 "$folder/gpl-3.txt"
