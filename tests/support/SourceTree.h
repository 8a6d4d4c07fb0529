// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace vastrelline {

// The folder of the tree that the running program was built from: where its test data and its sources lie.
std::filesystem::path SourceTreeFolder();

}  // namespace vastrelline
