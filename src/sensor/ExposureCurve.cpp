// SPDX-License-Identifier: Apache-2.0
#include "sensor/ExposureCurve.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "elementary/Power.h"
#include "pixels/FrameView.h"
#include "pixels/Truncate.h"
#include "sensor/RoundCornerMask.h"

namespace vastrelline {

namespace {

constexpr int32_t kLevels = 4096;

// Whether the delivered frame lies inside the full sensor frame, turned by the code.
bool IsInsideFullFrame(const SensorGeometry& geometry, int32_t code, int32_t width, int32_t height) {
    const bool isTurned = code == kTurnedClockwise || code == kTurnedCounterclockwise;
    const int64_t fullWidth = isTurned ? geometry.FrameHeight : geometry.FrameWidth;
    const int64_t fullHeight = isTurned ? geometry.FrameWidth : geometry.FrameHeight;
    return geometry.ImgCutLeft >= 0 && geometry.ImgCutTop >= 0 &&
           int64_t{geometry.ImgCutLeft} + width <= fullWidth &&
           int64_t{geometry.ImgCutTop} + height <= fullHeight;
}

// The corners of the frame: from the sensor's outline if its orientation is known, otherwise from the frame
// itself. An outline that cannot be built, or that does not hold the frame, gives a mask of zeros.
RowMask MakeCornerMask(const uint16_t* frame, int32_t width, int32_t height, const SensorGeometry& geometry) {
    const int32_t code = ComputeOrientationCode(geometry.Rotation, geometry.Flip);
    if (code == kOrientationUnknown) {
        RowMask mask(width, height);
        DetectCornerMask(frame, mask, geometry.RCCutOff, geometry.RCCutOffR);
        return mask;
    }
    std::optional<RowMask> outline =
        BuildRoundCornerMask(geometry.FrameWidth, geometry.FrameHeight, geometry.RCCutOff, geometry.RCCutOffR,
                             code, geometry.ImgCutLeft, geometry.ImgCutTop, width, height);
    if (!outline || !IsInsideFullFrame(geometry, code, width, height)) {
        return RowMask(width, height);
    }
    return *std::move(outline);
}

// Sizes of the two dark corners of a frame, in rows, and where they lie.
struct DarkCorners {
    int32_t left;
    int32_t right;
    bool isTop;
};

DarkCorners FindDarkCorners(const FrameView<const uint16_t>& frame, int32_t cutOff) {
    constexpr uint16_t kDark = 10;
    constexpr int32_t kUnknown = -1;
    DarkCorners corners{kUnknown, kUnknown, true};
    // True once both are known.
    const auto lookAt = [&](int32_t y) {
        const uint16_t* row = frame.Row(y);
        if (corners.left == kUnknown && row[0] > kDark) corners.left = y;
        if (corners.right == kUnknown && row[frame.Width() - 1] > kDark) corners.right = y;
        return corners.left != kUnknown && corners.right != kUnknown;
    };
    for (int32_t y = 0; y < std::min(cutOff, frame.Height()); ++y) {
        if (lookAt(y)) return corners;
    }
    corners.isTop = false;
    for (int32_t y = frame.Height() - 1; y >= 0; --y) {
        if (lookAt(y)) return corners;
    }
    return {cutOff, cutOff, false};
}

// The table of the exposure curve.
std::vector<uint16_t> BuildExposureTable(int32_t lowLevel, int32_t highLevel, int32_t lowKnee,
                                         double liftExponent) {
    std::vector<uint16_t> table(kLevels);
    const bool isLifted = lowLevel < lowKnee;
    for (int32_t i = 1; i < kLevels; ++i) {
        double entry = i;
        if (isLifted && i < lowLevel) {
            const double whole = 2.0 * lowLevel;
            entry = Pow(2 * (i / whole), 1 - liftExponent) / 2 * whole;
        } else if (i > highLevel) {
            entry = highLevel;
        }
        table[static_cast<size_t>(i)] = LowBits16(TruncateToInt32(entry));
    }
    return table;
}

// As MeasureClipLevels.
//
// histogram    of the pixels that count
// pixelCount   of all pixels
void FindClipLevels(const std::vector<uint32_t>& histogram, size_t pixelCount, uint16_t& low,
                    uint16_t& high) {
    low = kLevels;
    high = 0;
    const double limit = 0.01 * static_cast<double>(pixelCount);
    uint32_t sum = 0;
    for (size_t level = 0; level < kLevels; ++level) {
        sum += histogram[level];
        if (limit < sum) {
            low = static_cast<uint16_t>(level);
            break;
        }
    }
    sum = 0;
    for (size_t level = kLevels; level-- > 0;) {
        sum += histogram[level];
        if (limit < sum) {
            high = static_cast<uint16_t>(level);
            break;
        }
    }
}

size_t CountedLevel(uint16_t pixel) { return std::min<size_t>(pixel, kLevels - 1); }

}  // namespace

void ApplyExposureCurve(uint16_t* frame, int32_t width, int32_t height, int32_t lowKnee, int32_t highKnee,
                        double liftExponent, double reserved, const std::wstring& profilePath,
                        const SensorGeometry* geometry) {
    TonedFrame toned({frame, width, height});
    ApplyExposureCurve(toned, lowKnee, highKnee, liftExponent, reserved, profilePath, geometry);
    toned.Change();
}

void ApplyExposureCurve(TonedFrame& frame, int32_t lowKnee, int32_t highKnee, double liftExponent,
                        double /*reserved*/, const std::wstring& profilePath,
                        const SensorGeometry* geometry) {
    constexpr double kTopLevel = 4095.0;
    constexpr uint16_t kLowestClip = 1800;
    SensorGeometry fromProfile{};
    if (geometry == nullptr) {
        ReadSensorGeometry(profilePath, kSensorSection, fromProfile);
        geometry = &fromProfile;
    }
    const RowMask mask = MakeCornerMask(frame.Read().begin(), frame.Width(), frame.Height(), *geometry);
    uint16_t low = 0;
    uint16_t high = 0;
    MeasureClipLevels(frame, mask, low, high);
    // The black point is the frame's true minimum, masked pixels included, in place of `low`.
    const int32_t black = std::min(kLevels, frame.MinLevel());

    const int32_t span = high - black;
    const auto kneeLevel = [&](int32_t knee) {
        return LowBits16(WrappingAdd(LowBits16(TruncateToInt32(span * knee / kTopLevel)), black));
    };
    const uint16_t lowLevel = kneeLevel(lowKnee);
    const uint16_t highLevel = std::max(kneeLevel(highKnee), kLowestClip);
    frame.Map(BuildExposureTable(lowLevel, highLevel, lowKnee, liftExponent));
}

void MeasureClipLevels(const uint16_t* frame, const uint16_t* mask, int32_t width, int32_t height,
                       uint16_t& low, uint16_t& high) {
    const FrameView<const uint16_t> pixels(frame, width, height);
    std::vector<uint32_t> histogram(kLevels);
    for (size_t i = 0; i < pixels.Count(); ++i) {
        if (mask[i] == 0) ++histogram[CountedLevel(frame[i])];
    }
    FindClipLevels(histogram, pixels.Count(), low, high);
}

void MeasureClipLevels(TonedFrame& frame, const RowMask& mask, uint16_t& low, uint16_t& high) {
    // What the mask hides is little, and the counts of all have more uses.
    std::vector<uint32_t> histogram = frame.Histogram(kLevels - 1);
    const FrameView<const uint16_t> pixels = frame.Read();
    for (const int32_t y : mask.MarkedRows()) {
        const uint16_t* const marks = mask.Row(y);
        const uint16_t* const row = pixels.Row(y);
        for (int32_t x = 0; x < frame.Width(); ++x) {
            if (marks[x] != 0) --histogram[CountedLevel(row[x])];
        }
    }
    FindClipLevels(histogram, frame.Count(), low, high);
}

void DetectCornerMask(const uint16_t* frame, RowMask& mask, int32_t cutOff, int32_t /*cutOffRight*/) {
    const int32_t width = mask.Width();
    const int32_t height = mask.Height();
    const FrameView<const uint16_t> pixels(frame, width, height);
    if (pixels.Count() == 0) return;
    DarkCorners corners = FindDarkCorners(pixels, cutOff);
    // At the bottom the fill takes in one row more than at the top.
    const int64_t rows = corners.isTop ? int64_t{cutOff} : int64_t{cutOff} + 1;
    for (int32_t i = 0; i < std::min<int64_t>(rows, height); ++i) {
        uint16_t* row = mask.Mark(corners.isTop ? i : height - 1 - i);
        if (corners.left >= 0) std::fill_n(row, std::min(corners.left--, width), uint16_t{1});
        if (corners.right >= 0) {
            const int32_t count = std::min(corners.right--, width);
            std::fill_n(row + width - count, count, uint16_t{1});
        }
        if (corners.left <= 0 && corners.right <= 0) break;
    }
}

}  // namespace vastrelline
