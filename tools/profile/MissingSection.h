// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "messages/ToolError.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// A section that the command line names and the profile does not have, with the one that may be meant, or
// else those that are there: wrong use.
ToolError MissingSection(const ProfileFile& file, std::string_view section);

}  // namespace vastrelline
