// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/FixedSettings.h"

namespace vastrelline {

// The stretch stage's own keys, the same in both chains.
struct StretchParams {
    int32_t STRETCH_SEPARATION_CNT = 0;  // how the segments are found: 0..5, any other: no curve
    int32_t RESTRETCH_OPTION = 2;        // afterwards, 2: a linear stretch; 1: the minimum is subtracted
    int32_t LEFT_LEN_LIMIT = 1000;       // output levels for the dark tail
    int32_t RIGHT_LEN_LIMIT = 500;       // output levels for the bright tail
    double STRETCH_LEFT_WEIGHT = 4.0;    // steepness of the dark tail
    double STRETCH_RIGHT_WEIGHT = 4.0;   // steepness of the bright tail
    int32_t STRETCH_LIMITBIN = 50;  // modes 0 to 2: a valley's most pixels; 3 to 5: percent of the pixels
};

// Reads the keys of the stage at a position of the stage list.
StretchParams ReadStretchParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

// The same from the record of the fixed chain.
StretchParams StretchParamsOf(const FixedSettings& settings);

}  // namespace vastrelline
