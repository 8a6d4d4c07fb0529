#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Builds Vastrelline.dll and vastrelline.exe with mingw-w64 and runs the test programs under Wine, without a screen.
#
#     scripts/test-windows.sh [32]
#
# The argument asks for those of 32-bit Windows.
set -euo pipefail
cd "$(dirname "$0")/.."

# A prefix of this run's own: nothing of a person's Wine is read or changed.
WINEPREFIX=$(mktemp -d)
export WINEPREFIX
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
export LC_ALL=C.UTF-8  # else Wine makes no file whose name has a letter beyond ASCII

if [[ "${1:-64}" == 32 ]]; then
    preset=windows32
    scripts/install-dependencies.sh build workbench test windows32
    scripts/build-windows-libraries.sh 32
    scripts/wine32.sh --install
    wine=(scripts/wine32.sh)
    wineserver=(scripts/wine32.sh --server)
else
    preset=windows
    scripts/install-dependencies.sh build workbench test ci
    scripts/build-windows-libraries.sh
    wine=("$(dpkg -L wine64 | grep '/wine64$' | head -n 1)")
    wineserver=("$(dirname "${wine[0]}")/wineserver")
    if [[ ! -x "${wineserver[0]}" ]]; then
        wineserver=("$(dpkg -L wine64 | grep '/wineserver64$')")
    fi
fi
stopWine() {
    "${wineserver[@]}" -k || true
    rm -rf "$WINEPREFIX"
}
trap stopWine EXIT
cmake --preset "$preset" -DVASTRELLINE_WORKBENCH=ON
cmake --build --preset "$preset"

# The server starts first and on its own: as a child of the first test it would hold that test's output open.
"${wineserver[@]}" -p >/dev/null 2>&1
"${wine[@]}" wineboot -i >/dev/null 2>&1
ctest --preset "$preset"
