// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace vastrelline {

// Refuses a report's name that has another ending, in capitals or not: a slip would else replace a frame or a
// profile. An empty path is no report.
//
// Errors   UsageError
void TestEnding(const std::string& path, std::string_view ending, const std::string& option);

}  // namespace vastrelline
