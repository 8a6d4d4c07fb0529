#pragma once

#include <cstdint>

#include "config/FixedSettings.h"
#include "report/LogFile.h"

namespace vastrelline {

// The two chains whose stages stand in the program's order.
enum class FixedChain : int32_t {
    Fixed,
    Cr,  // of frames that arrive complete: without the pyramid
};

// What a stage of these chains works on.
struct FixedStageCall {
    uint16_t* frame;      // width * height pixels, changed in place
    uint16_t* stretched;  // width * height zeroed pixels for the stretch's dark tail; null without a stretch
    int32_t width;
    int32_t height;
    int32_t pixelCount;  // width * height
    int32_t maxValue;    // the largest pixel value that a stage may write
    int32_t& dumpCounter;
    LogFile& log;
    const FixedSettings& settings;
};

// Runs the stages of a chain that the settings switch on, in the program's order.
void RunFixedStages(FixedChain chain, const FixedStageCall& call);

}  // namespace vastrelline
