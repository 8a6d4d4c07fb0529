// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include "commands/PhantomMaking.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

const double kNotANumber = std::numeric_limits<double>::quiet_NaN();

PhantomOptions OptionsOf(const char* kind) {
    PhantomOptions options;
    options.kind = kind;
    options.size = "64x64";
    return options;
}

struct WrongNumber {
    const char* name;
    const char* kind;
    std::function<void(PhantomOptions&)> set;
    const char* words;
};

class WrongNumberTest : public testing::TestWithParam<WrongNumber> {};

TEST_P(WrongNumberTest, IsToldInWords) {
    PhantomOptions options = OptionsOf(GetParam().kind);
    GetParam().set(options);
    try {
        MakePhantom(options);
        FAIL() << "nothing was thrown";
    } catch (const ToolError& error) {
        EXPECT_EQ(error.Code(), ExitCode::WrongUse);
        EXPECT_THAT(error.what(), HasSubstr(GetParam().words));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, WrongNumberTest,
    testing::Values(
        WrongNumber{"FewBits", "wedge", [](auto& o) { o.bits = 7; }, "--bits should be 8 to 16"},
        WrongNumber{"ManyBits", "edge", [](auto& o) { o.bits = 17; }, "--bits should be 8 to 16"},
        WrongNumber{"LowAboveHigh", "edge", [](auto& o) { o.low = 3600.0; }, "--low should be below --high"},
        WrongNumber{"LowOfNoNumber", "edge", [](auto& o) { o.low = kNotANumber; },
                    "--low should be 0 to 4095"},
        WrongNumber{"HighAboveTop", "lines", [](auto& o) { o.high = 4096.0; }, "--high should be 0 to 4095"},
        WrongNumber{"NegativeNoise", "lines", [](auto& o) { o.noise = {-1.0}; }, "--noise should be 0 to"},
        WrongNumber{"NoiseBeyondZero", "wedge", [](auto& o) { o.noise = {90.0}; },
                    "would be cut at 0 or 4095"},
        WrongNumber{"NoiseBeyondTheTop", "edge", [](auto& o) { o.high = 4090.0; },
                    "would be cut at 0 or 4095"},
        WrongNumber{"TwoNoisesOfAnEdge", "edge",
                    [](auto& o) {
                        o.noise = {1.0, 2.0};
                    },
                    "takes one number"},
        WrongNumber{"NoiseOfTooFewSteps", "wedge",
                    [](auto& o) {
                        o.noise = {1.0, 2.0};
                        o.steps = 3;
                    },
                    "one for each of 3 steps"},
        WrongNumber{"OneStep", "wedge", [](auto& o) { o.steps = 1; }, "--steps should be 2 to 64"},
        WrongNumber{"NarrowWedge", "wedge", [](auto& o) { o.size = "1x64"; }, "--steps should be 2 to 2"},
        WrongNumber{"SteepAngle", "edge", [](auto& o) { o.angle = 46.0; }, "--angle should be -45 to 45"},
        WrongNumber{"BlurOfNoNumber", "edge", [](auto& o) { o.blur = kNotANumber; },
                    "--blur should be 0 to 50"},
        WrongNumber{"NoPitch", "edge", [](auto& o) { o.pitch = 0.0; }, "--pitch should be 0.0001 to 10"},
        WrongNumber{"TooFine", "lines", [](auto& o) { o.frequencies = {0.5}; },
                    "below half a cycle per pixel"},
        WrongNumber{"TooFineForThePitch", "lines",
                    [](auto& o) {
                        o.frequencies = {5.0, 25.0};
                        o.pitch = 0.02;
                    },
                    "below half a cycle per pixel"},
        WrongNumber{"FewRows", "lines", [](auto& o) { o.size = "64x47"; }, "need at least 48 rows"}),
    [](const auto& test) { return test.param.name; });

TEST(PhantomMaking, DefaultsFollowTheBits) {
    PhantomOptions options = OptionsOf("edge");
    const MadePhantom usual = MakePhantom(options);
    EXPECT_EQ(usual.topLevel, 4095);
    EXPECT_EQ(usual.truth["low"], 512.0);
    EXPECT_EQ(usual.truth["high"], 3584.0);
    EXPECT_EQ(usual.truth["noise"], 8.0);
    options.bits = 8;
    const MadePhantom small = MakePhantom(options);
    EXPECT_EQ(small.topLevel, 255);
    EXPECT_EQ(small.truth["low"], 32.0);
    EXPECT_EQ(small.truth["high"], 224.0);
    EXPECT_EQ(small.truth["noise"], 0.5);
}

TEST(PhantomMaking, ThePitchGivesNumbersPerMm) {
    PhantomOptions options = OptionsOf("lines");
    options.frequencies = {5.0};
    options.pitch = 0.02;
    const MadePhantom lines = MakePhantom(options);
    EXPECT_DOUBLE_EQ(lines.truth["groups"][0]["cyclesPerPixel"], 0.1);
    EXPECT_DOUBLE_EQ(lines.truth["groups"][0]["linePairsPerMm"], 5.0);
    PhantomOptions edge = OptionsOf("edge");
    EXPECT_TRUE(MakePhantom(edge).truth["mtf50PerMm"].is_null());
    edge.pitch = 0.02;
    const MadePhantom made = MakePhantom(edge);
    EXPECT_DOUBLE_EQ(made.truth["mtf50PerMm"], made.truth["mtf50"].get<double>() * 50.0);
}

// Half of exp(-2 pi^2 * 2^2 * f^2) is left at f = 0.187390 / 2 = 0.0937; the pixel takes another hundredth
// there.
TEST(PhantomMaking, TheEdgesTruthIsThatOfItsBlur) {
    PhantomOptions options = OptionsOf("edge");
    options.blur = 2.0;
    const MadePhantom made = MakePhantom(options);
    EXPECT_NEAR(made.truth["mtf50"], 0.0937, 0.0015);
    EXPECT_LT(made.truth["mtf50"], 0.09369);
    EXPECT_EQ(made.truth["mtf"][0]["modulation"], 1.0);
    EXPECT_EQ(made.truth["mtf"].size(), 21U);
}

TEST(PhantomMaking, AWedgeHasAsManyStepsAsNoises) {
    PhantomOptions options = OptionsOf("wedge");
    EXPECT_EQ(MakePhantom(options).truth["steps"].size(), 8U);
    options.noise = {1.0, 2.0, 3.0};
    EXPECT_EQ(MakePhantom(options).truth["steps"].size(), 3U);
}

}  // namespace
}  // namespace vastrelline
