// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

// A frame with its pixels.
struct OwnedFrame {
    int32_t width;
    int32_t height;
    ScratchVector<uint16_t> pixels;  // width * height of them

    FrameView<uint16_t> View() { return {pixels.data(), width, height}; }
    FrameView<const uint16_t> View() const { return {pixels.data(), width, height}; }
};

}  // namespace vastrelline
