#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Runs a Windows program of 32 bits under Wine. A machine's own 32-bit Wine is taken where it is installed; else
# one that lies in a folder, build/wine32, with all that it needs: nothing of another architecture is installed,
# which on many a machine would take half of its packages along.
#
#     scripts/wine32.sh --install          unpacks that folder, where it is needed (as root)
#     scripts/wine32.sh --server ARGUMENT  calls Wine's server
#     scripts/wine32.sh PROGRAM [ARGUMENT...]
set -euo pipefail

folder=$(realpath -m "$(dirname "$0")/../build/wine32")
wine=/usr/lib/wine/wine
server=/usr/lib/wine/wineserver32
isInstalled() { [[ -x $wine && -x $server ]]; }

if [[ "${1:-}" == --install ]]; then
    isInstalled && exit 0
    [[ -e "$folder/complete" ]] && exit 0
    rm -rf "$folder"
    suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
    # The main archive alone: where another one is being renewed, its lists fit no package.
    archive=$(apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Component: main' 'Label: Debian' "Codename: $suite" | head -n 1)
    mmdebstrap --quiet --mode=root --variant=extract --architectures=i386 --include=wine32,coreutils \
        "$suite" "$folder" "$archive"
    # Unpacked only, packages have not run their scripts. Wine's makes a DLL of another package one of its own, by
    # the mark behind its first 64 bytes.
    zlib=$folder/usr/i686-w64-mingw32/lib/zlib1.dll
    {
        head -c 64 "$zlib"
        printf 'Wine builtin DLL\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0'
        tail -c +97 "$zlib"
    } >"$folder/usr/lib/i386-linux-gnu/wine/i386-windows/zlib1.dll"
    touch "$folder/complete"
    exit 0
fi

program=("$wine" "$@")
[[ "${1:-}" == --server ]] && program=("$server" "${@:2}")
isInstalled && exec "${program[@]}"

# In a space of mounts of its own the folder is the root, and the tree and the temporary folder lie in it where
# they lie outside.
tree=$(realpath "$(dirname "$0")/..")
# shellcheck disable=SC2016
exec unshare --mount bash -c '
    set -e
    root=$1 tree=$2 temporary=$3 here=$PWD
    shift 3
    mkdir -p "$root/proc"
    mount --rbind /proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount --rbind /tmp "$root/tmp"
    for place in "$tree" "$temporary"; do
        [[ "$place/" == /tmp/* ]] && continue
        mkdir -p "$root$place"
        mount --rbind "$place" "$root$place"
    done
    exec chroot "$root" /usr/bin/env -C "$here" WINESERVER=/usr/lib/wine/wineserver32 "$@"
' bash "$folder" "$tree" "${TMPDIR:-/tmp}" "${program[@]}"
