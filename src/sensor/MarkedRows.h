#pragma once

#include <cstdint>
#include <vector>

#include "pixels/FrameView.h"

namespace vastrelline {

// The rows of a mask that hold anything but 0, from the top. Most have nothing hidden, and what looks at
// hidden pixels alone can pass over them.
std::vector<int32_t> FindMarkedRows(const FrameView<const uint16_t>& mask);

}  // namespace vastrelline
