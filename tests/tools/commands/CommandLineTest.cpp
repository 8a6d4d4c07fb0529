// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "commands/CommandLine.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

struct WrongUse {
    const char* name;
    std::vector<std::string> arguments;
    const char* hint;  // stands in the error
};

class WrongUseTest : public testing::TestWithParam<WrongUse> {};

TEST_P(WrongUseTest, IsOneLineAndCodeTwo) {
    const ToolRun run = RunTool(GetParam().arguments, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    EXPECT_EQ(run.errors.rfind("vastrelline: ", 0), 0U) << run.errors;
    EXPECT_NE(run.errors.find(GetParam().hint), std::string::npos) << run.errors;
    EXPECT_EQ(run.report, "");
}

std::vector<std::string> RunWith(const std::string& picture, const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"run",       "missing_2x1.raw", "--profile", "missing.ini",
                                       "--section", "General",         "--out",     picture};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WrongUseTest,
    testing::Values(
        WrongUse{"UnknownCommand", {"walk"}, "--help"},
        WrongUse{"MisspeltCommand", {"runn"}, "did you mean 'run'?"},
        WrongUse{"RunWithFrameOnly", {"run", "a.raw"}, "required"},
        WrongUse{"UnknownOption", RunWith("a.png", {"--bogus"}), "--bogus"},
        WrongUse{"MisspeltOption", RunWith("a.png", {"--fource"}), "did you mean '--force'?"},
        WrongUse{"BadSize", RunWith("a.png", {"--size", "2by1"}), "2by1"},
        WrongUse{"ZeroSize", RunWith("a.png", {"--size", "0x1"}), "0x1"},
        WrongUse{"UnknownExport", RunWith("a.png", {"--export", "ImageProcessingX"}), "ImageProcessingX"},
        WrongUse{"UnknownEnding", RunWith("a.jpg", {}), ".png"},
        WrongUse{"BitmapFromThePlainExport", RunWith("a.bmp", {"--export", "ImageProcessing"}),
                 "ImageProcessing_N"},
        WrongUse{"PngFromABitmapExport", RunWith("a.png", {"--export", "ImageProcessing_NE"}), ".bmp"},
        WrongUse{"GeometryOfThePlainExport",
                 RunWith("a.png", {"--export", "ImageProcessing", "--geometry", "0", "0", "1", "1", "2", "2",
                                   "0", "0", "0", "0"}),
                 "--geometry"},
        WrongUse{"ShortGeometry", RunWith("a.png", {"--export", "ImageProcessingS", "--geometry", "1", "2"}),
                 "--geometry"},
        WrongUse{"GeometryOfLetters",
                 RunWith("a.png", {"--export", "ImageProcessingS", "--geometry", "a,0,0,0,0,0,0,0,0,0"}),
                 "--geometry"},
        WrongUse{"SensorOfThePlainExport",
                 RunWith("a.png", {"--export", "ImageProcessing", "--sensor-mode", "2"}), "--sensor-mode"},
        WrongUse{"PngOfASensor", RunWith("a.png", {"--sensor-mode", "2"}), ".bmp"},
        WrongUse{"MappingOfTheCrExport", RunWith("a.png", {"--export", "ImageProcessingCR", "--mapping"}),
                 "--mapping"},
        WrongUse{"BadWindow", RunWith("a.png", {"--window", "9:9"}), "9:9"},
        WrongUse{"WindowOfARaw", RunWith("a.raw", {"--window", "0:9"}), "--window"},
        WrongUse{"WindowAnd16Bits", RunWith("a.png", {"--window", "0:9", "--png16"}), "--png16"},
        WrongUse{"CompareOne", {"compare", "a.raw"}, "required"},
        WrongUse{"PhantomWithoutTarget", {"phantom", "--dose", "1"}, "--out"},
        WrongUse{"PhantomBitmap", {"phantom", "--out", "a.bmp"}, ".png"},
        WrongUse{"PhantomTooLarge", {"phantom", "--out", "a.raw", "--size", "20000x20000"}, "too large"},
        WrongUse{"PhantomWithoutDose", {"phantom", "--out", "a.raw", "--dose", "0"}, "--dose"},
        WrongUse{"PhantomDoseOfNoNumber", {"phantom", "--out", "a.raw", "--dose", "nan"}, "--dose"},
        WrongUse{"PhantomNegativeSeed", {"phantom", "--out", "a.raw", "--seed", "-1"}, "--seed"},
        WrongUse{"LineEndInAnArgument", {"compare", "a", "b", "--size", "1\n2"}, "1?2"}),
    [](const auto& test) { return test.param.name; });

TEST(CommandLine, HelpExplainsWithExamples) {
    const ToolRun whole = RunTool({"--help"}, MustNotBeCalled);
    EXPECT_EQ(whole.exitCode, 0);
    EXPECT_EQ(whole.errors, "");
    for (const std::string word : {"run", "phantom", "compare", "--version", "Examples", "Exit code"})
        EXPECT_NE(whole.report.find(word), std::string::npos) << word;
    for (const std::string command : {"run", "phantom", "compare"}) {
        const ToolRun help = RunTool({command, "--help"}, MustNotBeCalled);
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_NE(help.report.find("vastrelline " + command), std::string::npos);
        EXPECT_NE(help.report.find("Example"), std::string::npos);
    }
}

TEST(CommandLine, WithoutArgumentsACommandShowsThreeExamples) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{}, {"run"}, {"phantom"}, {"compare"}}) {
        const ToolRun run = RunTool(words, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.report, "");
        EXPECT_EQ(run.errors.rfind("Examples:\n", 0), 0U) << run.errors;
        EXPECT_LE(std::count(run.errors.begin(), run.errors.end(), '\n'), 8) << run.errors;
        size_t examples = 0;
        for (size_t at = run.errors.find("\n  vastrelline "); at != std::string::npos;
             at = run.errors.find("\n  vastrelline ", at + 1))
            ++examples;
        EXPECT_EQ(examples, 3U) << run.errors;
    }
}

TEST(CommandLine, OnlyErrorsAreSaidWhenQuietIsAskedFor) {
    const ToolRun run = RunTool({"compare", "missing_1x1.raw", "b_1x1.raw", "--quiet"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.errors, "missing_1x1.raw: does not exist\n");
}

TEST(CommandLine, VersionIsOneLine) {
    const ToolRun run = RunTool({"--version"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.report.rfind("vastrelline 1.", 0), 0U) << run.report;
    EXPECT_EQ(std::count(run.report.begin(), run.report.end(), '\n'), 1);
}

TEST(CompareCommand, TellsEqualFrames) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a_2x1.raw", "\x01\x00\x02\x01"s);
    WriteBytes(folder.Path() / "b.pgm", "P5\n2 1\n999\n\x00\x01\x01\x02"s);
    const ToolRun run =
        RunTool({"compare", folder.Narrow("a_2x1.raw"), folder.Narrow("b.pgm")}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.report, "equal: 2x1 pixels\n");
}

TEST(CompareCommand, TellsDifferentFrames) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "\x01\x00\x02\x01"s);
    WriteBytes(folder.Path() / "b.raw", "\x01\x00\x05\x00"s);
    const ToolRun run = RunTool({"compare", folder.Narrow("a.raw"), folder.Narrow("b.raw"), "--size", "1x2"},
                                MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.report,
              "different: 1 of 2 pixels (50.0000 %), largest difference 253\n"
              "noise      PSNR 27.19 dB at peak 4095\n"
              "by levels  129 to 256: 1\n"
              "largest    at (0, 1): 258, 5\n"
              "places over the frame (x, y): first frame, second frame\n"
              "  (0, 1): 258, 5\n");
    EXPECT_EQ(run.errors, "");
}

TEST(CompareCommand, FramesOfOtherSizesAreDifferent) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a_2x1.raw", "1234");
    WriteBytes(folder.Path() / "b_1x2.raw", "1234");
    const ToolRun run =
        RunTool({"compare", folder.Narrow("a_2x1.raw"), folder.Narrow("b_1x2.raw")}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.report, "different: the sizes are 2x1 and 1x2\n");
}

TEST(CompareCommand, AMissingFrameIsAFailure) {
    const TemporaryFolder folder;
    const ToolRun run =
        RunTool({"compare", folder.Narrow("a_2x1.raw"), folder.Narrow("b_2x1.raw")}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.errors, folder.Narrow("a_2x1.raw") + ": does not exist\n");
}

TEST(PhantomCommand, AllKindsOfFilesHoldTheSameFrame) {
    const TemporaryFolder folder;
    for (const std::string leaf : {"a_40x50.raw", "a.pgm", "a.png"}) {
        const ToolRun run =
            RunTool({"phantom", "--size", "40x50", "--out", folder.Narrow(leaf)}, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_NE(run.report.find("40x50"), std::string::npos);
        EXPECT_EQ(
            RunTool({"compare", folder.Narrow("a_40x50.raw"), folder.Narrow(leaf)}, MustNotBeCalled).exitCode,
            0);
    }
    EXPECT_EQ(std::filesystem::file_size(folder.Path() / "a_40x50.raw"), 4000U);
    EXPECT_EQ(ReadBytes(folder.Path() / "a.pgm").substr(0, 14), "P5\n40 50\n4095\n");
}

TEST(PhantomCommand, ReplacesNothingWithoutForce) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "old");
    const std::vector<std::string> arguments{"phantom", "--size", "4x5", "--out", folder.Narrow("a.raw")};
    const ToolRun refused = RunTool(arguments, MustNotBeCalled);
    EXPECT_EQ(refused.exitCode, 5);
    EXPECT_NE(refused.errors.find("--force"), std::string::npos);
    EXPECT_EQ(ReadBytes(folder.Path() / "a.raw"), "old");
    std::vector<std::string> forced = arguments;
    forced.emplace_back("--force");
    EXPECT_EQ(RunTool(forced, MustNotBeCalled).exitCode, 0);
    EXPECT_EQ(std::filesystem::file_size(folder.Path() / "a.raw"), 40U);
}

}  // namespace
}  // namespace vastrelline
