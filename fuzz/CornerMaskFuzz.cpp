// SPDX-License-Identifier: Apache-2.0

// The mask of the rounded corners on a small frame with a geometry from anywhere, and what fills and restores
// the pixels under it. The input's head is the frame, its tail picks size and geometry, so that a change of
// the geometry leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/MessageDialog.h"
#include "sensor/CornerMask.h"
#include "sensor/MaskedPixels.h"
#include "sensor/RoundCornerMask.h"
#include "support/FuzzInput.h"
#include "support/MaskFrames.h"
#include "support/ToVector.h"

namespace {

using namespace vastrelline;

struct Options {
    int32_t width;
    int32_t height;
    SensorGeometry geometry;
    bool isInverted;
};

Options TakeOptions(InputTail& tail) {
    constexpr uint8_t kLargestSide = 40;
    constexpr uint8_t kLargestFullSide = 64;
    Options options{};
    options.width = tail.Take<uint8_t>() % (kLargestSide + 1);
    options.height = tail.Take<uint8_t>() % (kLargestSide + 1);
    SensorGeometry& geometry = options.geometry;
    geometry.Rotation = tail.Take<int8_t>() % 4;
    geometry.Flip = tail.Take<int8_t>() % 5;
    const uint8_t choice = tail.Take<uint8_t>();
    options.isInverted = choice % 2 != 0;
    const bool isSmall = choice / 2 % 4 != 0;
    const auto take = [&](int32_t largest) {
        const auto any = tail.Take<int32_t>();
        return isSmall ? any % (largest + 1) : any;
    };
    geometry.RCCutOff = take(kLargestFullSide / 2);
    geometry.RCCutOffR = take(kLargestFullSide);
    // The definition draws the whole sensor, so the sensor stays small.
    geometry.FrameWidth = tail.Take<uint8_t>() % (kLargestFullSide + 1);
    geometry.FrameHeight = tail.Take<uint8_t>() % (kLargestFullSide + 1);
    geometry.ImgCutLeft = take(kLargestFullSide);
    geometry.ImgCutTop = take(kLargestFullSide);
    geometry.ImgCutRight = take(kLargestFullSide);
    geometry.ImgCutBottom = take(kLargestFullSide);
    if (choice / 8 % 2 == 0) {  // the cuts leave the frame, as those of a sensor do
        const bool isTurned = geometry.Rotation != 0;
        geometry.ImgCutRight = (isTurned ? geometry.FrameHeight : geometry.FrameWidth) - options.width -
                               (isSmall ? geometry.ImgCutLeft : 0);
        geometry.ImgCutBottom = (isTurned ? geometry.FrameWidth : geometry.FrameHeight) - options.height -
                                (isSmall ? geometry.ImgCutTop : 0);
    }
    return options;
}

// The outline, row against row with its definition. Returns whether there is one.
void TestOutline(const Options& o) {
    const SensorGeometry& g = o.geometry;
    for (const int32_t orientation : {kAsBuilt, kTurnedHalf, kTurnedClockwise, kTurnedCounterclockwise}) {
        const std::optional<RowMask> mask =
            BuildRoundCornerMask(g.FrameWidth, g.FrameHeight, g.RCCutOff, g.RCCutOffR, orientation,
                                 g.ImgCutLeft, g.ImgCutTop, o.width, o.height);
        const int32_t shortSide = std::min(g.FrameWidth, g.FrameHeight);
        const bool isRefused = g.RCCutOff > shortSide / 2 || g.RCCutOffR > shortSide;
        Require(mask.has_value() != isRefused, "corners larger than the sensor are refused, no others");
        if (!mask) return;
        const std::optional<CornerOutline> outline =
            MakeCornerOutline(g.FrameWidth, g.FrameHeight, g.RCCutOff, g.RCCutOffR);
        Require(FrameOfMask(*mask).pixels == ToVector(DrawRoundCorners(*outline, orientation, g.ImgCutLeft,
                                                                       g.ImgCutTop, o.width, o.height)),
                "the mask is the outline, turned and cut");
    }
}

// The pixels of one row where they stood before; a filled one has a value of its row.
void TestFill(const std::vector<uint16_t>& frame, const std::vector<uint16_t>& mask, const Options& o) {
    std::vector<uint16_t> filled = frame;
    FillMaskedPixels(filled.data(), mask.data(), o.width, o.height, 0);
    for (size_t i = 0; i < frame.size(); ++i) {
        if (mask[i] != kMasked) {
            Require(filled[i] == frame[i], "a pixel that is not masked stays");
        } else {
            const auto row = frame.begin() + static_cast<ptrdiff_t>(i) / o.width * o.width;
            Require(std::find(row, row + o.width, filled[i]) != row + o.width,
                    "a masked pixel takes one of its row");
        }
    }
    std::vector<uint16_t> restored = filled;
    RestoreMaskedPixels(restored.data(), mask.data(), o.width, o.height, o.isInverted ? 1 : 0);
    const uint16_t brightest = filled.empty() ? uint16_t{0} : *std::max_element(filled.begin(), filled.end());
    for (size_t i = 0; i < frame.size(); ++i) {
        const uint16_t background = i < 2 ? uint16_t{4095} : o.isInverted ? uint16_t{0} : brightest;
        Require(restored[i] == (mask[i] == kMasked ? background : frame[i]),
                "masked pixels are background, all others as they were");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    const Options options = TakeOptions(tail);
    const std::vector<uint16_t> frame = tail.TakeFrame(options.width, options.height);
    const MessageHandler before = SetMessageHandler([](const std::wstring&, MessageIcon) {});
    TestOutline(options);
    std::vector<uint16_t> mask(frame.size());
    const int32_t code =
        BuildMaskFromGeometry(frame.data(), mask.data(), options.width, options.height, options.geometry);
    Require(code == 1, "the answer is always 1");
    Require(std::all_of(mask.begin(), mask.end(), [](uint16_t mark) { return mark == 0 || mark == kMasked; }),
            "a pixel is masked or not");
    const bool isFromFrame =
        ComputeOrientationCode(options.geometry.Rotation, options.geometry.Flip) == kOrientationUnknown;
    for (size_t i = 0; i < mask.size(); ++i)
        Require(!isFromFrame || mask[i] == 0 || frame[i] == 0, "found corners are black");
    TestFill(frame, mask, options);
    // Any mask, too: pixels as they come decide.
    std::vector<uint16_t> anyMask = frame;
    for (uint16_t& mark : anyMask) mark = mark % 3 == 0 ? kMasked : 0;
    TestFill(frame, anyMask, options);
    SetMessageHandler(before);
    return 0;
}
