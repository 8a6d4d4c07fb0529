// SPDX-License-Identifier: Apache-2.0
#include "support/SourceTree.h"

namespace vastrelline {

std::filesystem::path SourceTreeFolder() { return VASTRELLINE_SOURCE_DIR; }

}  // namespace vastrelline
