// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "chains/FixedChain.h"
#include "config/FixedState.h"
#include "support/BackupNames.h"
#include "support/BitmapFile.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"
#include "support/ProfileFolder.h"
#include "support/StageNames.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FixedChainTest : public testing::Test {
protected:
    ~FixedChainTest() override { SharedFixedState() = before_; }

    // A section "Molar" without corner mask and inversion.
    static ProfileWriter Plain() {
        ProfileWriter writer;
        writer.Section("Molar").Key("INTRAORAL_MASK", "0").Key("INVERSE_INTENSITY", "0");
        return writer;
    }
    static ProfileWriter WithAllStages() {
        ProfileWriter writer;
        writer.Section("Molar").Key("INTRAORAL_MASK", "0");
        for (const char* flag :
             {"PRE_MEDIAN", "PRE_GAUSSIAN", "PRE_CONTRAST", "HISTOGRAM_STRETCH", "PYRAMID_PROCESSING",
              "CONTRAST_ENHANCE", "CONTRAST_ENHANCE2", "ADAPTIVE_SMOOTHING", "POST_MEDIAN", "POST_GAUSSIAN",
              "POST_SIGMOID_LUT", "POST_GAMMA_LUT"})
            writer.Key(flag, "-1");
        return writer;
    }
    void Write(ProfileWriter writer) const { writer.WriteTo(folder_.At("profile.ini")); }
    std::string Folder(const char* name) const { return folder_.Narrow(name); }

    Frame Run(const Frame& input, const std::wstring& section = L"Molar") const {
        Frame output = Flat(input.width, input.height, 7);
        EXPECT_EQ(RunFixedChain({input.Data(), output.Data(), input.width, input.height,
                                 folder_.WideProfile(), section}),
                  kSuccess);
        return output;
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    FixedState before_ = SharedFixedState();
    ProfileFolder folder_;
};

TEST_F(FixedChainTest, SectionNameBeginsAsAProductsAndFollowsTheRuns) {
    EXPECT_EQ(FixedState{}.SectionName, L"KD340");
    Write(Plain());
    Run(Flat(2, 2, 5));
    EXPECT_EQ(SharedFixedState().SectionName, L"Molar");
    EXPECT_EQ(SharedFixedState().IniPath, Folder().WideProfile());
}

// Without a stage switched on the linear curve still runs: 2047 * (1000, 2000, 3000 / 4095) = 499.9, 999.8,
// 1499.6.
TEST_F(FixedChainTest, LinearCurveAlwaysRuns) {
    Write(Plain().Key("OUTPUTRANGE", "2047"));
    EXPECT_THAT(Run(FromRows({{1000, 2000, 3000}})), EqualsFrame(FromRows({{499, 999, 1499}})));
}

// The cap brings 4095 down to 3000; the linear curve from 0..4095 to 0..4095 is none.
TEST_F(FixedChainTest, FrameIsCappedAndTurnedOverByDefault) {
    ProfileWriter writer;
    writer.Section("Molar").Key("INTRAORAL_MASK", "0");
    Write(writer);
    EXPECT_THAT(Run(FromRows({{1000, 2000, 3000, 4095}})), EqualsFrame(FromRows({{3095, 2095, 1095, 1095}})));
}

TEST_F(FixedChainTest, StagesRunInTheProgramsOrder) {
    Write(WithAllStages().Key("SAVE_LOG", "1"));
    Run(Noise(40, 30, 4095, 5));
    EXPECT_THAT(StageNamesIn(Folder().Log()),
                ElementsAre("Pre-Median", "Pre-Gaussian", "PreConstrast", "StretchCurve", "pyramid",
                            "AdaptiveUnsharp", "CLAHE", "AdaptiveSmoothing", "Post-NoiseReduction",
                            "Post-Gaussian", "Sigmoid Curve", "Gamma Curve"));
}

TEST_F(FixedChainTest, EachFlagSwitchesItsOwnStage) {
    const struct {
        const char* flag;
        const char* name;
    } cases[] = {{"PRE_MEDIAN", "Pre-Median"},           {"PRE_GAUSSIAN", "Pre-Gaussian"},
                 {"PRE_CONTRAST", "PreConstrast"},       {"HISTOGRAM_STRETCH", "StretchCurve"},
                 {"PYRAMID_PROCESSING", "pyramid"},      {"CONTRAST_ENHANCE", "AdaptiveUnsharp"},
                 {"CONTRAST_ENHANCE2", "CLAHE"},         {"ADAPTIVE_SMOOTHING", "AdaptiveSmoothing"},
                 {"POST_MEDIAN", "Post-NoiseReduction"}, {"POST_GAUSSIAN", "Post-Gaussian"}};
    for (const auto& c : cases) {
        Write(Plain().Key("SAVE_LOG", "1").Key(c.flag, "1"));
        Run(Noise(20, 20, 4095, 5));
        EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre(c.name, "Linear Curve")) << c.flag;
    }
    Write(Plain().Key("SAVE_LOG", "1").Key("POST_GAMMA_LUT", "1"));
    Run(Noise(20, 20, 4095, 5));
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("Linear Curve", "Gamma Curve"));
    Write(Plain().Key("SAVE_LOG", "1").Key("POST_SIGMOID_LUT", "1"));
    Run(Noise(20, 20, 4095, 5));
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("Sigmoid Curve"));
}

TEST_F(FixedChainTest, LogHoldsTheLastRunOnly) {
    Write(Plain().Key("SAVE_LOG", "1").Key("VERSION", "1.2"));
    Run(Flat(2, 2, 5));
    Run(Flat(2, 2, 5));
    const std::string log = MaskTimes(Folder().Log());
    constexpr const char* kHead =
        "\r\n\r\n"
        "=========================================================================================\r\n"
        "============================== Vastrelline Log YYYY.MM.DD ==============================\r\n"
        "=========================================================================================\r\n"
        "#### hh:mm:ss \t: Start Quorla.dll [v1.2]\r\n"
        "\t\t\t Section Name [Molar]\r\n"
        "#### hh:mm:ss \t: Linear Curve ( N ms )\r\n";
    constexpr const char* kEnd =
        "#### hh:mm:ss \t: End Post-Processing ( N ms )\r\n"
        "=========================================================================================\r\n";
    EXPECT_TRUE(log.starts_with(kHead)) << log;
    EXPECT_TRUE(log.ends_with(kEnd)) << log;
    EXPECT_EQ(log.find("Start", log.find("Start") + 1), std::string::npos);
}

TEST_F(FixedChainTest, DumpsStartAnewWithEachFrame) {
    Write(WithAllStages().Key("SAVE_IMAGE", "1").Key("WRITE_PATH", Folder("Dumps") + "\\"));
    std::filesystem::create_directory(Folder().At("Dumps"));
    const Frame frame = Noise(40, 30, 4000, 5);  // nothing to cap
    for (int run = 0; run < 2; ++run) {
        const Frame output = Run(frame);
        EXPECT_TRUE(ReadBytes(Folder().At("Dumps") / "00_originalimage.raw") == RawBytes(frame.pixels));
        EXPECT_TRUE(ReadBytes(Folder().At("Dumps") / "15_result.raw") == RawBytes(output.pixels));
    }
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Folder().At("Dumps"))) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(".raw") && name[0] >= '0' && name[0] <= '9') names.push_back(name);
    }
    EXPECT_THAT(names,
                testing::UnorderedElementsAre(
                    "00_originalimage.raw", "01_originalimage_invert.raw", "02_premedian.raw",
                    "03_pregaussian.raw", "04_precontrastgaussian.raw", "04_precontrast.raw",
                    "05_unsharpmasking.raw", "05_stretchimage0.raw", "06_stretchimage2.raw", "07_pyramid.raw",
                    "08_unsharp0.raw", "09_clahe_00.raw", "09_clahe_01.raw", "09_clahe.raw",
                    "10_adaptivesmooting.raw", "11_post_median.raw", "12_pregaussian.raw",
                    "13_resultsigmoid.raw", "14_result_gamma.raw", "15_result.raw"));
}

TEST_F(FixedChainTest, EmptySectionRunsOnDefaults) {
    Write(Plain());
    const Frame input = Noise(9, 7, 4095, 6);
    const Frame expected = Run(input, L"no such section");
    EXPECT_THAT(Run(input, L""), EqualsFrame(expected));
}

// The dark tail that the unsharp stage asks for exists only with the stretch.
TEST_F(FixedChainTest, UnsharpRunsWithoutTheStretch) {
    const Frame input = Noise(30, 30, 4095, 8);
    Write(Plain());
    const Frame without = Run(input);
    Write(Plain()
              .Key("SAVE_LOG", "1")
              .Key("CONTRAST_ENHANCE", "1")
              .Key("MODE_CONTRAST", "3")
              .Key("NOISE_WIDTH_CONTRAST", "50"));
    EXPECT_NE(Run(input), without);
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("AdaptiveUnsharp", "Linear Curve"));
}

// Dark pixels count as corners here. Outward from the middle they mirror the pixels inside, so that the
// stages see {400, 300, 300, 400, 500, 400} inverted; afterwards they are dark, but for the two markers.
TEST_F(FixedChainTest, CornersAreFilledForTheStagesAndDarkAfterwards) {
    ProfileWriter writer;
    writer.Section("Molar").Key("SAVE_IMAGE", "1");
    Write(writer.Key("WRITE_PATH", Folder("") + "\\"));
    EXPECT_THAT(Run(FromRows({{0, 0, 300, 400, 500, 0}})),
                EqualsFrame(FromRows({{4095, 4095, 3795, 3695, 3595, 0}})));
    EXPECT_EQ(ReadBytes(Folder().At("01_originalimage_invert.raw")),
              RawBytes({3695, 3795, 3795, 3695, 3595, 3695}));
}

// 65535 * (1000, 40000 / 131071) = 499.9 and 19999.8; the cap takes the third pixel down to the second.
TEST_F(FixedChainTest, FramesOfMoreBitsAreBroughtInto16) {
    Write(Plain()
              .Key("BITSTORED", "17")
              .Key("SATURATION_VALUE", "20000")
              .Key("SAVE_IMAGE", "1")
              .Key("WRITE_PATH", Folder("") + "\\"));
    Run(FromRows({{1000, 40000, 65535}}));
    EXPECT_EQ(ReadBytes(Folder().At("00_originalimage.raw")), RawBytes({499, 19999, 19999}));
}

// OUTPUTRANGE does not move the window.
TEST_F(FixedChainTest, BackupIsRenderedThroughTheWindowOfTwelveBits) {
    Write(Plain().Key("SAVE_BACKUP", "1").Key("SAVE_BACKUPPATH", Folder("Keep")).Key("OUTPUTRANGE", "100"));
    const Frame input = FromRows({{1000, 2000, 3000}});
    const Frame output = Run(input);
    EXPECT_THAT(MaskedNames(Folder().At("Keep")), ElementsAre("T_KeepMolar.bmp", "T_keepcalibrated.raw"));
    const auto bitmaps = BackupsNamed(Folder().At("Keep"), "T_KeepMolar.bmp");
    ASSERT_EQ(bitmaps.size(), 1U);
    EXPECT_THAT(ReadGreyBitmap(ReadBytes(bitmaps[0])), EqualsFrame(ThroughUsualWindow(output)));
}

TEST_F(FixedChainTest, SensorsValuesStayOutOfTheProfile) {
    Write(Plain());
    const std::string bytes = ReadBytes(Folder().At("profile.ini"));
    Run(Flat(2, 2, 5));
    EXPECT_EQ(ReadBytes(Folder().At("profile.ini")), bytes);
}

TEST_F(FixedChainTest, FirstArgumentTestThatFailsGivesTheCode) {
    Write(Plain().Key("SAVE_LOG", "1"));
    Frame frame = Flat(1, 1, 5);
    const std::wstring profile = Folder().WideProfile();
    EXPECT_EQ(RunFixedChain({nullptr, nullptr, 1, 1, profile + L"x", L""}), kNoProfile);
    EXPECT_EQ(RunFixedChain({nullptr, nullptr, 1, 1, profile, L""}), kNoInput);
    EXPECT_EQ(RunFixedChain({frame.Data(), nullptr, 1, 1, profile, L""}), kNoOutput);
    EXPECT_EQ(RunFixedChain({frame.Data(), frame.Data(), -1, 1, profile, L"Molar"}), kSuccess);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

}  // namespace
}  // namespace vastrelline
