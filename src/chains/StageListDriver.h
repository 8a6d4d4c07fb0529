// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"
#include "chains/StageTable.h"
#include "config/SensorSettings.h"

namespace vastrelline {

// In what the configured and the extended chain differ.
struct StageListOptions {
    std::span<const StageEntry> stages;        // that the list may name
    const SensorGeometry* geometry = nullptr;  // the caller's of this frame, or null for the profile's
    std::wstring sensorFolder = {};            // as SyncSensorSettings
    int32_t sensorMode = 0;                    // as SyncSensorSettings
};

// Runs the stages that a section of the profile lists, in that order, on a copy of the frame.
//
// Returns   kSuccess, or the code of the first argument test that fails: kNoProfile, kNoInput, kNoOutput,
//           kNoSection; nothing is written then
ReturnCode DriveStageList(const DriverCall& call, const StageListOptions& options);

}  // namespace vastrelline
