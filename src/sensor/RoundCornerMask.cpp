// SPDX-License-Identifier: Apache-2.0
#include "sensor/RoundCornerMask.h"

#include <algorithm>

#include "pixels/FrameLimits.h"
#include "pixels/FrameView.h"
#include "platform/MessageDialog.h"
#include "sensor/MaskedPixels.h"

namespace vastrelline {

namespace {

// The part of a line of the delivered frame that lies between two places of the turned full frame.
struct Run {
    int64_t first;
    int64_t end;  // not above `first` if there is none
};

Run CutRun(int64_t first, int64_t end, int32_t cut, int32_t length) {
    return {std::max<int64_t>(0, first - cut), std::min<int64_t>(length, end - cut)};
}

// Both corners at the bottom, or upside down at the top: a row is compared with all columns at once.
void MarkCornersOfColumns(RowMask& mask, const CornerOutline& outline, bool isHalfTurned, int32_t cutLeft,
                          int32_t cutTop) {
    const Run columns = CutRun(0, outline.FrameWidth(), cutLeft, mask.Width());
    const Run rows = CutRun(0, outline.FrameHeight(), cutTop, mask.Height());
    std::vector<int32_t> hiddenRows;
    for (int64_t x = columns.first; x < columns.end; ++x) {
        const auto column = static_cast<int32_t>(x + cutLeft);
        hiddenRows.push_back(outline.HiddenRows(isHalfTurned ? outline.FrameWidth() - 1 - column : column));
    }
    if (hiddenRows.empty()) return;
    const int32_t most = *std::max_element(hiddenRows.begin(), hiddenRows.end());
    for (int64_t y = rows.first; y < rows.end; ++y) {
        const auto row = static_cast<int32_t>(y + cutTop);
        const int32_t rowsBeyond = isHalfTurned ? row : outline.FrameHeight() - 1 - row;
        if (rowsBeyond >= most) continue;
        uint16_t* marks = mask.Mark(static_cast<int32_t>(y)) + columns.first;
        for (size_t i = 0; i < hiddenRows.size(); ++i) marks[i] = hiddenRows[i] > rowsBeyond ? kMasked : 0;
    }
}

// Both corners at the left, or at the right: a column of the full frame is a row.
void MarkCornersOfRows(RowMask& mask, const CornerOutline& outline, bool isAtLeft, int32_t cutLeft,
                       int32_t cutTop) {
    const Run rows = CutRun(0, outline.FrameWidth(), cutTop, mask.Height());
    for (int64_t y = rows.first; y < rows.end; ++y) {
        const auto row = static_cast<int32_t>(y + cutTop);
        const int32_t hidden = outline.HiddenRows(isAtLeft ? row : outline.FrameWidth() - 1 - row);
        const int32_t first = isAtLeft ? 0 : outline.FrameHeight() - hidden;
        const Run run = CutRun(first, int64_t{first} + hidden, cutLeft, mask.Width());
        if (run.first >= run.end) continue;
        uint16_t* marks = mask.Mark(static_cast<int32_t>(y));
        std::fill(marks + run.first, marks + run.end, kMasked);
    }
}

bool AreCornersTooLarge(int32_t frameWidth, int32_t frameHeight, int32_t cutOff, int32_t cutOffRight) {
    const int32_t shortSide = std::min(frameWidth, frameHeight);
    return cutOff > shortSide / 2 || cutOffRight > shortSide;
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

std::optional<CornerOutline> MakeCornerOutline(int32_t frameWidth, int32_t frameHeight, int32_t cutOff,
                                               int32_t cutOffRight) {
    if (AreCornersTooLarge(frameWidth, frameHeight, cutOff, cutOffRight)) {
        ShowMessage(L"Wrong parameters of round-corner mask", MessageIcon::Error);
        return std::nullopt;
    }
    if (!HasCornerOutline(frameWidth, frameHeight, cutOff, cutOffRight)) return std::nullopt;
    return CornerOutline(frameWidth, frameHeight, cutOff, cutOffRight);
}

bool HasCornerOutline(int32_t frameWidth, int32_t frameHeight, int32_t cutOff, int32_t cutOffRight) {
    if (AreCornersTooLarge(frameWidth, frameHeight, cutOff, cutOffRight)) return false;
    // Beyond this no frame is processed.
    return frameWidth >= 0 && frameHeight >= 0 && !IsBeyondPixelLimit(frameWidth, frameHeight);
}

void MarkRoundCorners(RowMask& mask, const CornerOutline& outline, int32_t orientation, int32_t cutLeft,
                      int32_t cutTop) {
    if (orientation == kTurnedClockwise || orientation == kTurnedCounterclockwise) {
        MarkCornersOfRows(mask, outline, orientation == kTurnedClockwise, cutLeft, cutTop);
    } else {
        MarkCornersOfColumns(mask, outline, orientation == kTurnedHalf, cutLeft, cutTop);
    }
}

std::optional<RowMask> BuildRoundCornerMask(int32_t frameWidth, int32_t frameHeight, int32_t cutOff,
                                            int32_t cutOffRight, int32_t orientation, int32_t cutLeft,
                                            int32_t cutTop, int32_t width, int32_t height) {
    const std::optional<CornerOutline> outline =
        MakeCornerOutline(frameWidth, frameHeight, cutOff, cutOffRight);
    if (!outline) return std::nullopt;
    RowMask mask(width, height);
    MarkRoundCorners(mask, *outline, orientation, cutLeft, cutTop);
    return mask;
}

int32_t MarkCornerTriangles(const uint16_t* frame, RowMask& mask) {
    constexpr int32_t kTriangle = 170;
    const int32_t width = mask.Width();
    const int32_t height = mask.Height();
    const FrameView<const uint16_t> pixels(frame, width, height);

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
        walkTriangle(isBottom, isRight, [&](int32_t x, int32_t y) { mask.Mark(y)[x] = kMasked; });
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
