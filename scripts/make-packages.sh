#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Makes the Debian packages: out/packages/*.deb.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-dependencies.sh build workbench packages
cmake --preset packages
cmake --build --preset packages
rm -rf out/packages
# cpack calls the build once more, and finds it done.
cpack --config build/packages/CPackConfig.cmake -B "$PWD/out/packages" >build/packages/cpack.log 2>&1 ||
    { cat build/packages/cpack.log >&2; exit 1; }
rm -rf out/packages/_CPack_Packages out/packages/*.json
(cd out/packages && sha256sum -- *.deb)
