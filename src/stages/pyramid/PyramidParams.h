// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "config/FixedSettings.h"

namespace vastrelline {

// The settings of pyramid enhancement, with the defaults of the configured chain.
struct PyramidParams {
    int32_t PYRAMID_LAYER = 3;         // levels; one band fewer is made
    double GAUSSIAN_SIZE = 1.0;        // sigma of every smoothing, in pixels of its level
    int32_t APPLY_VARIABLE_RATIO = 0;  // not 0: gain and cut limit differ from band to band
    double ENHANCED_RATIO = 1.5;       // gain
    double NOISE_WIDTH = 0.7;          // width of the noise zone, as a fraction of the noise limit
    int32_t APPLY_DIFF_ENHANCE = 1;    // 0: bands are taken apart and put back as they are
    double NOISE_CUTLIMIT = 0.01;      // cut limit, as a fraction of the smoothed histogram's peak
};

// Reads the keys of the stage at a position of the stage list.
PyramidParams ReadPyramidParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

// The same from the record of the fixed chain, which keeps the noise width in per cent.
PyramidParams PyramidParamsOf(const FixedSettings& settings);

}  // namespace vastrelline
