// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"
#include "config/SensorSettings.h"

namespace vastrelline {

// Driver of the configured chain: runs the stages that a section of the profile lists, in that order, on a
// copy of the frame.
//
// geometry   the caller's geometry of this frame, or null for the profile's
// Returns    kSuccess, or the code of the first argument test that fails: kNoProfile, kNoInput, kNoOutput,
//            kNoSection; nothing is written then
ReturnCode RunConfiguredChain(const DriverCall& call, const SensorGeometry* geometry);

}  // namespace vastrelline
