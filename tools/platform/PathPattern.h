// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace vastrelline {

// What a path with "*", "?" and "[...]" fits, in no order. Shells of some systems leave such words to the
// program.
std::vector<std::string> ExpandPattern(const std::string& pattern);

}  // namespace vastrelline
