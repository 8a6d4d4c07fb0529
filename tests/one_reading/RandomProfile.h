// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace vastrelline {

// A profile that somebody might have written in a hurry, or on purpose: odd spellings of numbers, quotes,
// doubled and missing keys and sections, all encodings.
struct RandomProfile {
    std::string bytes;
    std::vector<std::string> sections;  // to ask for; some are not there
};

RandomProfile MakeRandomProfile(std::mt19937& random);

}  // namespace vastrelline
