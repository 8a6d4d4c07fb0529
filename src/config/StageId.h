// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vastrelline {

// The number of a stage in a profile's stage list.
enum class StageId : int32_t {
    PreContrastProc = 1,
    HistogramStretch = 2,
    CLAHE = 3,
    Unsharp = 4,
    AdaptiveSmoothing = 5,
    Pyramid = 6,
    Median = 7,
    Gaussian = 8,
    SigmoidLUT = 9,
    GammaLUT = 10,
    LinearLUT = 11,
    PreProcessing = 12,
    HDR = 13,
};

// The number that stands at a position of the stage list of a section ("00_Function_Number" for the
// first); 0, which is no stage, if there is none.
int32_t ReadStageNumber(const std::wstring& iniPath, const std::wstring& section, int32_t position);

// The positions below `functionCount` at which a section's stage list holds a number, ascending. Walking
// these is the same as walking all positions, for the others hold no stage; but a profile that claims two
// thousand million of them does not hold up the frame.
std::vector<int32_t> ListStagePositions(const std::wstring& iniPath, const std::wstring& section,
                                        int32_t functionCount);

}  // namespace vastrelline
