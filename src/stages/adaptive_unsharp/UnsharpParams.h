// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/FixedSettings.h"

namespace vastrelline {

// The keys of the adaptive unsharp stage. They keep their names in every mode, but not their meaning: see
// SharpenByMode.
struct UnsharpParams {
    double GAUSSIAN_SIZE_CONTRAST = 3.0;
    double ENAHCNED_RATIO_CONTRAST = 2.0;  // sic
    int32_t NOISE_WIDTH_CONTRAST = 0;
    int32_t MODE_CONTRAST = 0;
    int32_t PROTECTOUTLINE_CONTRAST = 1;
    int32_t ReduceTimeRatio_CONTRAST = 1;
};

// Reads the keys of the stage at a position of the stage list.
UnsharpParams ReadUnsharpParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

// The same from the record of the fixed chain, which has no key for the last two.
UnsharpParams UnsharpParamsOf(const FixedSettings& settings);

}  // namespace vastrelline
