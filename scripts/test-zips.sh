#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the archives for Windows twice, which gives the same bytes, and uses them as a developer does: sums, the tool
# with its workbench and a host in C by each import library, under Wine and without a screen. The pixels are those of
# the tool on Linux.
#
#     scripts/test-zips.sh LINUX_TOOL
#
# Programs of 32 bits are run where scripts/wine32.sh has a Wine for them; else they are linked only.
set -euo pipefail
tool=$(realpath "${1:?the tool as it was built on this system}")
cd "$(dirname "$0")/.."
tree=$PWD

WINEPREFIX=$(mktemp -d)
export WINEPREFIX WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
export LC_ALL=C.UTF-8  # else Wine makes no file whose name has a letter beyond ASCII
fail() {
    echo "$*" >&2
    exit 1
}

scripts/make-zips.sh
made=$(cat out/zips/SHA256SUMS)
(umask 077 && TZ=Pacific/Chatham scripts/make-zips.sh >/dev/null)
[[ "$(cat out/zips/SHA256SUMS)" == "$made" ]] || fail "The archives differ from one time to the next"

wine64=$(dpkg -L wine64 | grep '/wine64$' | head -n 1)
server64=$(dirname "$wine64")/wineserver
[[ -x "$server64" ]] || server64=$(dpkg -L wine64 | grep '/wineserver64$')
scratch=$(mktemp -d)
stopWine() {
    "$server64" -k || true
    rm -rf "$WINEPREFIX" "$scratch"
}
trap stopWine EXIT
"$server64" -p >/dev/null 2>&1
"$wine64" wineboot -i >/dev/null 2>&1

# A place as people have them.
work="$scratch/Röntgen Bilder"
mkdir "$work"
cd "$work"
"$tool" phantom --out frame_1300x1668.raw >/dev/null
cp "$tree/profiles/dental.ini" linux.ini
"$tool" run frame_1300x1668.raw --profile linux.ini --section General --out linux_1300x1668.raw >/dev/null
# The result that a workbench shows whose address a FILE will have.
readWorkbench() {
    python3 - "$@" <<'EOF'
"""readWorkbench FILE OUTPUT: the page is there, and all pixels of the first run's result go to OUTPUT."""
import json
import pathlib
import sys
import time
import urllib.request

told = pathlib.Path(sys.argv[1])
last = time.monotonic() + 120


def ask(path):
    with urllib.request.urlopen(told.read_text().strip() + path, timeout=60) as answer:
        return answer.read()


def wait_for(is_there):
    while not is_there():
        if time.monotonic() > last:
            sys.exit("the workbench takes too long")
        time.sleep(0.1)


wait_for(lambda: told.exists() and told.read_text().endswith("\n"))
if b"app.js" not in ask("") or not ask("app.js"):
    sys.exit("the workbench has no page")
wait_for(lambda: json.loads(ask("api/state"))["run"] == 1 and json.loads(ask("api/runs/1"))["state"] == "complete")
frame = json.loads(ask("api/runs/1"))
rows = 65536 // frame["width"]
with open(sys.argv[2], "wb") as output:
    for y in range(0, frame["height"], rows):
        count = min(rows, frame["height"] - y)
        output.write(ask(f"api/runs/1/points/result/pixels?x=0&y={y}&w={frame['width']}&h={count}"))
EOF
}
expectSame() { cmp "$1" linux_1300x1668.raw || fail "$1 has other pixels than on Linux"; }

for machine in x64 x86; do
    name=$(basename "$tree"/out/zips/vastrelline-*-windows-"$machine".zip .zip)
    echo "$name"
    unzip -q "$tree/out/zips/$name.zip"
    unzip -q "$tree/out/zips/$name-debug.zip"
    [[ -s "$name-debug/bin/Vastrelline.dll.debug" ]] || fail "nothing for debuggers"
    (cd "$name" && sha256sum --quiet --check SHA256SUMS)
    [[ "$(cd "$name" && find . -type f | wc -l)" -eq $(($(wc -l <"$name/SHA256SUMS") + 1)) ]] || fail "SHA256SUMS lists not all files"
    while read -r file; do
        [[ -s "$name/$file" ]] || fail "$name has no $file"
    done <<'END'
README.txt
bin/Vastrelline.dll
bin/vastrelline.exe
include/vastrelline.h
include/vastrelline.hpp
lib/Vastrelline.def
lib/Vastrelline.lib
lib/libVastrelline.dll.a
lib/cmake/vastrelline/vastrellineConfig.cmake
lib/vastrelline/libvastrelline-forms.dll
licences/LICENSE
licences/NOTICE
licences/boost.txt
licences/gcc-runtime.txt
licences/libpng.txt
licences/libtiff.txt
licences/mingw-w64.txt
licences/workbench-page.txt
licences/zlib.txt
share/doc/vastrelline/README.md
share/doc/vastrelline/bindings/csharp/Vastrelline.cs
share/doc/vastrelline/bindings/pascal/vastrelline.pas
share/doc/vastrelline/docs/before-you-ship.md
share/doc/vastrelline/examples/process_frame.c
share/doc/vastrelline/vastrelline.spdx.json
share/vastrelline/profiles/dental.ini
END
    grep -q $'\r$' "$name/README.txt" || fail "README.txt has no line ends of Windows"
    [[ $(wc -l <"$name/README.txt") -le 32 ]] || fail "README.txt is longer than a screen"
    python3 -B "$tree/tests/package/check_pages.py" "$name/share/doc/vastrelline" "$name"

    compiler=x86_64-w64-mingw32-gcc
    run=("$wine64")
    if [[ "$machine" == x86 ]]; then
        compiler=i686-w64-mingw32-gcc
        run=()
        if [[ -e "$tree/build/wine32/complete" || -x /usr/lib/wine/wine ]]; then
            run=("$tree/scripts/wine32.sh")
        fi
    fi
    # Wine has DLLs that no Windows has.
    cmake -DTOOL="$PWD/$name/bin/vastrelline.exe" -DOBJDUMP="${compiler%gcc}objdump" -P "$tree/tests/package/CheckTool.cmake"
    for library in Vastrelline.lib libVastrelline.dll.a; do
        "$compiler" -std=c99 -Wall -Wextra -Werror -I "$name/include" "$name/share/doc/vastrelline/examples/process_frame.c" \
            "$name/lib/$library" -o "$name/bin/host-$library.exe"
    done
    [[ ${#run[@]} -gt 0 ]] || { echo "linked; no Wine of 32 bits runs it here"; continue; }
    for library in Vastrelline.lib libVastrelline.dll.a; do
        cp "$name/share/vastrelline/profiles/dental.ini" host.ini
        "${run[@]}" "$name/bin/host-$library.exe" frame_1300x1668.raw 1300x1668 host.ini General "$machine-$library.raw"
        expectSame "$machine-$library.raw"
    done
    "${run[@]}" "$name/bin/vastrelline.exe" selftest --only-files
    # As README.txt says it.
    (cd "$name" && "${run[@]}" bin/vastrelline.exe phantom --out tooth.png &&
        "${run[@]}" bin/vastrelline.exe run tooth.png --profile 'share\vastrelline\profiles\dental.ini' --section General \
            --out picture.png >/dev/null)
    [[ -s "$name/picture.png" ]] || fail "no picture"
    "${run[@]}" "$name/bin/vastrelline.exe" run frame_1300x1668.raw --profile linux.ini --section General \
        --out "tool_$machine.raw" >/dev/null
    expectSame "tool_$machine.raw"
    rm -f address
    "${run[@]}" "$name/bin/vastrelline.exe" tune frame_1300x1668.raw --profile linux.ini --section General --no-browser \
        --no-history >address 2>workbench.log &
    workbench=$!
    readWorkbench address "workbench_$machine.raw" || { kill "$workbench"; fail "$(cat workbench.log)"; }
    kill -INT "$workbench"
    wait "$workbench" || fail "The workbench does not end well at Ctrl-C"
    expectSame "workbench_$machine.raw"
    "${run[@]}" "$name/bin/vastrelline.exe" version | tr -d '\r' | head -n 1
done
