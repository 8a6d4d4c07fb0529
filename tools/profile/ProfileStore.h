// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace vastrelline {

// Stores a profile's bytes in one step: it is the old file or the new one at any time.
//
// Errors   OutputError, also if the file exists and must not be replaced
void StoreProfileFile(const std::string& path, const std::string& bytes, bool mayReplace);

// The same for an edited profile, unless somebody else has saved it since it was read.
//
// before   its bytes as they were read
// Errors   OutputError, also if the file holds other bytes by now
void ReplaceProfileFile(const std::string& path, const std::string& before, const std::string& bytes);

}  // namespace vastrelline
