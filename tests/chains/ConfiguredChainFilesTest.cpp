// SPDX-License-Identifier: Apache-2.0

// The log and the dumps that a run of the configured chain leaves.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "chains/ConfiguredChain.h"
#include "config/CallProfile.h"
#include "config/ConfiguredState.h"
#include "platform/Files.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskedLog.h"
#include "support/ProfileFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// Over 0..100 the first stage makes the squares {0, 25, 82.81, 100} of these, and the second one's exponent
// follows from the brightest pixel but one, 82: 2 - (100 - 82) / 50 = 1.64. The third one is a line.
const std::vector<uint16_t> kInput = {0, 50, 91, 100};
const std::vector<uint16_t> kSquares = {0, 25, 82, 100};

constexpr const char* kMaskedRun =
    "\r\n\r\n"
    "=========================================================================================\r\n"
    "============================== Vastrelline Log YYYY.MM.DD ==============================\r\n"
    "=========================================================================================\r\n"
    "#### hh:mm:ss \t: Start Vastrelline.dll [v2.5 test]\r\n"
    "\t\t\t Section Name [General]\r\n"
    "#### hh:mm:ss \t: Gamma Curve ( S.SSS sec )\r\n"
    "\t\t\t Gamma : 2.00\r\n"
    "#### hh:mm:ss \t: Gamma Curve ( S.SSS sec )\r\n"
    "\t\t\t Gamma : 1.64\r\n"
    "#### hh:mm:ss \t: Gamma Curve ( S.SSS sec )\r\n"
    "\t\t\t Gamma : -1.00\r\n"
    "#### hh:mm:ss \t: End Post-Processing ( S.SSS sec )\r\n"
    "=========================================================================================\r\n";

class ChainFilesTest : public testing::Test {
protected:
    void WriteProfile(const std::vector<std::pair<std::string, std::string>>& keys) const {
        ProfileWriter writer = ProfileFolder::PlainSection();
        writer.Key("VERSION", "2.5 test").Key("OUTPUTRANGE", "100");
        for (const auto& [key, value] : keys) writer.Key(key, value);
        writer.Stage("10", {{"POST_GAMMA_RATIO", "2"}})
            .Stage("10", {{"POST_GAMMA_RATIO", "0.25"}})
            .Stage("13")
            .Stage("10", {{"POST_GAMMA_RATIO", "-1"}});
        writer.WriteTo(folder_.At("profile.ini"));
    }

    // With one pixel of a list without stages, so that the dumps are that pixel.
    void WritePlainProfile(const std::string& writePath) const {
        ProfileFolder::PlainSection()
            .Key("SAVE_IMAGE", "1")
            .Key("WRITE_PATH", writePath)
            .WriteTo(folder_.At("profile.ini"));
    }

    std::vector<uint16_t> Run(const std::vector<uint16_t>& input = kInput) const {
        const CallProfile profile(folder_.WideProfile());
        std::vector<uint16_t> output(input.size());
        EXPECT_EQ(RunConfiguredChain({input.data(), output.data(), static_cast<int32_t>(input.size()), 1,
                                      folder_.WideProfile(), L"General"},
                                     nullptr),
                  kSuccess);
        return output;
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

TEST_F(ChainFilesTest, LogTellsTheRunByteForByte) {
    WriteProfile({{"SAVE_LOG", "1"}});
    Run();
    EXPECT_EQ(MaskTimes(Folder().Log()), kMaskedRun);
    EXPECT_THAT(Folder().Files(), ElementsAre("ExtraOralLog.txt"));
}

TEST_F(ChainFilesTest, EveryRunIsAppendedToTheLog) {
    WriteProfile({{"SAVE_LOG", "-1"}});  // any number but 0 switches it on
    WriteBytes(Folder().At("ExtraOralLog.txt"), "written before");
    Run();
    Run();
    EXPECT_EQ(MaskTimes(Folder().Log()), std::string("written before") + kMaskedRun + kMaskedRun);
}

TEST_F(ChainFilesTest, WithoutTheSwitchNoLogIsMade) {
    WriteProfile({{"SAVE_LOG", "0"}});
    Run();
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

TEST_F(ChainFilesTest, WithoutTheSwitchAnOldLogIsNotTouched) {
    WriteProfile({});
    WriteBytes(Folder().At("ExtraOralLog.txt"), "old");
    const auto longAgo =
        std::filesystem::last_write_time(Folder().At("ExtraOralLog.txt")) - std::chrono::hours(48);
    std::filesystem::last_write_time(Folder().At("ExtraOralLog.txt"), longAgo);
    const auto stamp = std::filesystem::last_write_time(Folder().At("ExtraOralLog.txt"));
    Run();
    EXPECT_EQ(Folder().Log(), "old");
    EXPECT_EQ(std::filesystem::last_write_time(Folder().At("ExtraOralLog.txt")), stamp);
}

TEST_F(ChainFilesTest, FrameIsTheSameWithAndWithoutLogAndDumps) {
    WriteProfile({});
    const std::vector<uint16_t> plain = Run();
    WriteProfile({{"SAVE_LOG", "1"}, {"SAVE_IMAGE", "1"}, {"WRITE_PATH", Folder().Narrow("")}});
    EXPECT_EQ(Run(), plain);
}

TEST_F(ChainFilesTest, LogThatIsAFolderEndsTheLogAndNothingElse) {
    WriteProfile({});
    const std::vector<uint16_t> plain = Run();
    std::filesystem::create_directory(Folder().At("ExtraOralLog.txt"));
    WriteProfile({{"SAVE_LOG", "1"}});
    EXPECT_EQ(Run(), plain);
    EXPECT_TRUE(std::filesystem::is_empty(Folder().At("ExtraOralLog.txt")));
}

TEST_F(ChainFilesTest, LogThatSomeoneElseWritesIsLeftToHim) {
    WriteProfile({});
    const std::vector<uint16_t> plain = Run();
    WriteProfile({{"SAVE_LOG", "1"}});
    OutputFile other(Folder().Wide(L"ExtraOralLog.txt"), OpenMode::AppendExclusive);
    ASSERT_TRUE(other.IsOpen());
    EXPECT_EQ(Run(), plain);
    ASSERT_TRUE(other.Append("his", 3));
    other.Close();
    EXPECT_EQ(Folder().Log(), "his");
    Run();
    EXPECT_EQ(MaskTimes(Folder().Log()), std::string("his") + kMaskedRun);
}

TEST_F(ChainFilesTest, LogOfTheNextRunOpensAgain) {
    WriteProfile({{"SAVE_LOG", "1"}});
    Run();
    OutputFile next(Folder().Wide(L"ExtraOralLog.txt"), OpenMode::AppendExclusive);
    EXPECT_TRUE(next.IsOpen());
}

TEST_F(ChainFilesTest, DumpsShowTheFrameAfterEveryStep) {
    WriteProfile({{"SAVE_IMAGE", "1"}, {"WRITE_PATH", Folder().Narrow("")}});
    const std::string original = ComingDump(0, "originalimage.raw");
    const std::string first = ComingDump(1, "result_gamma.raw");
    const std::string second = ComingDump(2, "result_gamma.raw");
    const std::string third = ComingDump(3, "result_gamma.raw");
    const std::string result = ComingDump(4, "result.raw");
    // A stage's curve file and its dump share a number. Only dumps are stored in small letters.
    const std::string firstCurve = ComingDump(1, "GammaCurve.txt");
    const std::string secondCurve = ComingDump(2, "GammaCurve.txt");
    const std::string thirdCurve = ComingDump(3, "GammaCurve.txt");
    const std::vector<uint16_t> output = Run();
    EXPECT_THAT(Folder().Files(), UnorderedElementsAre(original, first, second, third, result, firstCurve,
                                                       secondCurve, thirdCurve));
    EXPECT_EQ(ReadBytes(Folder().At(original)), RawBytes(kInput));
    EXPECT_EQ(ReadBytes(Folder().At(first)), RawBytes(kSquares));
    // 100 * .25^1.64 = 10.29 and 100 * .82^1.64 = 72.22
    EXPECT_EQ(ReadBytes(Folder().At(second)), RawBytes({0, 10, 72, 100}));
    EXPECT_EQ(ReadBytes(Folder().At(third)), RawBytes(output));
    EXPECT_EQ(ReadBytes(Folder().At(result)), RawBytes(output));
}

TEST_F(ChainFilesTest, FirstDumpComesAfterTheSaturationCap) {
    ProfileWriter()
        .Section("General")
        .Key("INTRAORAL_MASK", "0")
        .Key("INVERSE_INTENSITY", "0")
        .Key("SAVE_IMAGE", "1")
        .Key("SATURATION_VALUE", "300")
        .Key("WRITE_PATH", Folder().Narrow(""))
        .WriteTo(Folder().At("profile.ini"));
    const std::string original = ComingDump(0, "originalimage.raw");
    Run({10, 299, 300, 4000});
    EXPECT_EQ(ReadBytes(Folder().At(original)), RawBytes({10, 299, 299, 299}));
}

TEST_F(ChainFilesTest, SecondFrameGoesOnWithTheNumbersOfTheFirst) {
    WritePlainProfile(Folder().Narrow(""));
    const int32_t number = SharedConfiguredState().DumpNumber;
    const std::vector<std::string> expected = {
        ComingDump(0, "originalimage.raw"), ComingDump(1, "result.raw"), ComingDump(2, "originalimage.raw"),
        ComingDump(3, "result.raw")};
    Run({258});
    EXPECT_EQ(SharedConfiguredState().DumpNumber, number + 2);
    Run({772});
    EXPECT_EQ(SharedConfiguredState().DumpNumber, number + 4);
    EXPECT_THAT(Folder().Files(), testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(ReadBytes(Folder().At(expected[1])), "\x02\x01");
    EXPECT_EQ(ReadBytes(Folder().At(expected[3])), "\x04\x03");
}

TEST_F(ChainFilesTest, NumbersPast99HaveThreeDigits) {
    WritePlainProfile(Folder().Narrow(""));
    const ConfiguredState before = SharedConfiguredState();
    SharedConfiguredState().DumpNumber = 99;
    Run({258});
    SharedConfiguredState().DumpNumber = before.DumpNumber;
    EXPECT_THAT(Folder().Files(), ElementsAre("100_result.raw", "99_originalimage.raw"));
}

TEST_F(ChainFilesTest, FolderWithoutASeparatorAtItsEndGluesToTheName) {
    std::filesystem::create_directory(Folder().At("out"));
    WritePlainProfile(Folder().Narrow("out"));
    const std::string original = "out" + ComingDump(0, "originalimage.raw");
    const std::string result = "out" + ComingDump(1, "result.raw");
    Run({258});
    EXPECT_THAT(Folder().Files(), UnorderedElementsAre("out", original, result));
    EXPECT_TRUE(std::filesystem::is_empty(Folder().At("out")));
}

TEST_F(ChainFilesTest, FolderEndsWithABackslashOnEverySystem) {
    std::filesystem::create_directory(Folder().At("out"));
    WritePlainProfile(Folder().Narrow("out") + "\\");
    const std::string original = ComingDump(0, "originalimage.raw");
    Run({258});
    EXPECT_EQ(ReadBytes(Folder().At("out") / original), "\x02\x01");
}

TEST_F(ChainFilesTest, FolderNameKeepsItsLetters) {
    std::filesystem::create_directory(Folder().At("Out.RAW"));
    WritePlainProfile(Folder().Narrow("Out.RAW") + "\\");
    const std::string original = ComingDump(0, "originalimage.raw");
    Run({258});
    EXPECT_EQ(ReadBytes(Folder().At("Out.RAW") / original), "\x02\x01");
    EXPECT_THAT(Folder().Files(), ElementsAre("Out.RAW"));
}

TEST_F(ChainFilesTest, MissingFolderIsSilentAndTheNumbersRise) {
    WritePlainProfile(Folder().Narrow("missing") + "\\");
    const int32_t number = SharedConfiguredState().DumpNumber;
    EXPECT_EQ(Run({258}), std::vector<uint16_t>{258});
    EXPECT_THAT(Folder().Files(), IsEmpty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, number + 2);
}

TEST_F(ChainFilesTest, WithoutTheSwitchNoNumberIsTaken) {
    WriteProfile({{"SAVE_IMAGE", "0"}, {"WRITE_PATH", Folder().Narrow("")}});
    const int32_t number = SharedConfiguredState().DumpNumber;
    Run();
    EXPECT_EQ(SharedConfiguredState().DumpNumber, number);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

}  // namespace
}  // namespace vastrelline
