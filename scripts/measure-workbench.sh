#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Measures the workbench of the built tool in a browser: docs/workbench.md tells what came out. Needs what
# `scripts/install-dependencies.sh build workbench test` installs, and a release build.
#
#     scripts/measure-workbench.sh
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/browser-environment.sh
exec node tests/browser/measure.mjs
