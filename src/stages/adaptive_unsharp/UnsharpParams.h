#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

// The keys of the adaptive unsharp stage. They keep their names in every mode, but not their meaning: see
// UnsharpStage.h.
struct UnsharpParams {
    double GAUSSIAN_SIZE_CONTRAST = 3.0;
    double ENAHCNED_RATIO_CONTRAST = 2.0;  // sic
    int32_t NOISE_WIDTH_CONTRAST = 0;
    int32_t MODE_CONTRAST = 0;
    int32_t PROTECTOUTLINE_CONTRAST = 1;
    int32_t ReduceTimeRatio_CONTRAST = 1;
};

// Reads the keys of the stage at a position of the stage list.
UnsharpParams ReadUnsharpParams(const std::wstring& iniPath, const std::wstring& section,
                                int32_t stageNumber);

}  // namespace vastrelline
