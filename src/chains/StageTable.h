// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "chains/StageFrame.h"
#include "config/StageId.h"

namespace vastrelline {

// A call of a stage of the configured chain.
struct StageCall : StageFrame {
    int32_t position;  // in the stage list, from 0; names the stage's keys
};

// One row of the stage table.
struct StageEntry {
    StageId id;
    void (*run)(const StageCall& call);
};

// The stages that a stage list of the configured chain may name: all but the HDR stage.
std::span<const StageEntry> ConfiguredStages();

// The stages that lists of the low-exposure and the extended chain may name.
std::span<const StageEntry> AllStages();

// Runs the stage of a number. A number that is not in the table is passed over.
void RunStage(std::span<const StageEntry> stages, int32_t stageNumber, const StageCall& call);

}  // namespace vastrelline
