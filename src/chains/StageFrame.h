#pragma once

#include <cstdint>

#include "report/LogFile.h"

namespace vastrelline {

// What a stage of any chain works on.
struct StageFrame {
    uint16_t* frame;  // width * height pixels, changed in place
    int32_t width;
    int32_t height;
    int32_t pixelCount;  // width * height
    int32_t maxValue;    // the largest pixel value that a stage may write
    LogFile& log;
};

}  // namespace vastrelline
