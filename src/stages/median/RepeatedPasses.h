#pragma once

#include <cstdint>
#include <functional>

#include "pixels/FrameView.h"

namespace vastrelline {

// Gives a frame what `count` runs of a pass over it give, in place. Runs that would only go round in a circle
// of frames are left out: repeated medians end in a frame that stays or, now and then, in two that alternate,
// and a count of 2147483647 would hang the host.
//
// pass   changes the frame, by what is in the frame alone
void RepeatPasses(const FrameView<uint16_t>& frame, int32_t count, const std::function<void()>& pass);

}  // namespace vastrelline
