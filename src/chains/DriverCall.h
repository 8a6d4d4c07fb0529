// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "operators/curves/TonedFrame.h"

namespace vastrelline {

// What every driver works on.
struct DriverCall {
    const uint16_t* input;  // width * height pixels; only read, but for curves of it that wait
    uint16_t* output;       // width * height pixels; receives the result
    int32_t width;          // 0 or less: the arguments are tested, then nothing is done
    int32_t height;         // as width
    std::wstring iniPath;
    std::wstring sectionName;
    TonedFrame* tonedInput = nullptr;  // the input, if curves of it wait
};

}  // namespace vastrelline
