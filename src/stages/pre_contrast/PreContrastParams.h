// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/FixedSettings.h"

namespace vastrelline {

// The pre-contrast stage's own keys.
struct PreContrastParams {
    double PRECONTRAST_MASK = 15.0;    // sigma of the smoothing, in pixels of the frame
    double PRECONTRAST_RATIO = 1.25;   // gain of the difference to the smoothed frame
    double PRECONTRAST_RESCALE = 2.0;  // above 1: reduction factor of the smoothing, truncated at use
};

// Reads the keys of the stage at a position of the stage list.
PreContrastParams ReadPreContrastParams(const std::wstring& iniPath, const std::wstring& section,
                                        int32_t position);

// The same from the record of the fixed chain.
PreContrastParams PreContrastParamsOf(const FixedSettings& settings);

}  // namespace vastrelline
