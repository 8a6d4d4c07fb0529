// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "profile/ProfileFile.h"

namespace vastrelline {

// The top level of the pictures that the section makes.
int32_t ReadTopLevel(const ProfileFile& file, const std::string& section);

}  // namespace vastrelline
