#!/usr/bin/env bash
# Builds Vastrelline.dll with mingw-w64 and runs the test programs under Wine, without a screen.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build test ci
cmake --preset windows
cmake --build --preset windows

# A prefix of this run's own: nothing of a person's Wine is read or changed.
WINEPREFIX=$(mktemp -d)
export WINEPREFIX
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
wine=$(dpkg -L wine64 | grep '/wine64$' | head -n 1)
wineserver=$(dirname "$wine")/wineserver
if [[ ! -x "$wineserver" ]]; then
    wineserver=$(dpkg -L wine64 | grep '/wineserver64$')
fi
stopWine() {
    "$wineserver" -k || true
    rm -rf "$WINEPREFIX"
}
trap stopWine EXIT

# The server starts first and on its own: as a child of the first test it would hold that test's output open.
"$wineserver" -p >/dev/null 2>&1
"$wine" wineboot -i >/dev/null 2>&1
ctest --preset windows
