// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

#include "pixels/AllocFrame.h"
#include "pixels/FrameView.h"
#include "sensor/CropBuffer.h"
#include "sensor/MaskedPixels.h"
#include "sensor/Rotation.h"
#include "sensor/RoundCornerMask.h"

namespace vastrelline {

ScratchVector<uint16_t> DrawRoundCorners(const CornerOutline& outline, int32_t orientation, int32_t cutLeft,
                                         int32_t cutTop, int32_t width, int32_t height) {
    int32_t frameWidth = outline.FrameWidth();
    int32_t frameHeight = outline.FrameHeight();
    ScratchVector<uint16_t> work = AllocZeroed<uint16_t>(frameWidth, frameHeight);
    const FrameView<uint16_t> frame(work.data(), frameWidth, frameHeight);
    for (int32_t x = 0; x <= frameWidth / 2 && x < frameWidth; ++x) {
        const int32_t hiddenRows = std::min(outline.HiddenRowsAtLeft(x), frameHeight);
        const int32_t mirror = frameWidth - x - 1;
        for (int32_t y = frameHeight - hiddenRows; y < frameHeight; ++y) {
            frame.Row(y)[x] = kMasked;
            if (mirror > x) frame.Row(y)[mirror] = kMasked;
        }
    }

    constexpr int32_t kAngleOfCode[] = {0, 180, 90, -90};
    if (orientation >= kTurnedHalf && orientation <= kTurnedCounterclockwise) {
        RotateBuffer(work.data(), frameWidth, frameHeight, kAngleOfCode[orientation]);
    }
    if (orientation == kTurnedClockwise || orientation == kTurnedCounterclockwise) {
        std::swap(frameWidth, frameHeight);
    }
    const ScratchVector<std::byte> crop = CropBuffer(work.data(), frameWidth, frameHeight, cutLeft, cutTop,
                                                     width, height, ElementType::Unsigned16);
    ScratchVector<uint16_t> mask = AllocZeroed<uint16_t>(width, height);
    if (!crop.empty()) std::memcpy(mask.data(), crop.data(), crop.size());
    return mask;
}

}  // namespace vastrelline
