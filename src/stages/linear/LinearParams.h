// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The linear stage's own keys.
struct LinearParams {
    int32_t POST_LINEAR_MODE = 0;       // 2: a window around mid-range; 1: top from a pixel count; else 0
    int32_t POST_LINEAR_LIMITBIN = 0;   // modes 0 and 1: the count limit; -1 in mode 0: the full range
    int32_t POST_LINEAR_BRIGHTOPT = 0;  // mode 2: shift of the window's centre, in levels
};

// Reads the keys of the stage at a position of the stage list. They are read as doubles and truncated.
LinearParams ReadLinearParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

}  // namespace vastrelline
