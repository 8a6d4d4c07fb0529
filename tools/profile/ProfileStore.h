#pragma once

#include <string>

namespace vastrelline {

// Stores a profile's bytes in one step: it is the old file or the new one at any time.
//
// Errors   OutputError, also if the file exists and must not be replaced
void StoreProfileFile(const std::string& path, const std::string& bytes, bool mayReplace);

}  // namespace vastrelline
