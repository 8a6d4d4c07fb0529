// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// SaveWholeFile for a native path.
[[nodiscard]] bool SaveFile(const std::string& path, const std::string& bytes);

}  // namespace vastrelline
