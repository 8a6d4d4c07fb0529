// SPDX-License-Identifier: Apache-2.0

// Every key of a profile, changed alone: whether the picture must change.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/PngFrame.h"
#include "support/ProfileFolder.h"
#include "support/RealFrames.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

using Keys = std::vector<std::pair<std::string, std::string>>;

constexpr int32_t kWidth = 180;
constexpr int32_t kHeight = 150;

// Of a real radiograph, or, where none can be read, something of the kind.
const Frame& TestFrame() {
    static const Frame frame =
        kReadsPng ? ReadPieceOfBitewing(kWidth, kHeight) : MadeRadiograph(kWidth, kHeight);
    return frame;
}

// Rounded corners of 20 pixels, for the settings and for the caller.
constexpr SensorGeometry kGeometry = {0, 0, 20, 20, kWidth, kHeight, 0, 0, 0, 0};
constexpr const char* kGeometryKeys =
    "Rotation=0\r\nFlip=0\r\nRCCutOff=20\r\nRCCutOffR=20\r\nFrameWidth=180\r\nFrameHeight=150\r\n"
    "ImgCutLeft=0\r\nImgCutTop=0\r\nImgCutRight=0\r\nImgCutBottom=0\r\n";

// A key set to `value` in place of `base` (which an empty text leaves out) beside other keys.
struct KeyCase {
    std::string key;
    std::string base;
    std::string value;
    bool isVisible;
    Keys others = {};
};

void PrintTo(const KeyCase& c, std::ostream* out) { *out << c.key << ' ' << c.base << " -> " << c.value; }

std::string NameOf(const testing::TestParamInfo<KeyCase>& test) {
    std::string name = std::to_string(test.index) + "_" + test.param.key;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == ' ' || c == '.' || c == '-'; }, '_');
    return name;
}

// Runs `section` of a profile through an export that takes both chains and their sensor.
Frame RunSection(const Keys& settings, const Keys& section, const std::string& mode) {
    const ProfileFolder folder;
    folder.Sensor().WritePlain(std::string("[Settings]\r\n") + kGeometryKeys);
    // Of a key that stands twice the first counts.
    std::string text = "[Settings]\r\n";
    for (const auto& [key, value] : settings) text.append(key).append("=").append(value).append("\r\n");
    text += kGeometryKeys;
    ProfileWriter writer;
    writer.Section("General").Key("PROCMODE", mode);
    for (const auto& [key, value] : section) writer.Key(key, value);
    WriteBytes(folder.At("profile.ini"), text + writer.Text());
    Frame input = TestFrame();
    Frame output(input.width, input.height);
    EXPECT_EQ(ImageProcessingS(input.Data(), output.Data(), input.width, input.height,
                               folder.Profile().c_str(), "General", 0, 0, &kGeometry),
              VASTRELLINE_OK);
    return output;
}

Keys With(Keys keys, const std::string& key, const std::string& value) {
    if (!value.empty()) keys.emplace_back(key, value);
    return keys;
}

// The list's one stage is the first of `others`.
class ConfiguredKeyTest : public testing::TestWithParam<KeyCase> {};

TEST_P(ConfiguredKeyTest, ShowsInThePictureIfItMust) {
    const KeyCase& c = GetParam();
    const auto run = [&](const std::string& value) {
        // Of a key that stands twice the first counts.
        Keys keys = With({}, c.key, value);
        for (const auto& other : c.others) keys.push_back(other);
        keys.emplace_back("FunctionCount", "1");
        keys.emplace_back("INTRAORAL_MASK", "0");
        return RunSection({}, keys, "3");
    };
    EXPECT_EQ(run(c.base) != run(c.value), c.isVisible);
}

// A key without effect on any picture is what it is: read and not used, or of logs and files only.
constexpr bool kVisible = true;
constexpr bool kWithoutEffect = false;

Keys Stage(const char* number, Keys more = {}) {
    more.emplace_back("00_Function_Number", number);
    return more;
}

INSTANTIATE_TEST_SUITE_P(Common, ConfiguredKeyTest,
                         testing::Values(KeyCase{"CAPTION", "", "x", kWithoutEffect, Stage("10")},
                                         KeyCase{"VERSION", "", "x", kWithoutEffect, Stage("10")},
                                         KeyCase{"AUTOWINDOWING", "", "1", kWithoutEffect, Stage("10")},
                                         KeyCase{"BITALLOCATED", "", "8", kWithoutEffect, Stage("6")},
                                         KeyCase{"LITTLEENDIAN", "", "0", kWithoutEffect, Stage("10")},
                                         KeyCase{"MSGBOX_ENABLE", "", "1", kWithoutEffect, Stage("10")},
                                         KeyCase{"WRITE_PATH", "", "x", kWithoutEffect, Stage("10")},
                                         KeyCase{"SAVE_BACKUPPATH", "", "x", kWithoutEffect, Stage("10")},
                                         KeyCase{"SAVE_LOG", "", "1", kWithoutEffect, Stage("10")},
                                         KeyCase{"BITSTORED", "", "13", kVisible, Stage("8")},
                                         KeyCase{"SATURATION_VALUE", "", "1500", kVisible, Stage("8")},
                                         KeyCase{"OUTPUTRANGE", "", "1000", kVisible, Stage("10")},
                                         KeyCase{"SETCLIPBIN", "1", "-1", kVisible, Stage("8")},
                                         KeyCase{"INTRAORAL_MASK", "0", "1", kVisible, Stage("8")},
                                         KeyCase{"INVERSE_INTENSITY", "", "0", kVisible, Stage("8")},
                                         KeyCase{"INVERSE_INTENSITY", "", "2", kVisible, Stage("8")},
                                         KeyCase{"INVERSE_LOGRATIO", "", "1", kWithoutEffect, Stage("8")},
                                         KeyCase{"INVERSE_LOGRATIO", "", "1", kVisible,
                                                 Stage("8", {{"INVERSE_INTENSITY", "2"}})},
                                         KeyCase{"FunctionCount", "", "0", kVisible, Stage("8")},
                                         KeyCase{"00_Function_Number", "8", "10", kVisible}),
                         NameOf);

INSTANTIATE_TEST_SUITE_P(
    Tone, ConfiguredKeyTest,
    testing::Values(
        KeyCase{"00_STRETCH_SEPARATION_CNT", "", "3", kVisible, Stage("2", {{"00_STRETCH_LIMITBIN", "2"}})},
        KeyCase{"00_RESTRETCH_OPTION", "", "0", kVisible,
                Stage("2", {{"00_STRETCH_SEPARATION_CNT", "3"}, {"00_STRETCH_LIMITBIN", "2"}})},
        KeyCase{"00_LEFT_LEN_LIMIT", "", "300", kVisible,
                Stage("2", {{"00_STRETCH_SEPARATION_CNT", "3"}, {"00_STRETCH_LIMITBIN", "2"}})},
        KeyCase{"00_RIGHT_LEN_LIMIT", "", "100", kVisible,
                Stage("2", {{"00_STRETCH_SEPARATION_CNT", "3"}, {"00_STRETCH_LIMITBIN", "2"}})},
        KeyCase{"00_STRETCH_LEFT_WEIGHT", "", "9", kVisible,
                Stage("2", {{"00_STRETCH_SEPARATION_CNT", "3"}, {"00_STRETCH_LIMITBIN", "20"}})},
        KeyCase{"00_STRETCH_RIGHT_WEIGHT", "", "9", kVisible,
                Stage("2", {{"00_STRETCH_SEPARATION_CNT", "3"}, {"00_STRETCH_LIMITBIN", "20"}})},
        KeyCase{"00_STRETCH_LIMITBIN", "2", "20", kVisible, Stage("2", {{"00_STRETCH_SEPARATION_CNT", "3"}})},
        KeyCase{"00_POST_SIGMOID_RATIO", "", "0.3", kVisible, Stage("9")},
        KeyCase{"00_POST_GAMMA_RATIO", "1", "2", kVisible, Stage("10")},
        KeyCase{"00_POST_LINEAR_MODE", "", "2", kVisible, Stage("11", {{"00_POST_LINEAR_BRIGHTOPT", "300"}})},
        KeyCase{"00_POST_LINEAR_LIMITBIN", "", "2000", kVisible, Stage("11", {{"00_POST_LINEAR_MODE", "1"}})},
        KeyCase{"00_POST_LINEAR_BRIGHTOPT", "", "300", kVisible, Stage("11", {{"00_POST_LINEAR_MODE", "2"}})},
        KeyCase{"00_POST_LINEAR_BRIGHTOPT", "", "300", kWithoutEffect, Stage("11")}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    Detail, ConfiguredKeyTest,
    testing::Values(
        KeyCase{"00_PRECONTRAST_MASK", "", "5", kVisible, Stage("1")},
        KeyCase{"00_PRECONTRAST_RATIO", "", "2", kVisible, Stage("1")},
        KeyCase{"00_PRECONTRAST_RESCALE", "", "1", kVisible, Stage("1")},
        KeyCase{"00_MODE_CONTRAST", "", "1", kVisible, Stage("4")},
        KeyCase{"00_MODE_CONTRAST", "", "2", kWithoutEffect, Stage("4")},
        KeyCase{"00_MODE_CONTRAST", "", "4", kWithoutEffect, Stage("4")},
        KeyCase{"00_GAUSSIAN_SIZE_CONTRAST", "", "6", kVisible, Stage("4", {{"00_MODE_CONTRAST", "1"}})},
        KeyCase{"00_ENAHCNED_RATIO_CONTRAST", "", "4", kVisible, Stage("4", {{"00_MODE_CONTRAST", "1"}})},
        KeyCase{"00_NOISE_WIDTH_CONTRAST", "", "50", kVisible, Stage("4", {{"00_MODE_CONTRAST", "1"}})},
        KeyCase{"00_ReduceTimeRatio_CONTRAST", "", "2", kVisible, Stage("4", {{"00_MODE_CONTRAST", "1"}})},
        KeyCase{"00_ReduceTimeRatio_CONTRAST", "", "-1", kVisible, Stage("4", {{"00_MODE_CONTRAST", "1"}})},
        KeyCase{"00_PROTECTOUTLINE_CONTRAST", "", "3", kWithoutEffect,
                Stage("4", {{"00_MODE_CONTRAST", "1"}})},
        KeyCase{"00_PROTECTOUTLINE_CONTRAST", "", "3", kVisible,
                Stage("4", {{"00_MODE_CONTRAST", "5"},
                            {"00_NOISE_WIDTH_CONTRAST", "5"},
                            {"00_ReduceTimeRatio_CONTRAST", "4"}})},
        KeyCase{"00_PYRAMID_LAYER", "", "2", kVisible, Stage("6")},
        KeyCase{"00_GAUSSIAN_SIZE", "", "2", kVisible, Stage("6")},
        KeyCase{"00_APPLY_VARIABLE_RATIO", "", "1", kVisible, Stage("6", {{"00_ENHANCED_RATIO", "3"}})},
        KeyCase{"00_ENHANCED_RATIO", "", "3", kVisible, Stage("6")},
        KeyCase{"00_NOISE_WIDTH", "", "0.2", kVisible, Stage("6")},
        KeyCase{"00_APPLY_DIFF_ENHANCE", "", "0", kVisible, Stage("6")},
        KeyCase{"00_NOISE_CUTLIMIT", "", "0.3", kVisible, Stage("6")},
        KeyCase{"00_PREPROCESSING_ENHANCESCALE", "", "1.5", kVisible, Stage("12")},
        KeyCase{"00_PREPROCESSING_GAUSSIANPOWER", "", "2", kVisible, Stage("12")},
        KeyCase{"00_PREPROCESSING_AUMALPHA", "", "3", kWithoutEffect, Stage("12")},
        KeyCase{"00_PREPROCESSING_AUMWEIGHT", "", "3", kWithoutEffect, Stage("12")},
        KeyCase{"00_PREPROCESSING_AUMPOWER", "", "3", kWithoutEffect, Stage("12")},
        KeyCase{"00_PREPROCESSING_AUMRANGE", "", "3", kWithoutEffect, Stage("12")}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    ContrastAndNoise, ConfiguredKeyTest,
    testing::Values(KeyCase{"00_BLOCK_SIZE", "", "32", kVisible, Stage("3")},
                    KeyCase{"00_HISTO_BINS", "", "64", kVisible, Stage("3")},
                    KeyCase{"00_MAX_SLOPE", "", "3", kVisible, Stage("3")},
                    KeyCase{"00_HDR_BLOCK_SIZE", "", "32", kVisible, Stage("13")},
                    KeyCase{"00_HDR_HISTO_BINS", "", "32", kVisible, Stage("13")},
                    KeyCase{"00_HDR_CLIp_LIMIT", "", "4", kVisible, Stage("13")},
                    KeyCase{"00_MAX_LAMBDA", "", "0.4", kVisible, Stage("13")},
                    KeyCase{"00_ALPHA_NORM", "", "0.8", kVisible, Stage("13")},
                    KeyCase{"00_ALPHA_HE", "", "0.8", kVisible, Stage("13")},
                    KeyCase{"00_WF_SLOPE", "", "0.5", kWithoutEffect, Stage("13")},
                    KeyCase{"00_WF_SLOPE", "", "0", kVisible, Stage("13")},
                    KeyCase{"00_LAYER", "", "7", kWithoutEffect, Stage("13")},
                    KeyCase{"00_LAYER", "", "0", kVisible, Stage("13")},
                    KeyCase{"00_MEDIAN_SIZE", "", "5", kVisible, Stage("7")},
                    KeyCase{"00_MEDIAN_REPEAT", "", "3", kVisible, Stage("7")},
                    KeyCase{"00_MEDIAN_Mode", "", "2", kVisible, Stage("7")},
                    KeyCase{"00_GAUSSIAN_SIZE", "", "2", kVisible, Stage("8")},
                    KeyCase{"00_GAUSSIAN_REPEAT", "", "2", kVisible, Stage("8")},
                    KeyCase{"00_GAUSSIAN_ReduceTimeRatio", "", "2", kVisible, Stage("8")},
                    KeyCase{"00_GAUSSIAN_ProtectOutline", "", "0", kVisible, Stage("8")},
                    KeyCase{"00_ADAPTIVESMOOTHING_Mode", "", "1", kVisible, Stage("5")},
                    KeyCase{"00_ADAPTIVESMOOTHING_MASK", "", "7", kVisible, Stage("5")},
                    KeyCase{"00_ADAPTIVESMOOTHING_ORDER", "", "2", kVisible, Stage("5")}),
    NameOf);

// Keys of the section that holds the sensor's values and the target range.
class SettingsKeyTest : public testing::TestWithParam<KeyCase> {};

TEST_P(SettingsKeyTest, ShowsInThePictureIfItMust) {
    const KeyCase& c = GetParam();
    const auto run = [&](const std::string& value) {
        return RunSection(With(c.others, c.key, value), {{"INTRAORAL_MASK", "0"}}, "2");
    };
    EXPECT_EQ(run(c.base) != run(c.value), c.isVisible);
}

INSTANTIATE_TEST_SUITE_P(Range, SettingsKeyTest,
                         testing::Values(KeyCase{"TargetRange", "", "4000", kVisible},
                                         KeyCase{
                                             "MinimumValue", "", "1500", kVisible, {{"TargetRange", "4000"}}},
                                         KeyCase{"MaxCut", "", "0.1", kVisible, {{"TargetRange", "4000"}}},
                                         KeyCase{"MinCut", "", "0.1", kVisible, {{"TargetRange", "4000"}}}),
                         NameOf);

// The sensor's values, in a chain that takes them from the profile as they stand there. "SerialId" stands in
// the sensor's own profile and has its tests where that is read.
class SensorKeyTest : public testing::TestWithParam<KeyCase> {};

TEST_P(SensorKeyTest, ShowsInThePictureIfItMust) {
    const KeyCase& c = GetParam();
    const auto run = [&](const std::string& value) {
        return RunSection(With(c.others, c.key, value), {{"INTRAORAL_MASK", "1"}}, "1");
    };
    EXPECT_EQ(run(c.base) != run(c.value), c.isVisible);
}

INSTANTIATE_TEST_SUITE_P(
    Geometry, SensorKeyTest,
    testing::Values(
        KeyCase{"Rotation", "", "-1", kVisible}, KeyCase{"Flip", "", "2", kVisible},
        KeyCase{"RCCutOff", "", "40", kVisible}, KeyCase{"RCCutOffR", "", "40", kVisible},
        KeyCase{"FrameWidth", "", "200", kVisible}, KeyCase{"FrameHeight", "", "170", kVisible},
        KeyCase{"ImgCutLeft", "", "10", kVisible, {{"FrameWidth", "190"}, {"ImgCutRight", "10"}}},
        KeyCase{"ImgCutRight", "", "10", kVisible, {{"FrameWidth", "190"}, {"ImgCutLeft", "10"}}},
        KeyCase{"ImgCutTop", "", "10", kVisible, {{"FrameHeight", "160"}, {"ImgCutBottom", "10"}}},
        KeyCase{"ImgCutBottom", "", "10", kVisible, {{"FrameHeight", "160"}, {"ImgCutTop", "10"}}}),
    NameOf);

// Keys of the fixed chain stand without a position; a flag switches their stage on.
class FixedKeyTest : public testing::TestWithParam<KeyCase> {};

TEST_P(FixedKeyTest, ShowsInThePictureIfItMust) {
    const KeyCase& c = GetParam();
    const auto run = [&](const std::string& value) {
        Keys keys = With({}, c.key, value);
        for (const auto& other : c.others) keys.push_back(other);
        keys.emplace_back("INTRAORAL_MASK", "0");
        return RunSection({}, keys, "1");
    };
    EXPECT_EQ(run(c.base) != run(c.value), c.isVisible);
}

INSTANTIATE_TEST_SUITE_P(
    Run, FixedKeyTest,
    testing::Values(
        KeyCase{"VERSION", "", "x", kWithoutEffect},
        KeyCase{"BITALLOCATED", "", "8", kWithoutEffect, {{"PYRAMID_PROCESSING", "1"}}},
        KeyCase{"LITTLEENDIAN", "", "0", kWithoutEffect}, KeyCase{"SAVE_LOG", "", "1", kWithoutEffect},
        KeyCase{"WRITE_PATH", "", "x", kWithoutEffect}, KeyCase{"SAVE_BACKUPPATH", "", "x", kWithoutEffect},
        KeyCase{"BITSTORED", "", "13", kVisible}, KeyCase{"SATURATION_VALUE", "", "1500", kVisible},
        KeyCase{"OUTPUTRANGE", "", "1000", kVisible}, KeyCase{"INTRAORAL_MASK", "0", "1", kVisible},
        KeyCase{"INVERSE_INTENSITY", "", "0", kVisible},
        KeyCase{"INVERSE_LOGRATIO", "", "1", kVisible, {{"INVERSE_INTENSITY", "2"}}}),
    NameOf);

INSTANTIATE_TEST_SUITE_P(
    Stages, FixedKeyTest,
    testing::Values(
        KeyCase{"HISTOGRAM_STRETCH", "", "1", kVisible, {{"STRETCH_SEPARATION_CNT", "2"}}},
        KeyCase{"PRE_MEDIAN", "", "1", kVisible}, KeyCase{"PRE_GAUSSIAN", "", "1", kVisible},
        KeyCase{"POST_GAUSSIAN", "", "1", kVisible}, KeyCase{"POST_MEDIAN", "", "1", kVisible},
        KeyCase{"POST_SIGMOID_LUT", "", "1", kVisible}, KeyCase{"POST_GAMMA_LUT", "", "1", kVisible},
        KeyCase{"CONTRAST_ENHANCE2", "", "1", kVisible},
        KeyCase{"CONTRAST_ENHANCE", "", "1", kVisible, {{"MODE_CONTRAST", "1"}}},
        KeyCase{"CONTRAST_ENHANCE", "", "1", kWithoutEffect},
        KeyCase{"PYRAMID_PROCESSING", "", "1", kVisible}, KeyCase{"PRE_CONTRAST", "", "1", kVisible},
        KeyCase{"ADAPTIVE_SMOOTHING", "", "1", kVisible},
        KeyCase{"PRE_MEDIAN_SIZE", "", "5", kVisible, {{"PRE_MEDIAN", "1"}}},
        KeyCase{"PRE_GAUSSIAN_SIZE", "", "2", kVisible, {{"PRE_GAUSSIAN", "1"}}},
        KeyCase{"POST_GAUSSIAN_SIZE", "", "2", kVisible, {{"POST_GAUSSIAN", "1"}}},
        KeyCase{"POST_MEDIAN_SIZE", "", "5", kVisible, {{"POST_MEDIAN", "1"}}},
        KeyCase{"POST_MEDIAN_REPEAT", "", "1", kVisible, {{"POST_MEDIAN", "1"}}},
        KeyCase{"POST_SIGMOID_RATIO", "", "0.3", kVisible, {{"POST_SIGMOID_LUT", "1"}}},
        KeyCase{"POST_GAMMA_RATIO", "1", "2", kVisible, {{"POST_GAMMA_LUT", "1"}}},
        KeyCase{
            "GAUSSIAN_SIZE_CONTRAST", "", "6", kVisible, {{"CONTRAST_ENHANCE", "1"}, {"MODE_CONTRAST", "1"}}},
        KeyCase{"ENAHCNED_RATIO_CONTRAST",
                "",
                "4",
                kVisible,
                {{"CONTRAST_ENHANCE", "1"}, {"MODE_CONTRAST", "1"}}},
        KeyCase{
            "NOISE_WIDTH_CONTRAST", "", "50", kVisible, {{"CONTRAST_ENHANCE", "1"}, {"MODE_CONTRAST", "1"}}},
        KeyCase{"MODE_CONTRAST", "1", "3", kVisible, {{"CONTRAST_ENHANCE", "1"}}},
        KeyCase{"MODE_CONTRAST", "", "5", kWithoutEffect, {{"CONTRAST_ENHANCE", "1"}}},
        KeyCase{"BLOCK_SIZE", "", "32", kVisible, {{"CONTRAST_ENHANCE2", "1"}}},
        KeyCase{"HISTO_BINS", "", "64", kVisible, {{"CONTRAST_ENHANCE2", "1"}}},
        KeyCase{"MAX_SLOPE", "", "3", kVisible, {{"CONTRAST_ENHANCE2", "1"}}},
        KeyCase{"CORRECTVAL",
                "",
                "0",
                kVisible,
                {{"CONTRAST_ENHANCE2", "1"}, {"MAX_SLOPE", "4"}, {"INVERSE_INTENSITY", "0"}}},
        KeyCase{"PYRAMID_LAYER", "", "2", kVisible, {{"PYRAMID_PROCESSING", "1"}}},
        KeyCase{"GAUSSIAN_SIZE", "", "2", kVisible, {{"PYRAMID_PROCESSING", "1"}}},
        KeyCase{"APPLY_VARIABLE_RATIO",
                "",
                "1",
                kVisible,
                {{"PYRAMID_PROCESSING", "1"}, {"ENHANCED_RATIO", "3"}}},
        KeyCase{"ENHANCED_RATIO", "", "3", kVisible, {{"PYRAMID_PROCESSING", "1"}}},
        KeyCase{"NOISE_WIDTH", "", "20", kVisible, {{"PYRAMID_PROCESSING", "1"}}},
        KeyCase{"APPLY_DIFF_ENHANCE", "", "0", kVisible, {{"PYRAMID_PROCESSING", "1"}}},
        KeyCase{"NOISE_CUTLIMIT", "", "0.3", kVisible, {{"PYRAMID_PROCESSING", "1"}}},
        KeyCase{"PRECONTRAST_MASK", "", "5", kVisible, {{"PRE_CONTRAST", "1"}}},
        KeyCase{"PRECONTRAST_RATIO", "", "2", kVisible, {{"PRE_CONTRAST", "1"}}},
        KeyCase{"PRECONTRAST_RESCALE", "", "1", kVisible, {{"PRE_CONTRAST", "1"}}},
        KeyCase{"ADAPTIVESMOOTHING_MASK", "", "7", kVisible, {{"ADAPTIVE_SMOOTHING", "1"}}},
        KeyCase{"ADAPTIVESMOOTHING_ORDER", "", "2", kVisible, {{"ADAPTIVE_SMOOTHING", "1"}}}),
    NameOf);

// With a limit that every count is below, the valleys are the lowest points beside the peak.
const Keys kValleys = {
    {"HISTOGRAM_STRETCH", "1"}, {"STRETCH_SEPARATION_CNT", "2"}, {"STRETCH_LIMITBIN", "30000"}};

INSTANTIATE_TEST_SUITE_P(
    Stretch, FixedKeyTest,
    testing::Values(KeyCase{"STRETCH_SEPARATION_CNT", "", "3", kVisible, {{"HISTOGRAM_STRETCH", "1"}}},
                    KeyCase{"RESTRETCH_OPTION", "", "1", kVisible, kValleys},
                    KeyCase{"LEFT_LEN_LIMIT", "", "300", kVisible, {{"HISTOGRAM_STRETCH", "1"}}},
                    KeyCase{"RIGHT_LEN_LIMIT", "", "100", kVisible, kValleys},
                    KeyCase{"STRETCH_LEFT_WEIGHT", "", "9", kVisible, kValleys},
                    KeyCase{"STRETCH_RIGHT_WEIGHT",
                            "",
                            "9",
                            kVisible,
                            {{"HISTOGRAM_STRETCH", "1"},
                             {"STRETCH_SEPARATION_CNT", "2"},
                             {"STRETCH_LIMITBIN", "30000"},
                             {"INVERSE_INTENSITY", "0"}}},
                    KeyCase{"STRETCH_LIMITBIN",
                            "",
                            "0",
                            kVisible,
                            {{"HISTOGRAM_STRETCH", "1"}, {"STRETCH_SEPARATION_CNT", "2"}}}),
    NameOf);

}  // namespace
}  // namespace vastrelline
