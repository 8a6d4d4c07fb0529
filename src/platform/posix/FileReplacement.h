// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/WaitBudget.h"
#include "platform/posix/FilePlace.h"

namespace vastrelline {

// ReplaceWholeFile for the file that stands in a place.
[[nodiscard]] bool ReplaceVersion(const FilePlace& place, const std::string& oldBytes,
                                  const std::string& newBytes, WaitBudget& wait);

}  // namespace vastrelline
