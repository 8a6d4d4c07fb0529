#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
#
# Checks the types of the workbench's page and runs the tests of its logic. Needs the modules that
# `scripts/install-dependencies.sh workbench` installs.
set -euo pipefail
cd "$(dirname "$0")/.."
modules=$PWD/build/page/node_modules

# Packages are looked for beside the sources, which stay as they are.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r workbench/. "$work"
ln -s "$modules" "$work/node_modules"
cd "$work"
node node_modules/typescript/bin/tsc --noEmit
node test.mjs
