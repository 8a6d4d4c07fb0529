# SPDX-License-Identifier: Apache-2.0
#
# To be sourced at the root of the tree: what the programs of tests/browser look for, as the release build has it.
export VASTRELLINE_TOOL=$PWD/build/release/tools/vastrelline
export VASTRELLINE_MODULES=$PWD/build/browser
export VASTRELLINE_FRAMES=$PWD/tests/data/frames
export VASTRELLINE_PROFILES=$PWD/profiles
VASTRELLINE_CHROMIUM=$(command -v chromium)
export VASTRELLINE_CHROMIUM
