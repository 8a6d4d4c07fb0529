#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Takes the pictures of docs/workbench.md and README.md: the workbench of the release build in a browser. Needs what
# `scripts/install-dependencies.sh build workbench test` installs.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/browser-environment.sh
exec node tests/browser/pictures.mjs "${1:-docs/pictures/workbench}"
