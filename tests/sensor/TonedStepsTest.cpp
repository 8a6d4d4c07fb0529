// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "sensor/CornerMask.h"
#include "sensor/ExposureCurve.h"
#include "sensor/MaskedPixels.h"
#include "sensor/PixelBits.h"
#include "sensor/SaturationCap.h"
#include "sensor/TargetRange.h"
#include "sensor/TonedSteps.h"
#include "stages/inversion/InversionStage.h"
#include "stages/inversion/InvertPixels.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/MaskFrames.h"
#include "support/ShownMessages.h"

namespace vastrelline {
namespace {

TonedFrame Toned(Frame& frame) { return TonedFrame({frame.Data(), frame.width, frame.height}); }

struct StepsCase {
    std::string name;
    Frame frame;
    int32_t bitsStored;
    int32_t saturationValue;
    SensorGeometry geometry;
    int32_t targetRange;
    int32_t inversion;  // 0 none, 1 plain, 2 logarithmic
};

void PrintTo(const StepsCase& c, std::ostream* out) { *out << c.name; }

constexpr double kLogRatio = 0.2;

void ExposePixels(Frame& frame, const SensorGeometry& geometry) {
    ApplyExposureCurve(frame.Data(), frame.width, frame.height, 250, 3800, 0.45, 0.6, L"", &geometry);
}

// One step after the other, each over all pixels.
Frame TakeStepsOnPixels(const Frame& exposed, const StepsCase& c) {
    Frame frame = exposed;
    int32_t bits = c.bitsStored;
    const int32_t maxValue = RescaleToPixelBits(frame.Data(), frame.width, frame.height, bits);
    CapSaturation(frame.Data(), frame.width, frame.height, c.saturationValue);
    Frame mask(frame.width, frame.height);
    BuildMaskFromGeometry(frame.Data(), mask.Data(), frame.width, frame.height, c.geometry);
    FillMaskedPixels(frame.Data(), mask.Data(), frame.width, frame.height, maxValue);
    ApplyTargetRange(frame.Data(), frame.width, frame.height, c.targetRange, 0, 0.001F, 0.001F);
    if (c.inversion == 1) InvertPixels(frame.Data(), frame.width, frame.height, maxValue);
    if (c.inversion == 2) ApplyLogCurve(frame.Data(), frame.width, frame.height, kLogRatio, 1, 0, L"", 0);
    return frame;
}

// The same steps by levels; `mask` must outlive the frame's wait.
void TakeSteps(TonedFrame& frame, RowMask& mask, const StepsCase& c) {
    int32_t bits = c.bitsStored;
    const int32_t maxValue = RescaleTonedBits(frame, bits);
    CapTonedSaturation(frame, c.saturationValue);
    BuildTonedMask(frame, mask, c.geometry);
    FillTonedPixels(frame, mask, maxValue);
    ApplyTargetRange(frame, c.targetRange, 0, 0.001F, 0.001F);
    if (c.inversion == 1) InvertPixels(frame, maxValue);
    if (c.inversion == 2) ApplyLogCurve(frame, kLogRatio, 1, 0, L"", 0);
}

class TonedStepsTest : public testing::TestWithParam<StepsCase> {};

TEST_P(TonedStepsTest, CopyAndInputAreWhatStepsOnPixelsMakeOfThem) {
    const ShownMessages messages;
    const StepsCase& c = GetParam();
    Frame expectedInput = c.frame;
    ExposePixels(expectedInput, c.geometry);
    const Frame expected = TakeStepsOnPixels(expectedInput, c);

    Frame input = c.frame;
    TonedFrame tonedInput = Toned(input);
    ApplyExposureCurve(tonedInput, 250, 3800, 0.45, 0.6, L"", &c.geometry);
    Frame output(input.width, input.height);
    TonedFrame copy(tonedInput, {output.Data(), output.width, output.height});
    RowMask mask(input.width, input.height);
    TakeSteps(copy, mask, c);
    EXPECT_EQ(copy.MinLevel(), MinPixel(expected.Data(), expected.width, expected.height));
    EXPECT_EQ(copy.MaxLevel(), MaxPixel(expected.Data(), expected.width, expected.height));
    EXPECT_EQ(copy.Histogram(4095), BuildHistogram(expected.Data(), expected.width, expected.height, 4095));
    copy.Read();
    EXPECT_THAT(output, EqualsFrame(expected));
    EXPECT_THAT(input, EqualsFrame(expectedInput));
}

TEST_P(TonedStepsTest, FrameInPlaceWithoutCountsIsMappedTheSameWay) {
    const ShownMessages messages;
    const StepsCase& c = GetParam();
    Frame frame = c.frame;
    RowMask mask(frame.width, frame.height);
    TonedFrame toned = Toned(frame);
    TakeSteps(toned, mask, c);
    toned.Read();
    EXPECT_THAT(frame, EqualsFrame(TakeStepsOnPixels(c.frame, c)));
}

// Every other value of a case occurs with every frame and every kind of corners.
std::vector<StepsCase> MakeCases() {
    const std::vector<std::pair<std::string, Frame>> frames = {{"Radiograph", MadeRadiograph(120, 90)},
                                                               {"Noise12Bits", Noise(61, 47, 4095, 1)},
                                                               {"Noise16Bits", Noise(61, 47, 65535, 2)},
                                                               {"Dark", Noise(61, 47, 700, 3)},
                                                               {"Black", Flat(61, 47, 0)},
                                                               {"Beyond12Bits", Flat(61, 47, 5000)},
                                                               {"OnePixel", Flat(1, 1, 300)},
                                                               {"OneRow", Noise(40, 1, 4095, 4)},
                                                               {"OneColumn", Noise(1, 40, 4095, 5)}};
    std::vector<StepsCase> cases;
    int32_t number = 0;
    for (const auto& [name, frame] : frames) {
        SensorGeometry upright{};
        upright.FrameWidth = frame.width;
        upright.FrameHeight = frame.height;
        upright.RCCutOff = 9;
        upright.RCCutOffR = 12;
        SensorGeometry turned = upright;
        std::swap(turned.FrameWidth, turned.FrameHeight);
        turned.Rotation = 1;
        SensorGeometry unknown = upright;
        unknown.Rotation = -10;
        SensorGeometry tooLarge = upright;
        tooLarge.RCCutOff = 1000;
        const std::pair<const char*, SensorGeometry> geometries[] = {
            {"Upright", upright}, {"Turned", turned}, {"Unknown", unknown}, {"TooLarge", tooLarge}};
        for (const auto& [corners, geometry] : geometries)
            for (const int32_t saturation : {4095, 900, 0, std::numeric_limits<int32_t>::min(), 70000}) {
                const int32_t inversion = number % 3;
                const int32_t bits = number % 5 == 4 ? 18 : 12;
                const int32_t target = number % 4 < 2 ? 3000 : 0;
                cases.push_back({name + corners + std::to_string(number), frame, bits, saturation, geometry,
                                 target, inversion});
                ++number;
            }
    }
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Frames, TonedStepsTest, testing::ValuesIn(MakeCases()),
                         [](const auto& test) { return test.param.name; });

TEST(TonedSteps, CountedFramesKeepTheirPixelsUntilTheyAreAskedFor) {
    const StepsCase c{"", MadeRadiograph(120, 90), 12, 4000, {}, 3000, 1};
    SensorGeometry geometry{};
    geometry.FrameWidth = 120;
    geometry.FrameHeight = 90;
    geometry.RCCutOff = 9;
    Frame frame = c.frame;
    TonedFrame toned = Toned(frame);
    toned.Histogram(1);
    Frame output(120, 90);
    TonedFrame copy(toned, {output.Data(), 120, 90});
    RowMask mask(120, 90);
    TakeSteps(copy, mask, {"", c.frame, 12, 4000, geometry, 3000, 1});
    EXPECT_THAT(frame, EqualsFrame(c.frame));
    EXPECT_THAT(output, EqualsFrame(Flat(120, 90, 0)));
}

// A host that shows the message may look at the frame, as it is before the corners are filled.
TEST(TonedSteps, PixelsAreThereBeforeAMessageIsShown) {
    const ShownMessages messages;
    SensorGeometry geometry{};
    geometry.FrameWidth = 4;
    geometry.FrameHeight = 3;
    geometry.RCCutOff = 1000;
    Frame frame = Flat(4, 3, 5);
    TonedFrame toned = Toned(frame);
    toned.Map(std::vector<uint16_t>{9});
    RowMask mask(4, 3);
    BuildTonedMask(toned, mask, geometry);
    EXPECT_EQ(messages.Count(), 1U);
    EXPECT_THAT(frame, EqualsFrame(Flat(4, 3, 9)));
}

}  // namespace
}  // namespace vastrelline
