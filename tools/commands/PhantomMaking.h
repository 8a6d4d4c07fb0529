// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "commands/PhantomOptions.h"
#include "frames/Frame.h"

namespace vastrelline {

// A phantom's frame, and what it was made with.
struct MadePhantom {
    Frame frame;
    int32_t topLevel = 0;
    std::string words;             // for people: a line, without size and levels
    nlohmann::ordered_json truth;  // for programs: the numbers that a measurement should find
};

// Makes the frame of any kind.
//
// options   tested by TestPhantomOptions
// Errors    UsageError: a number that cannot be, or levels that their noise would carry beyond 0 or the top
MadePhantom MakePhantom(const PhantomOptions& options);

}  // namespace vastrelline
