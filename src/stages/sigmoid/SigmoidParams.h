// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The sigmoid stage's own key.
struct SigmoidParams {
    double POST_SIGMOID_RATIO = 0.0;  // 0: centred in the occupied levels; else the fraction of pixels below
};

// Reads the key of the stage at a position of the stage list.
SigmoidParams ReadSigmoidParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

}  // namespace vastrelline
