// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>

#include "chains/DriverCall.h"
#include "operators/curves/TonedFrame.h"

namespace vastrelline {

// Makes the output a copy of the input. With an input whose curves wait the copy waits with them, but for
// buffers that overlap: what is done to one of these must be seen in the other.
void CopyTonedInput(const DriverCall& call, std::optional<TonedFrame>& output);

}  // namespace vastrelline
