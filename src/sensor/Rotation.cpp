// SPDX-License-Identifier: Apache-2.0
#include "sensor/Rotation.h"

#include <algorithm>

#include "pixels/FrameView.h"
#include "sensor/QuarterTurn.h"

namespace vastrelline {

int32_t RotateBuffer(uint16_t* buffer, int32_t width, int32_t height, int32_t angle) {
    constexpr int32_t kHalfTurn = 180;
    constexpr int32_t kClockwise = 90;
    const FrameView<uint16_t> frame(buffer, width, height);
    if (angle == kHalfTurn) {
        std::reverse(frame.begin(), frame.end());
        return 1;
    }
    if (angle != kClockwise && angle != -90 && angle != 270) return 0;
    TurnByQuarter(buffer, width, height, angle == kClockwise);
    return 1;
}

int32_t FlipBuffer(uint16_t* buffer, int32_t width, int32_t height, int32_t mode) {
    const FrameView<uint16_t> frame(buffer, width, height);
    if (mode == 1) {
        for (int32_t y = 0; y < height; ++y) std::reverse(frame.Row(y), frame.Row(y) + width);
    } else if (mode == 2) {
        for (int32_t y = 0; y < height / 2; ++y) {
            std::swap_ranges(frame.Row(y), frame.Row(y) + width, frame.Row(height - 1 - y));
        }
    }
    return 1;
}

int32_t RotateAndFlip(uint16_t* frame, int32_t width, int32_t height, int32_t rotation, int32_t flip) {
    if (frame == nullptr) return 0;
    if (width <= 0 || height <= 0) return 1;
    constexpr int32_t kAngleOfRotation[] = {0, 90, -90, 180};
    if (rotation >= 1 && rotation <= 3 &&
        RotateBuffer(frame, width, height, kAngleOfRotation[rotation]) == 0) {
        return 0;
    }
    if (flip == 1 || flip == 2) FlipBuffer(frame, width, height, flip);
    if (flip == 3) RotateBuffer(frame, width, height, 180);
    return 1;
}

}  // namespace vastrelline
