// SPDX-License-Identifier: Apache-2.0

// The exposure curve on a small frame with knees and a geometry from anywhere, against the same written down
// a second time. The input's head is the frame, its tail picks the rest, so that a change of that leaves the
// pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/MessageDialog.h"
#include "sensor/ExposureCurve.h"
#include "sensor/RoundCornerMask.h"
#include "support/EverySet.h"
#include "support/FuzzInput.h"
#include "support/MaskFrames.h"
#include "support/PlainExposure.h"
#include "support/ToVector.h"

namespace {

using namespace vastrelline;

constexpr int32_t kTop = 4095;

struct Options {
    int32_t width;
    int32_t height;
    int32_t lowKnee = 250;
    int32_t highKnee = 3800;
    double liftExponent = 0.45;
    bool areUsualKnees;
    SensorGeometry geometry;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 32;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    const uint8_t choice = tail.Take<uint8_t>();
    options.areUsualKnees = choice % 4 != 0;
    if (!options.areUsualKnees) {
        options.lowKnee = tail.Take<int16_t>();
        options.highKnee = tail.Take<int16_t>();
        options.liftExponent = tail.Take<double>();
    }
    SensorGeometry& geometry = options.geometry;
    geometry.Rotation = tail.Take<int8_t>() % 4;
    geometry.Flip = tail.Take<int8_t>() % 5;
    const bool isSmall = choice / 4 % 4 != 0;
    const auto take = [&](int32_t largest) {
        const auto any = tail.Take<int32_t>();
        return isSmall ? any % (largest + 1) : any;
    };
    geometry.RCCutOff = take(kLargestSide / 2);
    geometry.RCCutOffR = take(kLargestSide);
    geometry.FrameWidth = take(2 * kLargestSide);
    geometry.FrameHeight = take(2 * kLargestSide);
    geometry.ImgCutLeft = take(kLargestSide / 4);
    geometry.ImgCutTop = take(kLargestSide / 4);
    return options;
}

std::vector<uint16_t> Correct(std::vector<uint16_t> pixels, const Options& o) {
    ApplyExposureCurve(pixels.data(), o.width, o.height, o.lowKnee, o.highKnee, o.liftExponent, 0.6, L"",
                       &o.geometry);
    return pixels;
}

// What lies under the corners, as the curve has to see it.
std::vector<uint16_t> FindCorners(const std::vector<uint16_t>& pixels, const Options& o) {
    const SensorGeometry& g = o.geometry;
    std::vector<uint16_t> mask(pixels.size());
    const int32_t code = ComputeOrientationCode(g.Rotation, g.Flip);
    if (code == kOrientationUnknown) {
        DetectCornerMask(pixels.data(), o.width, o.height, mask.data(), g.RCCutOff, g.RCCutOffR);
        return mask;
    }
    const bool isTurned = code == kTurnedClockwise || code == kTurnedCounterclockwise;
    const int64_t fullWidth = isTurned ? g.FrameHeight : g.FrameWidth;
    const int64_t fullHeight = isTurned ? g.FrameWidth : g.FrameHeight;
    const bool isInside = g.ImgCutLeft >= 0 && g.ImgCutTop >= 0 && g.ImgCutLeft + o.width <= fullWidth &&
                          g.ImgCutTop + o.height <= fullHeight;
    const auto outline = BuildRoundCornerMask(g.FrameWidth, g.FrameHeight, g.RCCutOff, g.RCCutOffR, code,
                                              g.ImgCutLeft, g.ImgCutTop, o.width, o.height);
    return isInside && outline ? FrameOfMask(*outline).pixels : mask;
}

void TestClipLevels(const std::vector<uint16_t>& pixels, const std::vector<uint16_t>& mask,
                    const Options& o) {
    std::vector<uint16_t> seen;
    for (size_t i = 0; i < pixels.size(); ++i)
        if (mask[i] == 0) seen.push_back(static_cast<uint16_t>(std::min<int32_t>(pixels[i], kTop)));
    std::sort(seen.begin(), seen.end());
    const auto hundredth = static_cast<size_t>(0.01 * static_cast<double>(pixels.size()));
    uint16_t low = 0;
    uint16_t high = 0;
    MeasureClipLevels(pixels.data(), mask.data(), o.width, o.height, low, high);
    const bool isThere = hundredth < seen.size();
    Require(low == (isThere ? seen[hundredth] : kTop + 1), "a hundredth is darker");
    Require(high == (isThere ? seen[seen.size() - 1 - hundredth] : 0), "a hundredth is brighter");
}

// In each row what is marked begins at its ends.
void TestDetectedCorners(const std::vector<uint16_t>& pixels, const Options& o) {
    std::vector<uint16_t> mask(pixels.size());
    DetectCornerMask(pixels.data(), o.width, o.height, mask.data(), o.geometry.RCCutOff, 0);
    for (int32_t y = 0; y < o.height && o.width > 0; ++y) {
        const auto row = mask.begin() + ptrdiff_t{y} * o.width;
        const auto end = row + o.width;
        const auto middle = std::find(row, end, 0);
        const auto right = std::find(middle, end, 1);
        Require(
            std::all_of(row, end, [](uint16_t mark) { return mark <= 1; }) && std::find(right, end, 0) == end,
            "marks reach inward from both ends of a row");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    std::vector<uint16_t> pixels = tail.TakeFrame(options.width, options.height);
    const MessageHandler before = SetMessageHandler([](const std::wstring&, MessageIcon) {});
    const std::vector<uint16_t> result = RequireEqualUnderEverySet([&] { return Correct(pixels, options); });
    TestClipLevels(pixels, FindCorners(pixels, options), options);
    TestDetectedCorners(pixels, options);
    // One level comes out as one level, and with the usual knees a brighter one no darker.
    std::vector<uint16_t> entries(kTop + 1);
    std::vector<bool> isKnown(kTop + 1);
    for (size_t i = 0; i < pixels.size(); ++i) {
        const auto level = static_cast<size_t>(std::min<int32_t>(pixels[i], kTop));
        Require(!isKnown[level] || entries[level] == result[i], "a pixel's level decides");
        entries[level] = result[i];
        isKnown[level] = true;
    }
    if (options.areUsualKnees) {
        uint16_t last = 0;
        for (size_t level = 0; level < entries.size(); ++level) {
            if (!isKnown[level]) continue;
            Require(entries[level] >= last, "the curve rises");
            last = entries[level];
        }
        for (uint16_t& pixel : pixels) pixel &= kTop;
        const std::vector<uint16_t> mask = FindCorners(pixels, options);
        std::vector<bool> isHidden(mask.begin(), mask.end());
        const auto hundredth = static_cast<size_t>(0.01 * static_cast<double>(pixels.size()));
        const auto seen = static_cast<size_t>(std::count(isHidden.begin(), isHidden.end(), false));
        if (seen > hundredth)
            Require(Correct(pixels, options) == PlainExposure(pixels, isHidden), "the curve as it is told");
    }
    SetMessageHandler(before);
    return 0;
}
