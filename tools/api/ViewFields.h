// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "api/ApiCall.h"
#include "frames/GreyWindow.h"
#include "views/FrameView.h"

namespace vastrelline {

// What every request for a rendering says. Errors: UsageError
ViewRequest ViewOf(const ApiCall& call);   // x, y, w, h, pw, ph
GreyWindow WindowOf(const ApiCall& call);  // low, high

// The answer to one: its pixels.
HttpAnswer PixelsAnswer(const std::vector<uint8_t>& pixels);

}  // namespace vastrelline
