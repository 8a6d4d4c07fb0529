// SPDX-License-Identifier: Apache-2.0

// Profiles that are not as they should be, through the exports.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProcessingExports.h"
#include "support/ProfileFolder.h"
#include "support/ProfileNormalForm.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

using testing::IsEmpty;

const char* const kSquare =
    "[General]\r\nPROCMODE=2\r\nINTRAORAL_MASK=0\r\nINVERSE_INTENSITY=0\r\nOUTPUTRANGE=100\r\n"
    "FunctionCount=1\r\n00_Function_Number=10\r\n00_POST_GAMMA_RATIO=2\r\n";

// What one export does all others do with the same code, so tests that take their time walk only the first.
const ProcessingExport kFirstExport = ProcessingExports().front();

class ProfileTest : public testing::Test {
protected:
    explicit ProfileTest(const ProcessingExport& processing = kFirstExport) : processing_(processing) {}

    void WriteProfile(const std::string& text) const { WriteBytes(folder_.At("profile.ini"), text); }

    // The code, with the result in Output().
    int32_t Run(const std::string& iniPath) {
        output_ = Flat(3, 1, 7);
        return processing_.call(
            {input_.Data(), output_.Data(), 3, 1, iniPath.c_str(), "General", 0, nullptr});
    }

    // Expects success and this output; an export without an output shows only the code.
    void ExpectOutput(const std::string& iniPath, const Frame& expected) {
        EXPECT_EQ(Run(iniPath), VASTRELLINE_OK);
        if (!processing_.hasOutput) return;
        EXPECT_THAT(output_, EqualsFrame(expected));
    }

    const ProfileFolder& Folder() const { return folder_; }
    // What the fixed chain, which runs where nothing selects another one, makes of the frame on its defaults.
    Frame OnDefaults() {
        WriteBytes(folder_.At("defaults.ini"), "[General]\r\nPROCMODE=1\r\n");
        EXPECT_EQ(Run(folder_.Narrow("defaults.ini")), VASTRELLINE_OK);
        std::filesystem::remove(folder_.At("defaults.ini"));
        EXPECT_EQ(output_ != Flat(3, 1, 7), processing_.hasOutput);
        return output_;
    }
    // What the list of the section makes of it. One chain has no list; its linear curve leaves
    // trunc(100 * (50 / 4095)) = 1 and 2 of the levels.
    Frame Squared() const {
        return processing_.name == "ImageProcessingCR" ? FromRows({{0, 1, 2}}) : FromRows({{0, 25, 100}});
    }

private:
    ProcessingExport processing_;
    ProfileFolder folder_;
    Frame input_ = FromRows({{0, 50, 100}});
    Frame output_ = Flat(3, 1, 7);
};

class BadProfileTest : public ProfileTest, public testing::WithParamInterface<ProcessingExport> {
protected:
    BadProfileTest() : ProfileTest(GetParam()) {}
};

TEST_F(ProfileTest, SectionIsFoundAtTheEndOf10Megabytes) {
    std::string text = ProfileFolder::SettledProfile().Text();
    while (text.size() < 10000000) text += "[Set " + std::to_string(text.size()) + "]\r\nFunctionCount=1\r\n";
    WriteProfile(text + kSquare);
    ExpectOutput(Folder().Profile(), Squared());
}

TEST_F(ProfileTest, KeysAreFoundAmong10MegabytesOfOthers) {
    std::string text = ProfileFolder::SettledProfile().Text() + kSquare;
    while (text.size() < 10000000) text += "KEY_" + std::to_string(text.size()) + "=value\r\n";
    WriteProfile(text);
    ExpectOutput(Folder().Profile(), Squared());
}

TEST_F(ProfileTest, LineOf10MegabytesIsPassedOver) {
    WriteProfile(ProfileFolder::SettledProfile().Text() + "[Other]\r\nLONG=" + std::string(10000000, 'x') +
                 "\r\n" + kSquare);
    ExpectOutput(Folder().Profile(), Squared());
}

TEST_P(BadProfileTest, MissingProfileGivesCode1) {
    EXPECT_EQ(Run(Folder().Profile()), VASTRELLINE_NO_PROFILE);
    EXPECT_EQ(Run(Folder().Narrow("missing") + "\\profile.ini"), VASTRELLINE_NO_PROFILE);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

// The defaults would be another chain's picture.
TEST_P(BadProfileTest, FolderInThePlaceOfTheProfileGivesCode1) {
    std::filesystem::create_directory(Folder().At("folder.ini"));
    EXPECT_EQ(Run(Folder().Narrow("folder.ini")), VASTRELLINE_NO_PROFILE);
}

TEST_P(BadProfileTest, ProfileOfMoreThan64MebibytesGivesCode1) {
    WriteProfile(kSquare);
    std::filesystem::resize_file(Folder().At("profile.ini"), (uintmax_t{64} << 20U) + 1);
    EXPECT_EQ(Run(Folder().Profile()), VASTRELLINE_NO_PROFILE);
}

TEST_P(BadProfileTest, EmptyProfileRunsTheFixedChainOnDefaults) {
    WriteProfile("");
    ExpectOutput(Folder().Profile(), OnDefaults());
}

TEST_P(BadProfileTest, BinaryProfileRunsTheFixedChainOnDefaults) {
    std::mt19937 random(20240501);
    std::string bytes;
    for (int i = 0; i < 300000; ++i) bytes += static_cast<char>((random() >> 8U) & 0xFFU);
    WriteProfile(bytes);
    ExpectOutput(Folder().Profile(), OnDefaults());
}

TEST_P(BadProfileTest, ProfileOfZeroBytesRunsTheFixedChainOnDefaults) {
    WriteProfile(std::string(100000, '\0'));
    ExpectOutput(Folder().Profile(), OnDefaults());
}

TEST_P(BadProfileTest, ReadOnlyProfileIsReadAndStays) {
    WriteProfile(kSquare);
    std::filesystem::permissions(Folder().At("profile.ini"), std::filesystem::perms::owner_read,
                                 std::filesystem::perm_options::replace);
    ExpectOutput(Folder().Profile(), Squared());
    EXPECT_EQ(ReadBytes(Folder().At("profile.ini")), kSquare);
}

TEST_P(BadProfileTest, ProfileWithTheSensorsValuesStaysAsItIs) {
    const std::string text =
        std::string(";a comment\n\n") + ProfileFolder::SettledProfile().Text() + kSquare + "no end of line";
    WriteProfile(text);
    ExpectOutput(Folder().Profile(), Squared());
    EXPECT_EQ(ReadBytes(Folder().At("profile.ini")), text);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

// But for the chain of frames that arrive without the sensor's corners, which leaves the profile alone.
TEST_P(BadProfileTest, RunBringsTheSensorsValuesIntoTheProfile) {
    const std::string text = std::string(";a comment\r\n") + kSquare;
    WriteProfile(text);
    ExpectOutput(Folder().Profile(), Squared());
    const bool isWritten = GetParam().name != "ImageProcessingCR";
    EXPECT_EQ(ProfileNormalForm(ReadBytes(Folder().At("profile.ini"))),
              text + (isWritten ? ProfileFolder::SettledProfile().Text() : ""));
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

// Corners that count where the sensor's own are not known: then they set where the highlights are clipped.
Frame BrightCorners() {
    Frame frame = Ramp(60, 40, 300, 10, 20);
    for (const int32_t y : {0, 1, 2, 37, 38, 39})
        for (const int32_t x : {0, 1, 2, 3, 56, 57, 58, 59}) frame.At(x, y) = 4000;
    return frame;
}

// The outputs of two calls, and the input as the second one left it: its correction reads the profile's
// geometry, which the first call brought there.
std::vector<Frame> RunTwice(bool isReadOnly) {
    const ProfileFolder folder;
    folder.Sensor().WritePlain(
        "[Settings]\r\nRotation=0\r\nFlip=0\r\nRCCutOff=15\r\nRCCutOffR=15\r\nFrameWidth=60\r\nFrameHeight="
        "40\r\n");
    ProfileWriter()
        .Section("General")
        .Key("PROCMODE", "2")
        .Stage("10", {{"POST_GAMMA_RATIO", "2"}})
        .WriteTo(folder.At("profile.ini"));
    if (isReadOnly)
        std::filesystem::permissions(folder.At("profile.ini"), std::filesystem::perms::owner_read,
                                     std::filesystem::perm_options::replace);
    const std::string before = ReadBytes(folder.At("profile.ini"));
    std::vector<Frame> frames;
    for (int call = 0; call < 2; ++call) {
        Frame input = BrightCorners();
        Frame output(60, 40);
        const std::string profile = folder.Profile();
        EXPECT_EQ(ImageProcessing(input.Data(), output.Data(), 60, 40, profile.c_str(), "General", 0, 0),
                  VASTRELLINE_OK);
        frames.push_back(std::move(output));
        frames.push_back(std::move(input));
    }
    EXPECT_EQ(ReadBytes(folder.At("profile.ini")) == before, isReadOnly);
    return frames;
}

TEST(ReadOnlyProfile, GivesThePixelsOfAWritableOne) {
    const std::vector<Frame> frames = RunTwice(true);
    EXPECT_EQ(frames, RunTwice(false));
    EXPECT_NE(frames[1], frames[3]);  // the second input is corrected with the sensor's corners
}

INSTANTIATE_TEST_SUITE_P(Exports, BadProfileTest, testing::ValuesIn(ProcessingExports()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline
