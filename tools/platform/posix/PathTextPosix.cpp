// SPDX-License-Identifier: Apache-2.0
#include "platform/PathText.h"

namespace vastrelline {

std::filesystem::path PathOf(std::string_view text) { return text; }

std::string FoldName(std::string_view name) { return std::string(name); }

}  // namespace vastrelline
