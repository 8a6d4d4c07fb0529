// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "operators/curves/TonedFrame.h"
#include "report/LogFile.h"

namespace vastrelline {

// What a stage of any chain works on.
struct StageFrame {
    TonedFrame& frame;
    int32_t maxValue;  // the largest pixel value that a stage may write
    LogFile& log;

    // For stages that need all pixels as they are, and change them in place.
    uint16_t* Pixels() const { return frame.Change().begin(); }
    int32_t Width() const { return frame.Width(); }
    int32_t Height() const { return frame.Height(); }
    int32_t PixelCount() const { return static_cast<int32_t>(frame.Count()); }
};

}  // namespace vastrelline
