// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The preProcessing stage's own keys. The AUM keys reach a map that never runs on this stage's path: they
// have no effect.
struct PreProcessingParams {
    double PREPROCESSING_ENHANCESCALE = 2.5;   // gain of the mid-band
    double PREPROCESSING_GAUSSIANPOWER = 6.0;  // sigma from which the mid-band's radius follows, in pixels
    double PREPROCESSING_AUMALPHA = 1.0;
    double PREPROCESSING_AUMWEIGHT = 1.0;
    double PREPROCESSING_AUMPOWER = 0.0;
    double PREPROCESSING_AUMRANGE = 1.0;
};

// Reads the keys of the stage at a position of the stage list.
PreProcessingParams ReadPreProcessingParams(const std::wstring& iniPath, const std::wstring& section,
                                            int32_t position);

}  // namespace vastrelline
