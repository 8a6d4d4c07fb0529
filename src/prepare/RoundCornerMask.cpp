#include "prepare/RoundCornerMask.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "image/AllocZeroed.h"
#include "image/FrameView.h"
#include "image/Truncate.h"
#include "platform/MessageDialog.h"
#include "prepare/CropBuffer.h"
#include "prepare/MaskedPixels.h"
#include "prepare/Rotation.h"

namespace vastrelline {

namespace {

// How many of the lowest rows each column of a full frame hides, from the left edge to the middle; 0 or less
// for none. A chamfer that falls by one row per column, or an exponential outline where that is higher.
class CornerOutline {
public:
    CornerOutline(int32_t cutOff, int32_t cutOffRight)
        : cutOff_(cutOff),
          cutOffRight_(cutOffRight),
          // 1, or not a number for a size of 0, which has no chamfer.
          slope_(static_cast<float>(cutOff) / static_cast<float>(cutOff)),
          step_((1 - kStart) / static_cast<float>(cutOffRight)),
          first_(static_cast<float>(std::exp(-static_cast<double>(kStart)))),
          scale_(static_cast<float>(cutOffRight) / (first_ - static_cast<float>(std::exp(-1.0)))) {}

    int32_t HiddenRows(int32_t x) const {
        // Just below one half: halves are not rounded up.
        constexpr float kRounding = 0.49998998641967773F;
        int32_t height = -1;
        if (cutOff_ > 0) height = cutOff_ - TruncateToInt32(static_cast<float>(x) * slope_ + kRounding);
        if (x < cutOffRight_) {
            const float t = static_cast<float>(x) * step_ + kStart;
            const float u = first_ - static_cast<float>(std::exp(-static_cast<double>(t)));
            height = std::max(height, cutOffRight_ - TruncateToInt32(u * scale_));
        }
        return height + 1;
    }

private:
    static constexpr float kStart = 0.01F;

    int32_t cutOff_;
    int32_t cutOffRight_;
    float slope_;
    float step_;
    float first_;
    float scale_;
};

void MarkOutline(const FrameView<uint16_t>& work, const CornerOutline& outline) {
    for (int32_t x = 0; x <= work.Width() / 2 && x < work.Width(); ++x) {
        const int32_t hiddenRows = std::min(outline.HiddenRows(x), work.Height());
        const int32_t mirror = work.Width() - x - 1;
        for (int32_t y = work.Height() - hiddenRows; y < work.Height(); ++y) {
            work.Row(y)[x] = kMasked;
            if (mirror > x) work.Row(y)[mirror] = kMasked;
        }
    }
}

}  // namespace

int32_t ComputeOrientationCode(int32_t rotation, int32_t flip) {
    constexpr int32_t kCodes[3][4] = {
        {kAsBuilt, kAsBuilt, kTurnedHalf, kTurnedHalf},
        {kTurnedCounterclockwise, kTurnedClockwise, kTurnedCounterclockwise, kTurnedClockwise},
        {kTurnedClockwise, kTurnedCounterclockwise, kTurnedClockwise, kTurnedCounterclockwise},
    };
    if (rotation < 0 || rotation > 2 || flip < 0 || flip > 3) return kOrientationUnknown;
    return kCodes[rotation][flip];
}

std::optional<std::vector<uint16_t>> BuildRoundCornerMask(int32_t frameWidth, int32_t frameHeight,
                                                          int32_t cutOff, int32_t cutOffRight,
                                                          int32_t orientation, int32_t cutLeft,
                                                          int32_t cutTop, int32_t width, int32_t height) {
    const int32_t shortSide = std::min(frameWidth, frameHeight);
    if (cutOff > shortSide / 2 || cutOffRight > shortSide) {
        ShowMessage(L"Wrong parameters of round-corner mask", MessageIcon::Error);
        return std::nullopt;
    }
    // Beyond this no frame is processed, and a profile's slip must not ask for all memory.
    constexpr int64_t kLargestFullFrame = int64_t{1} << 29;
    const int64_t pixelCount = static_cast<int64_t>(frameWidth) * frameHeight;
    if (frameWidth < 0 || frameHeight < 0 || pixelCount >= kLargestFullFrame) return std::nullopt;

    std::vector<uint16_t> work = AllocZeroed<uint16_t>(frameWidth, frameHeight);
    MarkOutline({work.data(), frameWidth, frameHeight}, CornerOutline(cutOff, cutOffRight));

    constexpr int32_t kAngleOfCode[] = {0, 180, 90, -90};
    if (orientation >= kTurnedHalf && orientation <= kTurnedCounterclockwise) {
        RotateBuffer(work.data(), frameWidth, frameHeight, kAngleOfCode[orientation]);
    }
    if (orientation == kTurnedClockwise || orientation == kTurnedCounterclockwise) {
        std::swap(frameWidth, frameHeight);
    }
    const std::vector<std::byte> crop = CropBuffer(work.data(), frameWidth, frameHeight, cutLeft, cutTop,
                                                   width, height, ElementType::Unsigned16);
    std::vector<uint16_t> mask = AllocZeroed<uint16_t>(width, height);
    if (!crop.empty()) std::memcpy(mask.data(), crop.data(), crop.size());
    return mask;
}

int32_t MarkCornerTriangles(const uint16_t* frame, uint16_t* mask, int32_t width, int32_t height) {
    constexpr int32_t kTriangle = 170;
    const FrameView<const uint16_t> pixels(frame, width, height);
    const FrameView<uint16_t> marks(mask, width, height);

    // Calls `visit` with the place of every pixel of one corner's triangle; what lies outside the frame does
    // not exist.
    const auto walkTriangle = [&](bool isBottom, bool isRight, const auto& visit) {
        for (int32_t row = 0; row < std::min(kTriangle, height); ++row) {
            const int32_t y = isBottom ? height - 1 - row : row;
            for (int32_t i = 0; i < std::min(kTriangle - row, width); ++i) {
                const int32_t x = isRight ? width - 1 - i : i;
                if (pixels.Row(y)[x] == 0) visit(x, y);
            }
        }
    };
    const auto countZeros = [&](bool isBottom, bool isRight) {
        int32_t count = 0;
        walkTriangle(isBottom, isRight, [&](int32_t, int32_t) { ++count; });
        return count;
    };
    const auto markZeros = [&](bool isBottom, bool isRight) {
        walkTriangle(isBottom, isRight, [&](int32_t x, int32_t y) { marks.Row(y)[x] = kMasked; });
    };

    const int32_t topLeft = countZeros(false, false);
    const int32_t topRight = countZeros(false, true);
    const int32_t bottomLeft = countZeros(true, false);
    const int32_t bottomRight = countZeros(true, true);
    if (width < height) {
        const bool isBottom = topLeft + topRight <= bottomLeft + bottomRight;
        markZeros(isBottom, false);
        markZeros(isBottom, true);
    } else {
        const bool isRight = topLeft + bottomLeft <= topRight + bottomRight;
        markZeros(false, isRight);
        markZeros(true, isRight);
    }
    return 1;
}

}  // namespace vastrelline
