#include "sensor/Rotation.h"

#include <algorithm>

#include "pixels/FrameView.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

// Source pixel (x, y) goes to row x, column y of the target, mirrored in one of the two directions. The walk
// goes in square blocks, so that the rows of both sides stay in the cache.
void Transpose(const FrameView<const uint16_t>& source, const FrameView<uint16_t>& target, bool isClockwise) {
    constexpr int32_t kBlock = 32;
    const int32_t width = source.Width();
    const int32_t height = source.Height();
    for (int32_t blockY = 0; blockY < height; blockY += kBlock) {
        const int32_t endY = std::min(blockY + kBlock, height);
        for (int32_t blockX = 0; blockX < width; blockX += kBlock) {
            const int32_t endX = std::min(blockX + kBlock, width);
            for (int32_t x = blockX; x < endX; ++x) {
                uint16_t* row = target.Row(isClockwise ? x : width - 1 - x);
                for (int32_t y = blockY; y < endY; ++y) {
                    row[isClockwise ? height - 1 - y : y] = source.Row(y)[x];
                }
            }
        }
    }
}

}  // namespace

int32_t RotateBuffer(uint16_t* buffer, int32_t width, int32_t height, int32_t angle) {
    constexpr int32_t kHalfTurn = 180;
    constexpr int32_t kClockwise = 90;
    const FrameView<uint16_t> frame(buffer, width, height);
    if (angle == kHalfTurn) {
        std::reverse(frame.begin(), frame.end());
        return 1;
    }
    if (angle != kClockwise && angle != -90 && angle != 270) return 0;
    const ScratchVector<uint16_t> copy(frame.begin(), frame.end());
    Transpose({copy.data(), width, height}, {buffer, height, width}, angle == kClockwise);
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
