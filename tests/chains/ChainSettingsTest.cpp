// SPDX-License-Identifier: Apache-2.0

// The whole chain on a made frame, one test per setting of the chain: the result is that of a plain model,
// and its hash pins both.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/PlainConfiguredChain.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// Four sensors whose frame is cut to 131 by 97 pixels, with corners in all four places.
constexpr const char* kNoSensor = "";
constexpr const char* kBottom =
    "[Settings]\r\nRotation=0\r\nFlip=0\r\nRCCutOff=20\r\nRCCutOffR=30\r\nFrameWidth=135\r\nFrameHeight="
    "101\r\n"
    "ImgCutLeft=1\r\nImgCutTop=3\r\nImgCutRight=3\r\nImgCutBottom=1\r\n";
constexpr const char* kTop =
    "[Settings]\r\nRotation=0\r\nFlip=2\r\nRCCutOff=20\r\nRCCutOffR=30\r\nFrameWidth=135\r\nFrameHeight="
    "101\r\n"
    "ImgCutLeft=1\r\nImgCutTop=3\r\nImgCutRight=3\r\nImgCutBottom=1\r\n";
constexpr const char* kLeft =
    "[Settings]\r\nRotation=1\r\nFlip=1\r\nRCCutOff=20\r\nRCCutOffR=30\r\nFrameWidth=101\r\nFrameHeight="
    "135\r\n"
    "ImgCutLeft=1\r\nImgCutTop=3\r\nImgCutRight=3\r\nImgCutBottom=1\r\n";
constexpr const char* kRight =
    "[Settings]\r\nRotation=1\r\nFlip=0\r\nRCCutOff=20\r\nRCCutOffR=30\r\nFrameWidth=101\r\nFrameHeight="
    "135\r\n"
    "ImgCutLeft=1\r\nImgCutTop=3\r\nImgCutRight=3\r\nImgCutBottom=1\r\n";

// The level of the pixel that `count` brighter or equally bright ones come before.
int32_t LevelBelow(Pixels pixels, size_t count) {
    std::sort(pixels.begin(), pixels.end(), std::greater<>());
    return pixels.at(count);
}

struct SettingCase {
    const char* name;
    const char* sensor;    // the sensor's own profile
    const char* settings;  // lines of the section "Settings"
    const char* lines;     // lines of the call's section
    uint8_t applyMapping;
    uint64_t hash;
    PlainSettings plain{};  // the same settings for the plain model
};

class ChainSettingsTest : public testing::TestWithParam<SettingCase> {};

TEST_P(ChainSettingsTest, ResultIsThatOfThePlainModelAndHasItsHash) {
    const ProfileFolder folder;
    folder.Sensor().WritePlain(GetParam().sensor);
    WriteBytes(folder.At("profile.ini"), std::string("[Settings]\r\n") + GetParam().settings +
                                             "[General]\r\nPROCMODE=2\r\n" + GetParam().lines);
    Frame input = MadeFrame();
    Frame output(input.width, input.height);
    ASSERT_EQ(ImageProcessing(input.Data(), output.Data(), input.width, input.height,
                              folder.Profile().c_str(), "General", GetParam().applyMapping, 0),
              VASTRELLINE_OK);
    EXPECT_THAT(output, EqualsFrame(PlainCall(MadeFrame(), GetParam().plain)));
    if (!kHasUsualFunctions) return;
    EXPECT_EQ(HashOf(output), GetParam().hash);
}

INSTANTIATE_TEST_SUITE_P(
    Chains, ChainSettingsTest,
    testing::Values(
        SettingCase{"Defaults", kBottom, "", "", 0, 4591993995176232781U},
        SettingCase{
            "MaskOff", kBottom, "", "INTRAORAL_MASK=0\r\n", 0, 14448866613157931725U, {.isMasked = false}},
        SettingCase{
            "NoInversion", kBottom, "", "INVERSE_INTENSITY=0\r\n", 0, 9528910908075861743U, {.inversion = 0}},
        SettingCase{
            "LogInversion", kBottom, "", "INVERSE_INTENSITY=2\r\n", 0, 507616840970381963U, {.inversion = 2}},
        SettingCase{"PowerInversion",
                    kBottom,
                    "",
                    "INVERSE_INTENSITY=3\r\nINVERSE_LOGRATIO=-1.5\r\n",
                    0,
                    18421012513499400033U,
                    {.inversion = 3, .inversionRatio = -1.5}},
        SettingCase{"UnknownInversion",
                    kBottom,
                    "",
                    "INVERSE_INTENSITY=4\r\n",
                    0,
                    9242039388339780463U,
                    {.inversion = 4}},
        SettingCase{"TenBits", kBottom, "", "BITSTORED=10\r\n", 0, 1510492542111954457U, {.bits = 10}},
        SettingCase{"SixteenBits",
                    kBottom,
                    "",
                    "BITSTORED=16\r\nOUTPUTRANGE=60000\r\nFunctionCount=1\r\n00_Function_Number=10\r\n"
                    "00_POST_GAMMA_RATIO=1\r\n",
                    0,
                    12328085954570521312U,
                    {.bits = 16, .stages = {[](const Pixels& p) { return PlainGamma(p, 60000, 1); }}}},
        SettingCase{"SeventeenBits",
                    kBottom,
                    "",
                    "BITSTORED=17\r\nSATURATION_VALUE=65000\r\n",
                    0,
                    2144112844386019785U,
                    {.bits = 17, .saturation = 65000}},
        SettingCase{"TargetRange",
                    kBottom,
                    "TargetRange=3000\r\nMinimumValue=20\r\nMaxCut=0.001\r\nMinCut=0.01\r\n",
                    "SATURATION_VALUE=900\r\n",
                    0,
                    1599357503726729415U,
                    {.saturation = 900, .target = {3000, 20, 0.001F, 0.01F}}},
        SettingCase{"LinearFromHistogram",
                    kBottom,
                    "",
                    "FunctionCount=1\r\n00_Function_Number=11\r\n00_POST_LINEAR_LIMITBIN=3\r\n",
                    0,
                    16910301379244890023U,
                    {.stages = {[](const Pixels& p) { return PlainLinear(p, 4095, 4095, 3); }}}},
        SettingCase{"LinearFullRange",
                    kBottom,
                    "",
                    "OUTPUTRANGE=1000\r\nFunctionCount=1\r\n00_Function_Number=11\r\n"
                    "00_POST_LINEAR_LIMITBIN=-1\r\n",
                    0,
                    1021322735377940201U,
                    {.stages = {[](const Pixels& p) { return PlainRamp(p, 0, 4095, 1000, 4095); }}}},
        SettingCase{
            "LinearFromCount",
            kBottom,
            "",
            "FunctionCount=1\r\n00_Function_Number=11\r\n00_POST_LINEAR_MODE=1\r\n"
            "00_POST_LINEAR_LIMITBIN=2000\r\n",
            0,
            7867493581407223697U,
            {.stages = {[](const Pixels& p) { return PlainRamp(p, 0, LevelBelow(p, 2000), 4095, 4095); }}}},
        SettingCase{"LinearWindow",
                    kBottom,
                    "",
                    "FunctionCount=1\r\n00_Function_Number=11\r\n00_POST_LINEAR_MODE=2\r\n"
                    "00_POST_LINEAR_BRIGHTOPT=-700\r\n",
                    0,
                    9395665884596390787U,
                    {.stages = {[](const Pixels& p) { return PlainWindow(p, 4095, 4095, -700); }}}},
        SettingCase{"GammaThenWindowAndMapping",
                    kBottom,
                    "",
                    "FunctionCount=2\r\n00_Function_Number=10\r\n00_POST_GAMMA_RATIO=1.7\r\n"
                    "01_Function_Number=11\r\n01_POST_LINEAR_MODE=2\r\n01_POST_LINEAR_BRIGHTOPT=501\r\n",
                    1,
                    3746928220293299081U,
                    {.stages = {[](const Pixels& p) { return PlainGamma(p, 4095, 1.7); },
                                [](const Pixels& p) { return PlainWindow(p, 4095, 4095, 501); }},
                     .isMapped = true}},
        SettingCase{"CornersAtTheTop", kTop, "", "", 0, 12483870411918906396U, {.corners = CornerSide::Top}},
        SettingCase{
            "CornersAtTheLeft", kLeft, "", "", 0, 14449414613231156274U, {.corners = CornerSide::Left}},
        SettingCase{
            "CornersAtTheRight", kRight, "", "", 0, 3667067177289463208U, {.corners = CornerSide::Right}},
        SettingCase{
            "NoSensorProfile", kNoSensor, "", "", 0, 18003403240153280391U, {.corners = CornerSide::None}}),
    [](const auto& test) { return std::string(test.param.name); });

// The corners do not count for the clip of a second call, which has the sensor's outline.
TEST(ChainSettings, SecondCallHasTheSensorsOutlineFromTheStart) {
    const ProfileFolder folder;
    folder.Sensor().WritePlain(kBottom);
    WriteBytes(folder.At("profile.ini"), "[General]\r\nPROCMODE=2\r\n");
    Frame output(131, 97);
    for (int call = 0; call < 2; ++call) {
        Frame input = MadeFrame();
        ASSERT_EQ(ImageProcessing(input.Data(), output.Data(), input.width, input.height,
                                  folder.Profile().c_str(), "General", 0, 0),
                  VASTRELLINE_OK);
    }
    EXPECT_THAT(output, EqualsFrame(PlainCall(MadeFrame(), {.isOutlineKnown = true})));
    if (!kHasUsualFunctions) return;
    EXPECT_EQ(HashOf(output), 13787396351553497435U);
}

}  // namespace
}  // namespace vastrelline
