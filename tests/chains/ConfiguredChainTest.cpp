// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "chains/ConfiguredChain.h"
#include "config/CallProfile.h"
#include "config/ConfiguredState.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MappedByLevel.h"
#include "support/ProfileFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ConfiguredChainTest : public testing::Test {
protected:
    void WriteProfile(ProfileWriter writer) const { writer.WriteTo(folder_.At("profile.ini")); }

    // Runs section "General" on a frame and returns the output, which began as all 7.
    Frame Run(const Frame& input, ReturnCode expectedCode = kSuccess,
              const std::wstring& section = L"General") const {
        const CallProfile profile(folder_.WideProfile());
        Frame output = Flat(input.width, input.height, 7);
        EXPECT_EQ(RunConfiguredChain({input.Data(), output.Data(), input.width, input.height,
                                      folder_.WideProfile(), section},
                                     nullptr),
                  expectedCode);
        return output;
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

TEST_F(ConfiguredChainTest, ListWithoutAStageGivesTheFrame) {
    const Frame frame = FromRows({{0, 1, 4095}, {4096, 65535, 300}});
    WriteProfile(ProfileFolder::PlainSection());
    EXPECT_THAT(Run(frame), EqualsFrame(frame));
    for (const char* count : {"0", "-1", "-2147483648", "none"}) {
        // A stage that stands in the section is not in the list as long as the list has no length.
        WriteProfile(ProfileFolder::PlainSection().Key("FunctionCount", count).Stage("10"));
        EXPECT_THAT(Run(frame), EqualsFrame(frame)) << count;
    }
}

struct SaturationCase {
    const char* name;
    const char* saturationValue;
    std::vector<uint16_t> capped;  // from {10, 4094, 4095, 5000}
};

class SaturationTest : public ConfiguredChainTest, public testing::WithParamInterface<SaturationCase> {};

TEST_P(SaturationTest, SaturatedPixelsTakeTheBrightestUnsaturatedLevel) {
    ProfileWriter writer;
    writer.Section("General").Key("INTRAORAL_MASK", "0").Key("INVERSE_INTENSITY", "0");
    writer.Key("SATURATION_VALUE", GetParam().saturationValue);
    WriteProfile(writer);
    EXPECT_THAT(Run(FromRows({{10, 4094, 4095, 5000}})), EqualsFrame(Frame(4, 1, GetParam().capped)));
}

INSTANTIATE_TEST_SUITE_P(Values, SaturationTest,
                         testing::Values(SaturationCase{"AtTheTop", "4095", {10, 4094, 4094, 4094}},
                                         SaturationCase{"JustAbove", "4096", {10, 4094, 4095, 4095}},
                                         SaturationCase{"InTheMiddle", "2000", {10, 10, 10, 10}},
                                         SaturationCase{"AtThePixelItself", "10", {0, 0, 0, 0}},
                                         SaturationCase{"ZeroMakesAllBlack", "0", {0, 0, 0, 0}},
                                         SaturationCase{"NegativeMakesAllBlack", "-1", {0, 0, 0, 0}},
                                         SaturationCase{"SmallestMakesAllBlack", "-2147483648", {0, 0, 0, 0}},
                                         SaturationCase{
                                             "BeyondEveryPixel", "2147483647", {10, 4094, 4095, 5000}}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(ConfiguredChainTest, SaturationIsAt4095WithoutItsKey) {
    WriteProfile(ProfileWriter().Section("General").Key("INTRAORAL_MASK", "0").Key("INVERSE_INTENSITY", "0"));
    EXPECT_THAT(Run(FromRows({{4095, 4000, 20}})), EqualsFrame(FromRows({{4000, 4000, 20}})));
}

// The numbers of an empty section are all 0, the saturation value among them.
TEST_F(ConfiguredChainTest, EmptySectionGivesABlackFrameAndNoFile) {
    WriteProfile(ProfileWriter().Section("General").Section("Other").Key("SAVE_LOG", "1"));
    EXPECT_THAT(Run(FromRows({{1, 200, 4095}})), EqualsFrame(FromRows({{0, 0, 0}})));
    EXPECT_THAT(Run(FromRows({{1, 200, 4095}}), kSuccess, L"Missing"), EqualsFrame(FromRows({{0, 0, 0}})));
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

// By hand, over 0..100: the square of 25, 50, 75 is 6.25, 25, 56.25; then 100 - 100 * sqrt(1 - x) of .06, .25
// and .56 is 3.05, 13.40, 33.67.
TEST_F(ConfiguredChainTest, StageThatStandsTwiceRunsTwiceWithItsOwnKeys) {
    WriteProfile(ProfileFolder::PlainSection()
                     .Key("OUTPUTRANGE", "100")
                     .Stage("10", {{"POST_GAMMA_RATIO", "2"}})
                     .Stage("10", {{"POST_GAMMA_RATIO", "-2"}}));
    EXPECT_THAT(Run(FromRows({{0, 25, 50, 75, 100}})), EqualsFrame(FromRows({{0, 3, 13, 33, 100}})));
}

// By hand: 100 - 100 * sqrt(1 - x) of .25, .5, .75 is 13.40, 29.29, 50; then the squares of .13, .29 and .5
// are 1.69, 8.41 and 25 hundredths.
TEST_F(ConfiguredChainTest, StagesRunInTheOrderOfTheirPositions) {
    WriteProfile(ProfileFolder::PlainSection()
                     .Key("OUTPUTRANGE", "100")
                     .Key("FunctionCount", "2")
                     .Key("01_Function_Number", "10")
                     .Key("01_POST_GAMMA_RATIO", "2")
                     .Key("00_Function_Number", "10")
                     .Key("00_POST_GAMMA_RATIO", "-2"));
    EXPECT_THAT(Run(FromRows({{0, 25, 50, 75, 100}})), EqualsFrame(FromRows({{0, 1, 8, 25, 100}})));
}

TEST_F(ConfiguredChainTest, UnknownNumbersArePassedOver) {
    WriteProfile(ProfileFolder::PlainSection()
                     .Key("OUTPUTRANGE", "100")
                     .Stage("0")
                     .Stage("13")
                     .Stage("99")
                     .Stage("-1")
                     .Stage("ten")
                     .Stage("10", {{"POST_GAMMA_RATIO", "2"}})
                     .Stage("2147483647"));
    EXPECT_THAT(Run(FromRows({{0, 25, 50, 75, 100}})), EqualsFrame(FromRows({{0, 6, 25, 56, 100}})));
}

TEST_F(ConfiguredChainTest, GapsInTheListArePassedOver) {
    WriteProfile(ProfileFolder::PlainSection()
                     .Key("OUTPUTRANGE", "100")
                     .Key("FunctionCount", "2147483647")
                     .Key("05_Function_Number", "10")
                     .Key("05_POST_GAMMA_RATIO", "2")
                     .Key("2147483646_Function_Number", "10")
                     .Key("2147483646_POST_GAMMA_RATIO", "-2"));
    EXPECT_THAT(Run(FromRows({{0, 25, 50, 75, 100}})), EqualsFrame(FromRows({{0, 3, 13, 33, 100}})));
}

TEST_F(ConfiguredChainTest, StagesFromTheCountOnDoNotRun) {
    WriteProfile(ProfileFolder::PlainSection()
                     .Key("OUTPUTRANGE", "100")
                     .Key("FunctionCount", "1")
                     .Stage("10", {{"POST_GAMMA_RATIO", "2"}})
                     .Stage("10", {{"POST_GAMMA_RATIO", "-2"}}));
    EXPECT_THAT(Run(FromRows({{0, 25, 50, 75, 100}})), EqualsFrame(FromRows({{0, 6, 25, 56, 100}})));
}

// The table ends at 15, so the pixel of 40 takes the entry of 15: trunc(15 / 40 * 100). 4095 is the top at
// 12 bits.
TEST_F(ConfiguredChainTest, SignificantBitsGiveTheTopOfTheTable) {
    const auto writeProfile = [&](const char* bits) {
        WriteProfile(ProfileWriter()
                         .Section("General")
                         .Key("INTRAORAL_MASK", "0")
                         .Key("INVERSE_INTENSITY", "0")
                         .Key("BITSTORED", bits)
                         .Key("SATURATION_VALUE", "65536")
                         .Key("OUTPUTRANGE", "100")
                         .Stage("10", {{"POST_GAMMA_RATIO", "1"}}));
    };
    writeProfile("4");
    EXPECT_THAT(Run(FromRows({{0, 5, 10, 40}})), EqualsFrame(FromRows({{0, 12, 25, 37}})));
    writeProfile("12");
    EXPECT_THAT(Run(FromRows({{0, 2048, 4095, 5000}})), EqualsFrame(FromRows({{0, 40, 81, 81}})));
    writeProfile("16");
    EXPECT_THAT(Run(FromRows({{0, 2048, 4095, 5000}})), EqualsFrame(FromRows({{0, 40, 81, 100}})));
}

TEST_F(ConfiguredChainTest, WithoutMaskTheFirstTwoPixelsAreNoMarkers) {
    WriteProfile(ProfileFolder::PlainSection());
    EXPECT_THAT(Run(FromRows({{1, 2}, {3, 4}})), EqualsFrame(FromRows({{1, 2}, {3, 4}})));
}

// All that runs here maps levels, so the result is a curve whatever the numbers. Levels lie over all 16 bits,
// few enough that each comes several times.
TEST_F(ConfiguredChainTest, HostileNumbersStillMakeACurve) {
    constexpr int32_t kLevels = 16;
    Frame frame = Noise(9, 7, kLevels - 1, 20240501);
    for (uint16_t& pixel : frame.pixels) pixel = static_cast<uint16_t>(pixel * (65535 / (kLevels - 1)));
    for (const char* key : {"BITSTORED", "OUTPUTRANGE", "SATURATION_VALUE", "FunctionCount"}) {
        for (const char* value : {"-2147483648", "-5", "-1", "0", "1", "17", "31", "32", "40", "2147483647",
                                  "99999999999999999999", "x"}) {
            for (const char* ratio : {"-1e308", "-0.5", "0", "0.5", "1", "1e308", "nan", "inf", "-inf"}) {
                SCOPED_TRACE(testing::Message() << key << '=' << value << ", ratio " << ratio);
                ProfileWriter writer = ProfileFolder::SettledProfile();
                writer.Section("General").Key(key, value).Key("INTRAORAL_MASK", "0");
                writer.Key("FunctionCount", "2147483647").Stage("10", {{"POST_GAMMA_RATIO", ratio}});
                WriteProfile(writer);
                ExpectMappedByLevel(frame, Run(frame));
            }
        }
    }
}

TEST_F(ConfiguredChainTest, FirstArgumentTestThatFailsGivesTheCodeAndNothingIsWritten) {
    ProfileWriter writer;
    writer.Section("General").Key("SAVE_LOG", "1").Key("SAVE_IMAGE", "1");
    WriteProfile(writer.Key("WRITE_PATH", Folder().Narrow("")));
    const std::string bytes = ReadBytes(Folder().At("profile.ini"));
    const Frame input = FromRows({{5}});
    Frame output = FromRows({{7}});
    const std::wstring profile = Folder().WideProfile();
    EXPECT_EQ(RunConfiguredChain({nullptr, nullptr, 1, 1, profile + L"x", L""}, nullptr), kNoProfile);
    EXPECT_EQ(RunConfiguredChain({nullptr, nullptr, 1, 1, profile, L""}, nullptr), kNoInput);
    EXPECT_EQ(RunConfiguredChain({input.Data(), nullptr, 1, 1, profile, L""}, nullptr), kNoOutput);
    EXPECT_EQ(RunConfiguredChain({input.Data(), output.Data(), 1, 1, profile, L""}, nullptr), kNoSection);
    EXPECT_THAT(output, EqualsFrame(FromRows({{7}})));
    EXPECT_THAT(Folder().Files(), IsEmpty());
    // Nor do the sensor's values reach the profile.
    EXPECT_EQ(ReadBytes(Folder().At("profile.ini")), bytes);
}

TEST_F(ConfiguredChainTest, FrameWithoutPixelsIsNoWork) {
    ProfileWriter writer;
    writer.Section("General").Key("SAVE_LOG", "1").Key("SAVE_IMAGE", "1");
    WriteProfile(writer.Key("WRITE_PATH", Folder().Narrow("")));
    const std::string bytes = ReadBytes(Folder().At("profile.ini"));
    const Frame input = FromRows({{5}});
    const int32_t sizes[][2] = {{0, 1},
                                {1, 0},
                                {0, 0},
                                {-1, 1},
                                {1, -1},
                                {-1, -1},
                                {INT32_MIN, INT32_MIN},
                                {INT32_MIN, INT32_MAX},
                                {0, INT32_MAX}};
    for (const auto& [width, height] : sizes) {
        SCOPED_TRACE(testing::Message() << width << " x " << height);
        Frame output = FromRows({{7}});
        EXPECT_EQ(
            RunConfiguredChain(
                {input.Data(), output.Data(), width, height, Folder().WideProfile(), L"General"}, nullptr),
            kSuccess);
        EXPECT_THAT(output, EqualsFrame(FromRows({{7}})));
    }
    EXPECT_THAT(Folder().Files(), IsEmpty());
    EXPECT_EQ(ReadBytes(Folder().At("profile.ini")), bytes);
}

TEST_F(ConfiguredChainTest, StateHoldsTheRunsPathsAndSwitches) {
    WriteProfile(ProfileFolder::PlainSection()
                     .Key("SAVE_LOG", "0")
                     .Key("SAVE_IMAGE", "0")
                     .Key("WRITE_PATH", "left\\here\\"));
    const int32_t number = SharedConfiguredState().DumpNumber;
    Run(FromRows({{5}}));
    const ConfiguredState& state = SharedConfiguredState();
    EXPECT_EQ(state.IniPath, Folder().WideProfile());
    EXPECT_EQ(state.SectionName, L"General");
    EXPECT_EQ(state.LogPath, Folder().At("").parent_path().wstring() + L"\\ExtraOralLog.txt");
    EXPECT_EQ(state.WritePath, L"left\\here\\");
    EXPECT_EQ(state.SaveLog, 0);
    EXPECT_EQ(state.SaveImage, 0);
    EXPECT_EQ(state.DumpNumber, number);
}

TEST_F(ConfiguredChainTest, EditOfTheProfileTakesEffectOnTheNextFrame) {
    WriteProfile(ProfileFolder::PlainSection().Key("OUTPUTRANGE", "100"));
    EXPECT_THAT(Run(FromRows({{0, 50, 100}})), EqualsFrame(FromRows({{0, 50, 100}})));
    WriteProfile(
        ProfileFolder::PlainSection().Key("OUTPUTRANGE", "100").Stage("10", {{"POST_GAMMA_RATIO", "2"}}));
    EXPECT_THAT(Run(FromRows({{0, 50, 100}})), EqualsFrame(FromRows({{0, 25, 100}})));
}

}  // namespace
}  // namespace vastrelline
