// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Figures of an exposure decision.
struct DoseRecord {
    int32_t ObjectMedian = 0;  // grey level of the object's median
    int32_t ObjectTotal = 0;   // pixels below the threshold between object and background
    int32_t LowSignal = 0;     // those of them below level 100
    double LowRatio = 0.0;     // LowSignal / ObjectTotal
    int32_t LowExposure = 0;   // 1 if LowRatio is greater than the profile's limit, else 0
};

// The record of the last decision of the process; all zero at load. Both may run on any thread at any time:
// who reads sees the figures of one decision.
DoseRecord SharedDoseRecord();
void SetSharedDoseRecord(const DoseRecord& record);

}  // namespace vastrelline
