// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frames/Frame.h"
#include "frames/FrameSize.h"
#include "messages/Finding.h"
#include "profile/ProfileFile.h"

namespace vastrelline {

// A frame as it was read.
struct LookedAtFrame {
    std::string path;
    const Frame& frame;
    int sourceBits = 16;  // of a level in the file
};

// What of a frame does not go with the profile's section, or looks as if it had been read wrongly: levels
// above BITSTORED, eight bits, width and height swapped. Warnings.
std::vector<Finding> LookAtFrame(const LookedAtFrame& frame, const ProfileFile& file,
                                 std::string_view section);

// The size of the sensor's frames less what is cut off; nothing if the profile does not tell it.
std::optional<FrameSize> FindSensorSize(const ProfileFile& file);

// Whether rows of a frame go together much better when it is cut into rows of its height: then its sides were
// taken for each other.
bool LooksSwapped(const Frame& frame);

// What of a result shows that something went wrong, though the code is 0. `where` is the file that it goes
// to.
std::vector<Finding> LookAtResult(const std::string& where, const std::vector<uint16_t>& pixels);

}  // namespace vastrelline
