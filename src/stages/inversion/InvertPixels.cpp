// SPDX-License-Identifier: Apache-2.0
#include "stages/inversion/InvertPixels.h"

#include "pixels/FrameView.h"
#include "pixels/Truncate.h"

namespace vastrelline {

void InvertPixels(uint16_t* pixels, int32_t width, int32_t height, int32_t maxValue) {
    for (uint16_t& pixel : FrameView(pixels, width, height))
        pixel = LowBits16(WrappingSubtract(maxValue, pixel));
}

void InvertPixels(TonedFrame& frame, int32_t maxValue) {
    // To count a frame takes longer than to invert it.
    if (!frame.IsCounted())
        InvertPixels(frame.Change().begin(), frame.Width(), frame.Height(), maxValue);
    else
        frame.MapBy([=](int32_t level) { return LowBits16(WrappingSubtract(maxValue, level)); });
}

}  // namespace vastrelline
