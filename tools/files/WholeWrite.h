// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// Makes or replaces a file in a folder that nobody else looks into: without the care that OutputFile takes of
// a user's files.
//
// Errors   OutputError
void WriteWhole(const std::string& path, std::string_view bytes);

}  // namespace vastrelline
