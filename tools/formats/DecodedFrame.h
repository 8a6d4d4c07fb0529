// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "frames/Frame.h"

namespace vastrelline {

// A frame as a picture file held it.
struct DecodedFrame : Frame {
    int bits = 16;                   // of a sample in the file: 8 or 16
    std::vector<std::string> notes;  // what a person should know of the reading, a sentence each
};

}  // namespace vastrelline
