// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "support/Frames.h"
#include "vastrelline.h"

namespace vastrelline {

// Which of the exports a case calls. A call with a geometry needs no sensor's profile on the machine.
enum class CalledExport : uint8_t { ImageProcessingS, ImageProcessingCR };

// One kind of whole call as hosts make them.
struct CallCase {
    std::string name;
    CalledExport called;
    std::string section;
    Frame frame;                // as the sensor delivers it
    std::optional<bool> isLow;  // what the chain has to decide on the exposure, where it decides
};

// The sensor that delivers such a frame.
SensorGeometry GeometryOf(const Frame& frame);

// All of them, in the order of the table. Frames are the bitewing; with `isSmall` a few pixels of it.
std::vector<CallCase> MakeCallCases(bool isSmall);

// Writes the profile that all cases share: the sample's sections and those of the cases. The sensor's values
// stand in it already, so that no call stores any.
void WriteCaseProfile(const std::filesystem::path& path, const Frame& frame);

}  // namespace vastrelline
