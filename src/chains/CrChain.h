// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"

namespace vastrelline {

// Driver of the CR chain: the fixed chain for frames that arrive complete, without the sensor's rounded
// corners. There is no corner mask and no pyramid, and the backup set holds all that is needed to redo the
// frame.
//
// Returns   as RunFixedChain
ReturnCode RunCrChain(const DriverCall& call);

}  // namespace vastrelline
