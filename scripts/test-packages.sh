#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the Debian packages, has lintian judge them, and installs them in a clean root, where a host in C is built by
# CMake and by pkg-config. As root or with sudo. The clean root is made once and kept as build/clean-root.tar.
set -euo pipefail
cd "$(dirname "$0")/.."

asRoot=()
if [[ "$(id -u)" -ne 0 ]]; then
    command -v sudo >/dev/null || { echo "A clean root is made by the superuser: there is no sudo" >&2; exit 1; }
    asRoot=(sudo)
fi
scripts/make-packages.sh
made=$(cat out/packages/*.deb | sha256sum)
(umask 077 && TZ=Pacific/Chatham scripts/make-packages.sh >/dev/null)
[[ "$(cat out/packages/*.deb | sha256sum)" == "$made" ]] || { echo "The packages differ from one time to the next" >&2; exit 1; }

# What is no error to lintian is one here, but for what it is not sure of.
lintian --allow-root --fail-on error,warning --tag-display-limit 0 out/packages/*.deb

# A compiler and CMake as a user has them. What the packages depend on is fetched, and installed with them only.
included=gcc,libc6-dev,cmake,make,pkg-config,bash-completion,man-db
fetched="libpng16-16 libtiff6 python3-numpy"
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
base=build/clean-root.tar
if [[ ! -e "$base" || "$(cat "$base.holds" 2>/dev/null)" != "$suite $included $fetched" ]]; then
    # The main archive alone: where another one is being renewed, its lists fit no package.
    # shellcheck disable=SC2016 # apt-get expands it
    archive=$(apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Component: main' 'Label: Debian' "Codename: $suite" | head -n 1)
    # shellcheck disable=SC2016 # mmdebstrap runs it
    "${asRoot[@]}" mmdebstrap --quiet --mode=root --variant=minbase --dpkgopt=force-unsafe-io \
        --include="$included" --skip=cleanup/apt --customize-hook='chroot "$1" apt-get clean' \
        --customize-hook='chroot "$1" apt-get install -qq --yes --no-install-recommends --download-only \
            '"$fetched"' >/dev/null' \
        "$suite" "$base" "$archive"
    echo "$suite $included $fetched" >"$base.holds"
fi

root=$(mktemp -d)
trap '"${asRoot[@]}" rm -rf "$root"' EXIT
"${asRoot[@]}" tar --extract --file="$base" --directory="$root"
"${asRoot[@]}" mkdir -p "$root/packages"
"${asRoot[@]}" cp --parents tests/package/{in_clean_root.sh,check_pages.py,check_sbom.py} scripts/doc_links.py "$root/packages"
"${asRoot[@]}" cp out/packages/*.deb "$root/packages"
[[ ! -e /etc/resolv.conf ]] || "${asRoot[@]}" cp -L /etc/resolv.conf "$root/etc/resolv.conf"
# shellcheck disable=SC2016
"${asRoot[@]}" unshare --mount bash -c '
    mount -t proc proc "$1/proc"
    mount --rbind /dev "$1/dev"
    exec chroot "$1" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin /packages/tests/package/in_clean_root.sh
' bash "$root"
