// SPDX-License-Identifier: Apache-2.0

// The steps of the configured chain around its stages, and their order.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "chains/ConfiguredChain.h"
#include "config/CallProfile.h"
#include "config/SensorSettings.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"
#include "support/ProfileFolder.h"

namespace vastrelline {
namespace {

using testing::UnorderedElementsAre;

// A sensor of 8 by 6 pixels whose corners are chamfers of 2: three rows in the outermost column, two in the
// next, one in the third.
constexpr const char* kSmallSensor =
    "[Settings]\r\nFrameWidth=8\r\nFrameHeight=6\r\nRCCutOff=2\r\nRCCutOffR=0\r\n";

class ChainStepsTest : public testing::Test {
protected:
    void WriteProfile(const std::string& text) const { WriteBytes(folder_.At("profile.ini"), text); }

    Frame Run(const Frame& input, const std::wstring& section = L"General",
              const SensorGeometry* geometry = nullptr) const {
        const CallProfile profile(folder_.WideProfile());
        Frame output = Flat(input.width, input.height, 7);
        EXPECT_EQ(RunConfiguredChain({input.Data(), output.Data(), input.width, input.height,
                                      folder_.WideProfile(), section},
                                     geometry),
                  kSuccess);
        return output;
    }
    std::string Dump(const std::string& name) const { return ReadBytes(folder_.At(name)); }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

// Dark pixels count as corners here. Outward from the middle, those on the left mirror 300 and 400; the last
// column of an even width is visited twice and ends with 400.
constexpr const char* kMasked = "[General]\r\nPROCMODE=2\r\n";
const Frame kDarkEnds = FromRows({{0, 0, 300, 400, 500, 0}});

TEST_F(ChainStepsTest, CornersAreFilledForTheStagesAndDarkAfterwards) {
    WriteProfile(kMasked);
    EXPECT_THAT(Run(kDarkEnds), EqualsFrame(FromRows({{4095, 4095, 3795, 3695, 3595, 0}})));
}

TEST_F(ChainStepsTest, CornersOfAFrameThatIsNotInvertedAreAsBrightAsItsBrightestPixel) {
    WriteProfile(std::string(kMasked) + "INVERSE_INTENSITY=0\r\n");
    EXPECT_THAT(Run(kDarkEnds), EqualsFrame(FromRows({{4095, 4095, 300, 400, 500, 500}})));
}

TEST_F(ChainStepsTest, UnknownInversionLeavesThePixelsButCountsAsInverted) {
    WriteProfile(std::string(kMasked) + "INVERSE_INTENSITY=-1\r\n");
    EXPECT_THAT(Run(kDarkEnds), EqualsFrame(FromRows({{4095, 4095, 300, 400, 500, 0}})));
}

TEST_F(ChainStepsTest, MaskOfZeroNeitherFillsNorRestores) {
    WriteProfile(std::string(kMasked) + "INTRAORAL_MASK=0\r\n");
    EXPECT_THAT(Run(kDarkEnds), EqualsFrame(FromRows({{4095, 4095, 3795, 3695, 3595, 4095}})));
}

TEST_F(ChainStepsTest, AnyOtherMaskSwitchIsOn) {
    WriteProfile(std::string(kMasked) + "INTRAORAL_MASK=-2\r\n");
    EXPECT_THAT(Run(kDarkEnds), EqualsFrame(FromRows({{4095, 4095, 3795, 3695, 3595, 0}})));
}

TEST_F(ChainStepsTest, DumpsShowEveryStepInItsOrder) {
    WriteProfile(std::string(kMasked) + "SAVE_IMAGE=1\r\nSAVE_LOG=1\r\nWRITE_PATH=" + Folder().Narrow("") +
                 "\r\nFunctionCount=1\r\n00_Function_Number=11\r\n00_POST_LINEAR_LIMITBIN=-1\r\n");
    const std::string original = ComingDump(0, "originalimage.raw");
    const std::string inverted = ComingDump(1, "originalimage_invert.raw");
    // The linear stage dumps nothing: its curve carries the number of the next dump.
    const std::string curve = ComingDump(2, "LinearCurve.txt");
    const std::string result = ComingDump(2, "result.raw");
    Run(kDarkEnds);
    EXPECT_THAT(Folder().Files(),
                UnorderedElementsAre(original, inverted, curve, result, "ExtraOralLog.txt"));
    EXPECT_EQ(Dump(original), RawBytes({0, 0, 300, 400, 500, 0}));
    EXPECT_EQ(Dump(inverted), RawBytes({3695, 3795, 3795, 3695, 3595, 3695}));
    EXPECT_EQ(Dump(result), RawBytes({4095, 4095, 3795, 3695, 3595, 0}));
    // The inversion is not in the log.
    EXPECT_THAT(MaskTimes(Folder().Log()),
                testing::EndsWith("\t\t\t Section Name [General]\r\n"
                                  "#### hh:mm:ss \t: Linear Curve ( S.SSS sec )\r\n"
                                  "\t\t\t Mode        : 0\r\n"
                                  "\t\t\t LimitBin    : -1\r\n"
                                  "\t\t\t BrightOpt   : 0\r\n"
                                  "#### hh:mm:ss \t: End Post-Processing ( S.SSS sec )\r\n"
                                  "============================================================"
                                  "=============================\r\n"));
}

TEST_F(ChainStepsTest, CurveOfTheInversionHasTheNumberOfItsDump) {
    WriteProfile(std::string(kMasked) +
                 "INTRAORAL_MASK=0\r\nINVERSE_INTENSITY=2\r\nINVERSE_LOGRATIO=0.5\r\n" +
                 "SAVE_IMAGE=1\r\nWRITE_PATH=" + Folder().Narrow("") + "\r\n");
    const std::string original = ComingDump(0, "originalimage.raw");
    const std::string curve = ComingDump(1, "LogCurve.txt");
    const std::string inverted = ComingDump(1, "originalimage_invert.raw");
    const std::string result = ComingDump(2, "result.raw");
    // 5 * log((i + 2) / 2) / log(7 / 2) of 0, 2, 4 is 0, 2.77, 4.38.
    EXPECT_THAT(Run(FromRows({{10, 12, 14}})), EqualsFrame(FromRows({{15, 12, 10}})));
    EXPECT_THAT(Folder().Files(), UnorderedElementsAre(original, curve, inverted, result));
}

// By hand: the low cut is 100. The tail is 382 to 400, its isodata threshold 391, so the estimated range is
// 291 and the scale 2000 * 300 / 291 = 2061. A pixel becomes pixel / 400 * 2061.
TEST_F(ChainStepsTest, TargetRangeOfSettingsActsBeforeTheInversion) {
    const std::string target = "[Settings]\r\nTargetRange=2000\r\n";
    const Frame frame = FromRows({{100, 200, 300, 400}});
    WriteProfile(target + kMasked + "INVERSE_INTENSITY=0\r\n");
    EXPECT_THAT(Run(frame), EqualsFrame(FromRows({{515, 1030, 1545, 2061}})));
    WriteProfile(target + kMasked);
    EXPECT_THAT(Run(frame), EqualsFrame(FromRows({{3580, 3065, 2550, 2034}})));
    // In the section of the call it is no setting.
    WriteProfile(std::string(kMasked) + "INVERSE_INTENSITY=0\r\nTargetRange=2000\r\n");
    EXPECT_THAT(Run(frame), EqualsFrame(frame));
}

// The section "Settings" is missing until the sensor's values stand in it; read before that, it would make
// the frame black.
TEST_F(ChainStepsTest, SensorsValuesArriveBeforeTheSettingsAreRead) {
    WriteProfile("");
    EXPECT_THAT(Run(FromRows({{5, 10}}), L"Settings"), EqualsFrame(FromRows({{4090, 4085}})));
}

TEST_F(ChainStepsTest, SensorsOutlineActsInTheSameRun) {
    Folder().Sensor().WritePlain(kSmallSensor);
    WriteProfile(kMasked);
    constexpr uint16_t k = 3095;
    EXPECT_THAT(Run(Flat(8, 6, 1000)), EqualsFrame(FromRows({{k, k, k, k, k, k, k, k},
                                                             {k, k, k, k, k, k, k, k},
                                                             {k, k, k, k, k, k, k, k},
                                                             {0, k, k, k, k, k, k, 0},
                                                             {0, 0, k, k, k, k, 0, 0},
                                                             {0, 0, 0, k, k, 0, 0, 0}})));
}

TEST_F(ChainStepsTest, CallersGeometryReplacesTheProfiles) {
    Folder().Sensor().WritePlain(kSmallSensor);
    WriteProfile(kMasked);
    // Upside down: the first two pixels are masked, and become the markers.
    const SensorGeometry upsideDown = {0, 2, 2, 0, 8, 6, 0, 0, 0, 0};
    constexpr uint16_t k = 3095;
    EXPECT_THAT(Run(Flat(8, 6, 1000), L"General", &upsideDown),
                EqualsFrame(FromRows({{4095, 4095, 0, k, k, 0, 0, 0},
                                      {0, 0, k, k, k, k, 0, 0},
                                      {0, k, k, k, k, k, k, 0},
                                      {k, k, k, k, k, k, k, k},
                                      {k, k, k, k, k, k, k, k},
                                      {k, k, k, k, k, k, k, k}})));
    // One that does not fit marks dark pixels, and there are none.
    const SensorGeometry tooWide = {0, 2, 2, 0, 9, 6, 0, 0, 0, 0};
    EXPECT_THAT(Run(Flat(8, 6, 1000), L"General", &tooWide), EqualsFrame(Flat(8, 6, k)));
}

// Nothing stands out of so few pixels, so 131071 becomes 65535: 1000 becomes 499.996, 65535 32767.25.
TEST_F(ChainStepsTest, FrameOfMoreThan16BitsComesDownTo16) {
    const std::string wide =
        "[General]\r\nBITSTORED=17\r\nSATURATION_VALUE=65536\r\nOUTPUTRANGE=65535\r\nINTRAORAL_MASK=0\r\n";
    WriteProfile(wide + "INVERSE_INTENSITY=0\r\n");
    EXPECT_THAT(Run(FromRows({{0, 1000, 65535}})), EqualsFrame(FromRows({{0, 499, 32767}})));
    WriteProfile(wide);
    EXPECT_THAT(Run(FromRows({{0, 1000, 65535}})), EqualsFrame(FromRows({{65535, 65036, 32768}})));
}

// The rescale comes before the cap: 40000 is 19999 then, and 20000 of the profile keeps it.
TEST_F(ChainStepsTest, RescaleComesBeforeTheCap) {
    WriteProfile(
        "[General]\r\nBITSTORED=17\r\nSATURATION_VALUE=20000\r\nINTRAORAL_MASK=0\r\nINVERSE_INTENSITY=0\r\n");
    EXPECT_THAT(Run(FromRows({{1000, 40000, 65535}})), EqualsFrame(FromRows({{499, 19999, 19999}})));
}

TEST_F(ChainStepsTest, InputStaysUntouched) {
    Folder().Sensor().WritePlain(kSmallSensor);
    WriteProfile(kMasked);
    const Frame input = Ramp(8, 6, 100, 37, 211);
    const Frame before = input;
    Run(input);
    EXPECT_THAT(input, EqualsFrame(before));
}

}  // namespace
}  // namespace vastrelline
