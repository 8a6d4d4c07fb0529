// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The HDR stage's own keys.
struct HdrParams {
    int32_t HDR_BLOCK_SIZE = 128;   // tile edge of the equalisation, in pixels
    int32_t HDR_HISTO_BINS = 256;   // bins of a tile's histogram
    double HDR_CLIp_LIMIT = 1.375;  // steepest slope of the equalisation
    float MAX_LAMBDA = 0.9F;        // share of the equalised image in the coarse layer
    float WF_SLOPE = 0.005F;        // 0 switches the effect off; no other value matters
    float ALPHA_NORM = 0.3F;        // share of the blurred image that is taken away: normal image
    float ALPHA_HE = 0.3F;          // the same, equalised image
    int32_t LAYER = 20;             // 0 switches the effect off; no other value matters
};

// Reads the keys of the stage at a position of the stage list.
HdrParams ReadHdrParams(const std::wstring& iniPath, const std::wstring& section, int32_t position);

}  // namespace vastrelline
