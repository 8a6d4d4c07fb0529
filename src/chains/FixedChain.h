// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "chains/DriverCall.h"
#include "chains/ReturnCode.h"

namespace vastrelline {

// Driver of the fixed chain: runs the stages that a section of the profile switches on, in the program's
// order, on a copy of the frame. An empty section name is no error: all settings then have their defaults.
//
// Returns   kSuccess, or the code of the first argument test that fails: kNoProfile, kNoInput, kNoOutput;
//           nothing is written then
ReturnCode RunFixedChain(const DriverCall& call);

}  // namespace vastrelline
