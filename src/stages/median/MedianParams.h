// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The median stage's own keys.
struct MedianParams {
    int32_t MEDIAN_SIZE = 3;    // width of the window, in pixels
    int32_t MEDIAN_REPEAT = 1;  // passes
    int32_t MEDIAN_Mode = 0;    // 1: rows, then columns; 2: rows; 3: columns; any other: a square window
};

// Reads the keys of the stage at a position of the stage list.
MedianParams ReadMedianParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

}  // namespace vastrelline
