// SPDX-License-Identifier: Apache-2.0
#include "platform/LibraryText.h"

namespace vastrelline {

std::optional<std::string> LibraryText(const std::string& text) { return text; }

std::optional<std::string> LibraryPath(const std::string& path) { return path; }

}  // namespace vastrelline
