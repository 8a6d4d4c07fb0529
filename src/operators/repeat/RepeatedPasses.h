// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>

#include "pixels/FrameView.h"

namespace vastrelline {

// Gives a frame what `count` runs of a pass over it give, in place. After a pass that changes nothing, in
// frames of many rows after two of them, none is run any more, and of a circle of frames only what is left
// over of whole rounds: repeated filters end in a frame that stays or, now and then, in two that alternate,
// and a count of 2147483647 would hang the host. A filter that goes on changing the frame runs as often as
// asked.
//
// pass   changes the frame, by what is in the frame alone
void RepeatPasses(const FrameView<uint16_t>& frame, int32_t count, const std::function<void()>& pass);

}  // namespace vastrelline
