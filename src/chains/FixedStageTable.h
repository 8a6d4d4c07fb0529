// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "chains/StageFrame.h"
#include "config/FixedSettings.h"

namespace vastrelline {

// The two chains whose stages stand in the program's order.
enum class FixedChain : int32_t {
    Fixed,
    Cr,  // of frames that arrive complete: without the pyramid
};

// A call of a stage of these chains.
struct FixedStageCall : StageFrame {
    uint16_t* stretched;   // width * height zeroed pixels for the stretch's dark tail; null without a stretch
    int32_t& dumpCounter;  // the run's next dump number
    const FixedSettings& settings;
};

// Runs the stages of a chain that the settings switch on, in the program's order.
void RunFixedStages(FixedChain chain, const FixedStageCall& call);

}  // namespace vastrelline
