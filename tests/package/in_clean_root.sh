#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Run within a root that knows nothing of this project but its packages, in /packages: installs them as a user does,
# builds and runs a host by what they bring, and takes them away again.
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 TERM=dumb
fail() {
    echo "$*" >&2
    exit 1
}
# The root has one user; apt's own would lack the right to read the packages.
install() {
    apt-get install -qq --yes --no-install-recommends -o APT::Sandbox::User=root "$@" >/tmp/apt.log 2>&1 ||
        fail "$(cat /tmp/apt.log)"
}
hashOf() { sha256sum <"$1"; }

echo "library and tool alone"
install /packages/libvastrelline1_*.deb /packages/vastrelline-tools_*.deb
[[ ! -e /usr/include/vastrelline.h ]] || fail "the tool brings the header along"
vastrelline selftest --only-files
vastrelline --version

echo "all packages"
install /packages/*.deb
vastrelline selftest --only-files >/dev/null
mkdir /tmp/work
cd /tmp/work
# Of the pixels a few entries: both libraries are the ones that the build tree's tests have looked at wholly.
python3 - <<'END'
import json

manifest = json.load(open("/usr/share/vastrelline/proof/manifest.json", encoding="utf-8"))
manifest["entries"] = [entry for entry in manifest["entries"]
                       if entry["section"] == "General" and "bitewing" in str(entry["frame"])]
assert manifest["entries"]
text = json.dumps(manifest).replace('"../', '"/usr/share/vastrelline/')
open("manifest.json", "w", encoding="utf-8").write(text)
END
vastrelline verify manifest.json
vastrelline verify manifest.json --library /usr/lib/*/vastrelline/libvastrelline-forms.so
profiles=/usr/share/vastrelline/profiles
vastrelline phantom --out phantom_1300x1668.raw
vastrelline run phantom_1300x1668.raw --profile $profiles/dental.ini --section General --out tool.raw >/dev/null
# Each run has a profile of its own, for a run writes to it.
expectSame() {
    [[ "$(hashOf "$1.raw")" == "$(hashOf tool.raw)" ]] || fail "the frame of $1 is not the tool's"
    echo "$1: $(hashOf "$1.raw" | cut -d ' ' -f 1)"
}

python3 -B /packages/tests/package/check_sbom.py /usr/share/doc/vastrelline/vastrelline.spdx.json readelf \
    /usr/lib/*/libvastrelline.so.1 /usr/include/vastrelline.h /usr/bin/vastrelline
python3 -B /packages/tests/package/check_pages.py /usr/share/doc/vastrelline /usr
examples=/usr/share/doc/vastrelline/examples
cmake -S $examples -B by_package -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build by_package >/dev/null
cp $profiles/dental.ini by_package.ini
by_package/process_frame phantom_1300x1668.raw 1300x1668 by_package.ini General by_package.raw
expectSame by_package

read -r -a flags <<<"$(pkg-config --cflags --libs vastrelline)"
gcc -std=c99 -Wall -Werror $examples/process_frame.c -o process_frame "${flags[@]}"
cp $profiles/dental.ini by_pkg_config.ini
./process_frame phantom_1300x1668.raw 1300x1668 by_pkg_config.ini General by_pkg_config.raw
expectSame by_pkg_config

cp $profiles/dental.ini by_python.ini
python3 - <<'END'
import importlib.metadata
import numpy
import vastrelline

frame = numpy.fromfile("phantom_1300x1668.raw", dtype="<u2").reshape(1668, 1300)
vastrelline.process(frame, "by_python.ini", "General").tofile("by_python.raw")
assert vastrelline.library_path() == "libvastrelline.so.1", vastrelline.library_path()
print("Python module", importlib.metadata.version("vastrelline"))
END
expectSame by_python

man vastrelline | grep -q '^SYNOPSIS' || fail "no manual page"
bash -c 'source /usr/share/bash-completion/bash_completion; _completion_loader vastrelline; complete -p vastrelline' ||
    fail "bash does not complete the tool's words"
for file in zsh/vendor-completions/_vastrelline fish/vendor_completions.d/vastrelline.fish; do
    [[ -s /usr/share/$file ]] || fail "no completion where the shell looks: $file"
done
for package in libvastrelline1 libvastrelline-dev vastrelline-tools python3-vastrelline; do
    for file in copyright NOTICE changelog.gz changelog.Debian.gz; do
        [[ -s /usr/share/doc/$package/$file ]] || fail "$package has no $file"
    done
done

echo "taken away"
cd /
rm -r /tmp/work
mapfile -t packages < <(dpkg-query -W -f '${Package}\n' '*vastrelline*')
[[ ${#packages[@]} -ge 4 ]] || fail "only ${packages[*]} were installed"
strangers=$(dpkg -L "${packages[@]}" | while read -r path; do [[ -d "$path" ]] || echo "$path"; done |
    grep -v -e vastrelline -e ^/usr/lib/debug/ || true)
[[ -z "$strangers" ]] || fail "the packages hold files that none would look for: $strangers"
apt-get purge -qq --yes "${packages[@]}" >/dev/null
# The reader of manual pages keeps what it has shown.
left=$(find / -xdev -path /packages -prune -o -path /var/cache/man -prune -o -path /proc -prune -o -path /sys -prune -o \( -path '*vastrelline*' -o -path /usr/lib/debug/\*.debug \) -print)
[[ -z "$left" ]] || fail "left behind: $left"
! ldconfig -p | grep vastrelline || fail "the loader's table still has the library"
