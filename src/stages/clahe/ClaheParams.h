// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The CLAHE stage's own keys.
struct ClaheParams {
    int32_t BLOCK_SIZE = 64;   // edge of a tile in pixels
    int32_t HISTO_BINS = 256;  // bins of a tile's histogram
    double MAX_SLOPE = 1.5;    // clip factor
};

// Reads the keys of the stage at a position of the stage list.
ClaheParams ReadClaheParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

}  // namespace vastrelline
