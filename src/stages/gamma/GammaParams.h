// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The gamma stage's own key.
struct GammaParams {
    double POST_GAMMA_RATIO = 0.5;  // of magnitude 1 or more: the exponent; below 1: a fraction of pixels
};

// Reads the key of the stage at a position of the stage list.
GammaParams ReadGammaParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

}  // namespace vastrelline
