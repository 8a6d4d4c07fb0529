// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace vastrelline {

// Words as one command line, such that a program that splits it by the system's rules gets the same words.
std::string JoinCommandLine(const std::vector<std::string>& words);

}  // namespace vastrelline
