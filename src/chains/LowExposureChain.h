// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"
#include "config/SensorSettings.h"

namespace vastrelline {

// Driver of the low-exposure chain: decides from the frame's histogram whether the exposure was too low. A
// low frame runs a fixed sequence of stages with the keys of section "IP_LOWMODE", any other the list of its
// own section, as in the configured chain; these lists may hold the HDR stage. The figures of the decision
// stay in the process-wide dose record.
//
// geometry   the caller's geometry of this frame, or null for the profile's
// Returns    as RunConfiguredChain
ReturnCode RunLowExposureChain(const DriverCall& call, const SensorGeometry* geometry);

}  // namespace vastrelline
