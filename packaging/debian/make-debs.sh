#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the Debian packages of staged components; cpack calls it by cmake/MakeDebianPackages.cmake.
#
#     make-debs.sh STAGED WORK OUTPUT VERSION
#
# STAGED    a folder for each component, with usr/ in it
# WORK      emptied first
# OUTPUT    where the packages go
# VERSION   of the project
#
# Debian's own tools write heads, dependencies and symbols. All times in the packages are SOURCE_DATE_EPOCH.
set -euo pipefail
shopt -s nullglob

staged=$1 work=$2 output=$3 version=$4
here=$(cd "$(dirname "$0")" && pwd)
tree=$(cd "$here/../.." && pwd)
: "${SOURCE_DATE_EPOCH:?is not set}"
export SOURCE_DATE_EPOCH LC_ALL=C TZ=UTC
umask 022

# A hyphen would be read as the revision of the package, and what comes before a release sorts before it.
debianVersion=${version//-/\~}-1
triplet=$(dpkg-architecture --query DEB_HOST_MULTIARCH)

rm -rf "$work"
mkdir -p "$work/debian" "$output"
cd "$work"
cp "$here/control" debian/control
cat >debian/changelog <<END
vastrelline ($debianVersion) unstable; urgency=medium

  * Version $version; changelog.gz tells what it has.

 -- $(sed -n 's/^Maintainer: //p' debian/control)  $(date --rfc-email --date="@$SOURCE_DATE_EPOCH")
END

# gather PACKAGE COMPONENT...
gather() {
    local package=$1 component
    mkdir -p "$package/DEBIAN" "$package/usr/share/doc/$package"
    for component in "${@:2}"; do
        cp -a "$staged/$component/." "$package/"
    done
    cp "$here/copyright" "$package/usr/share/doc/$package/copyright"
    cp "$tree/NOTICE" "$package/usr/share/doc/$package/NOTICE"
    gzip -9n <debian/changelog >"$package/usr/share/doc/$package/changelog.Debian.gz"
    gzip -9n <"$tree/CHANGELOG.md" >"$package/usr/share/doc/$package/changelog.gz"
}
packages=(libvastrelline1 libvastrelline-dev vastrelline-tools python3-vastrelline)
gather libvastrelline1 runtime
gather libvastrelline-dev development examples
gather vastrelline-tools tools docs
gather python3-vastrelline python
library=$(find libvastrelline1 -type f -name 'libvastrelline.so.*')
buildId=$(readelf -n "$library" | sed -n 's/.*Build ID: //p')
symbols=("$staged"/debug/usr/lib/*/libvastrelline.so.*.debug)
if [[ ${#symbols[@]} -gt 0 ]]; then
    packages+=(libvastrelline1-dbgsym)
    mkdir -p libvastrelline1-dbgsym/{DEBIAN,usr/share/doc}
    ln -s libvastrelline1 libvastrelline1-dbgsym/usr/share/doc/libvastrelline1-dbgsym
    # Where debuggers of the system look
    install -D "${symbols[0]}" "libvastrelline1-dbgsym/usr/lib/debug/.build-id/${buildId:0:2}/${buildId:2}.debug"
fi

hashOf() { "$1sum" <"$2" | cut -d ' ' -f 1; }
bill=vastrelline-tools/usr/share/doc/vastrelline/vastrelline.spdx.json
oldSums=("$(hashOf sha1 "$library")" "$(hashOf sha256 "$library")")

# What debuggers and linkers want lies elsewhere or is not wanted.
programs=(vastrelline-tools/usr/bin/*)
modules=("$library" "vastrelline-tools/usr/lib/$triplet"/vastrelline/*.so)
strip --strip-unneeded --remove-section=.comment "${programs[@]}" "${modules[@]}"
strip --strip-debug --remove-section=.comment --enable-deterministic-archives libvastrelline-dev/usr/lib/*/*.a

# The bill of materials names the library as it is shipped.
headerSum=$(hashOf sha1 libvastrelline-dev/usr/include/vastrelline.h)
codeOf() { printf '%s\n' "$@" | sort | tr -d '\n' | sha1sum | cut -d ' ' -f 1; }
sed -i -e "s/${oldSums[0]}/$(hashOf sha1 "$library")/; s/${oldSums[1]}/$(hashOf sha256 "$library")/" \
    -e "s/$(codeOf "${oldSums[0]}" "$headerSum")/$(codeOf "$(hashOf sha1 "$library")" "$headerSum")/" "$bill"

gzip -9n vastrelline-tools/usr/share/man/man1/*.1
# Debian's zsh does not look where zsh itself has its functions of a site.
mv vastrelline-tools/usr/share/zsh/{site-functions,vendor-completions}
# The texts that pages point at: one is the system's, one lies with the package's own.
ln -s ../vastrelline-tools/NOTICE vastrelline-tools/usr/share/doc/vastrelline/NOTICE
ln -s ../../common-licenses/Apache-2.0 vastrelline-tools/usr/share/doc/vastrelline/LICENSE
# pip's list of the module's files; dpkg has its own.
rm -f python3-vastrelline/usr/lib/python3/dist-packages/*.dist-info/RECORD

# For the self test: the files of the tool and of the library, which it depends on. Documents and manual page are left
# out, for there are systems that install none.
list=usr/share/vastrelline/installed-files.txt
rm -f "vastrelline-tools/$list"
for package in libvastrelline1 vastrelline-tools; do
    (cd "$package/usr" && find . -type f -not -path './share/doc/*' -not -path './share/man/*' -printf '%P\0' |
        sort -z | xargs -0 sha256sum)
done >installed-files.txt
mv installed-files.txt "vastrelline-tools/$list"

# How the packages fit together
dpkg-gensymbols -q -c4 -plibvastrelline1 -Plibvastrelline1 -v"$debianVersion" -I"$here/libvastrelline1.symbols" \
    -Olibvastrelline1/DEBIAN/symbols -e"$library"
echo "libvastrelline 1 libvastrelline1 (>= 1.0.0~)" >libvastrelline1/DEBIAN/shlibs
echo "activate-noawait ldconfig" >libvastrelline1/DEBIAN/triggers
cp "$here/python3-vastrelline.postinst" python3-vastrelline/DEBIAN/postinst
cp "$here/python3-vastrelline.prerm" python3-vastrelline/DEBIAN/prerm
dpkg-shlibdeps -Tlibvastrelline1.substvars "$library"
dpkg-shlibdeps -Slibvastrelline1 -Tvastrelline-tools.substvars "${programs[@]}" "${modules[@]:1}"

for package in "${packages[@]}"; do
    overrides=$here/$package.lintian-overrides
    if [[ -e "$overrides" ]]; then
        install -D -m 644 "$overrides" "$package/usr/share/lintian/overrides/$package"
    fi
    # Whatever the rights and times of the tree and of who builds
    find "$package" -type d -exec chmod 755 {} +
    find "$package" -type f -exec chmod 644 {} +
    for file in "$package"/usr/bin/* "$package"/DEBIAN/p*{inst,rm}; do
        chmod 755 "$file"
    done
    more=()
    if [[ "$package" == *-dbgsym ]]; then
        more=("-DBuild-Ids=$buildId")
    fi
    touch "$package.substvars"
    dpkg-gencontrol -p"$package" -P"$package" -T"$package.substvars" -v"$debianVersion" -O"$package/DEBIAN/control" \
        "${more[@]}" 2>"$package.words" || { cat "$package.words" >&2; exit 1; }
    grep -v 'unused substitution' "$package.words" >&2 || true
    (cd "$package" && find usr -type f -print0 | sort -z | xargs -0 md5sum >DEBIAN/md5sums)
    find "$package" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
    dpkg-deb --root-owner-group -Zxz --build "$package" "$output" >/dev/null
done
