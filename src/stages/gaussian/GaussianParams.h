// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The Gaussian stage's own keys.
struct GaussianParams {
    double GAUSSIAN_SIZE = 1.0;            // sigma, in pixels
    int32_t GAUSSIAN_REPEAT = 1;           // passes
    int32_t GAUSSIAN_ReduceTimeRatio = 1;  // reduction factor; 1 means none
    int32_t GAUSSIAN_ProtectOutline = 1;   // factor 1: not 0 repeats the edge pixels, 0 wraps around
};

// Reads the keys of the stage at a position of the stage list.
GaussianParams ReadGaussianParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

}  // namespace vastrelline
