// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The adaptive smoothing stage's own keys in the configured chain.
struct AdaptiveSmoothingParams {
    // Savitzky-Golay, mode 0: taps. Local deviation, mode 1: sigma of the smoothed copy, in pixels.
    double ADAPTIVESMOOTHING_MASK = 15.0;
    // Mode 0: degree of the polynomial. Mode 1: threshold, in per cent.
    int32_t ADAPTIVESMOOTHING_ORDER = 4;
    int32_t ADAPTIVESMOOTHING_Mode = 0;  // any mode but 0 and 1 filters nothing
};

// Reads the keys of the stage at a position of the stage list.
AdaptiveSmoothingParams ReadAdaptiveSmoothingParams(const std::wstring& iniPath, const std::wstring& section,
                                                    int32_t position);

}  // namespace vastrelline
