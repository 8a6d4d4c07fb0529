// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <new>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "commands/RunCommand.h"
#include "formats/PngFormat.h"
#include "platform/Cancellation.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

// A folder with a frame of the levels 1, 2, 3, 1023 and a profile of the range 1023.
class RunCommandTest : public testing::Test {
protected:
    RunCommandTest() {
        WriteBytes(folder_.Path() / "in_2x2.raw", "\x01\x00\x02\x00\x03\x00\xFF\x03"s);
        WriteBytes(folder_.Path() / "p.ini", "[General]\nOUTPUTRANGE=1023\n");
    }

    ToolRun Run(const std::string& leaf, const std::vector<std::string>& more,
                const ExportCaller& callExport) const {
        std::vector<std::string> arguments{"run",       folder_.Narrow("in_2x2.raw"),
                                           "--profile", folder_.Narrow("p.ini"),
                                           "--section", "General",
                                           "--out",     folder_.Narrow(leaf)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunTool(arguments, callExport);
    }

    bool HasOnlyItsOwnFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder_.Path()), {}) == 2;
    }

    std::vector<uint8_t> FileBytes(const std::string& leaf) const {
        const std::string text = ReadBytes(folder_.Path() / leaf);
        return {text.begin(), text.end()};
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
};

// An export that gives the frame turned round: the last pixel first.
int32_t Reverse(ExportRequest& request) {
    std::reverse_copy(request.frame.pixels.begin(), request.frame.pixels.end(), request.output.begin());
    return 0;
}

int32_t WriteBitmap(ExportRequest& request) {
    WriteBytes(request.bitmapPath, "BM...");
    return 0;
}

TEST_F(RunCommandTest, WritesWhatTheExportGives) {
    const ToolRun run = Run("out.raw", {}, Reverse);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(ReadBytes(folder_.Path() / "out.raw"), "\xFF\x03\x03\x00\x02\x00\x01\x00"s);
    for (const std::string& part : {"2x2"s, "input    levels 1 to 1023\n"s, "output   levels 1 to 1023\n"s,
                                    "ImageProcessing returned 0 (success)"s, folder_.Narrow("out.raw")})
        EXPECT_NE(run.report.find(part), std::string::npos) << part << '\n' << run.report;
}

TEST_F(RunCommandTest, AnExportThatChangesTheFrameDoesNotChangeTheFile) {
    EXPECT_EQ(Run("out.raw", {},
                  [](ExportRequest& request) {
                      std::fill(request.frame.pixels.begin(), request.frame.pixels.end(), uint16_t{0});
                      return 0;
                  })
                  .exitCode,
              0);
    EXPECT_EQ(ReadBytes(folder_.Path() / "in_2x2.raw"), "\x01\x00\x02\x00\x03\x00\xFF\x03"s);
}

TEST_F(RunCommandTest, APngShowsTheOutputRange) {
    ASSERT_EQ(Run("out.png", {}, Reverse).exitCode, 0);
    // 3 / 1023 * 255 = 0.75, 2 / 1023 * 255 = 0.499, 1 / 1023 * 255 = 0.249
    EXPECT_EQ(DecodePng(FileBytes("out.png")).pixels, (std::vector<uint16_t>{255, 1, 0, 0}));
}

TEST_F(RunCommandTest, APngShowsTheWindowThatIsAskedFor) {
    ASSERT_EQ(Run("out.png", {"--window", "1:3"}, Reverse).exitCode, 0);
    EXPECT_EQ(DecodePng(FileBytes("out.png")).pixels, (std::vector<uint16_t>{255, 255, 128, 0}));
}

TEST_F(RunCommandTest, APngOf16BitsKeepsAllLevels) {
    ASSERT_EQ(Run("out.png", {"--png16"}, Reverse).exitCode, 0);
    EXPECT_EQ(DecodePng(FileBytes("out.png")).pixels, (std::vector<uint16_t>{1023, 3, 2, 1}));
}

TEST_F(RunCommandTest, APgmHasTheOutputRangeAsItsTop) {
    ASSERT_EQ(Run("out.pgm", {}, Reverse).exitCode, 0);
    EXPECT_EQ(ReadBytes(folder_.Path() / "out.pgm"), "P5\n2 2\n1023\n\x03\xFF\x00\x03\x00\x02\x00\x01"s);
}

TEST_F(RunCommandTest, EverythingReachesTheExport) {
    ExportRequest seen;
    std::string profile;
    const ToolRun run = Run("out.raw",
                            {"--export", "ImageProcessingS", "--mapping", "--spot-correction", "--geometry",
                             "1", "-2", "3", "4", "5", "6", "7", "8", "9", "10"},
                            [&](ExportRequest& request) {
                                seen = request;
                                profile = ReadBytes(request.profile);
                                return 0;
                            });
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(seen.kind, ExportKind::S);
    EXPECT_EQ(seen.frame.width, 2);
    EXPECT_EQ(seen.frame.height, 2);
    EXPECT_EQ(seen.frame.pixels, (std::vector<uint16_t>{1, 2, 3, 1023}));
    EXPECT_EQ(seen.output, std::vector<uint16_t>(4, 0));
    EXPECT_EQ(profile, "[General]\nOUTPUTRANGE=1023\nSAVE_LOG=1\nMSGBOX_ENABLE=0\n");
    EXPECT_EQ(seen.section, "General");
    EXPECT_TRUE(seen.applyMapping);
    EXPECT_TRUE(seen.applySpotCorrection);
    EXPECT_EQ(seen.bitmapPath, "");
    EXPECT_EQ(seen.geometry, (std::array<int32_t, 10>{1, -2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(RunCommandTest, WhatIsNotAskedForIsNotPassed) {
    ExportRequest seen;
    ASSERT_EQ(Run("out.raw", {},
                  [&](ExportRequest& request) {
                      seen = request;
                      return 0;
                  })
                  .exitCode,
              0);
    EXPECT_EQ(seen.kind, ExportKind::Plain);
    EXPECT_FALSE(seen.applyMapping);
    EXPECT_FALSE(seen.applySpotCorrection);
    EXPECT_FALSE(seen.geometry.has_value());
    EXPECT_EQ(seen.sensorFolder, "");
    EXPECT_EQ(seen.sensorMode, 0);
}

TEST_F(RunCommandTest, TheSensorReachesItsExport) {
    ExportRequest seen;
    const ToolRun run =
        Run("out.bmp", {"--export", "ImageProcessing_NE", "--sensor-folder", "ABC", "--sensor-mode", "2"},
            [&](ExportRequest& request) {
                seen = request;
                return WriteBitmap(request);
            });
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(seen.kind, ExportKind::NE);
    EXPECT_EQ(seen.sensorFolder, "ABC");
    EXPECT_EQ(seen.sensorMode, 2);
}

TEST_F(RunCommandTest, AnyCodeButZeroIsAFailureWithoutPicture) {
    for (const int32_t code : {1, 2, 3, 4, 5, 6, 77}) {
        for (const std::vector<std::string>& more :
             {std::vector<std::string>{"out.raw"}, {"out.bmp", "--export", "ImageProcessing_N"}}) {
            const ToolRun run =
                Run(more.front(), {more.begin() + 1, more.end()}, [code](ExportRequest&) { return code; });
            EXPECT_EQ(run.exitCode, code == 5 ? 5 : 4) << "5: the bitmap could not be saved";
            EXPECT_NE(run.errors.find("returned " + std::to_string(code) + " ("), std::string::npos);
            EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1);
            EXPECT_TRUE(HasOnlyItsOwnFiles());
        }
    }
}

TEST_F(RunCommandTest, AnExportThatThrowsLeavesNothing) {
    const ToolRun run =
        Run("out.bmp", {"--export", "ImageProcessing_N"}, [](ExportRequest& request) -> int32_t {
            WriteBytes(request.bitmapPath, "half a fi");
            throw std::bad_alloc();
        });
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(run.errors, "vastrelline: out of memory\n");
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(RunCommandTest, TheBitmapTakesItsNameWhenItIsComplete) {
    for (const std::string name : {"ImageProcessing_N", "ImageProcessing_NS", "ImageProcessing_NE"}) {
        const ToolRun run = Run("out.bmp", {"--export", name, "--force"}, WriteBitmap);
        ASSERT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_EQ(ReadBytes(folder_.Path() / "out.bmp"), "BM...");
    }
}

TEST_F(RunCommandTest, AMissingBitmapIsNoticed) {
    const ToolRun run = Run("out.bmp", {"--export", "ImageProcessing_NS"}, [](ExportRequest&) { return 0; });
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_NE(run.errors.find("saved no bitmap"), std::string::npos);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(RunCommandTest, ReplacesNothingWithoutForce) {
    for (const std::vector<std::string>& more :
         {std::vector<std::string>{"out.raw"}, {"out.bmp", "--export", "ImageProcessing_N"}}) {
        WriteBytes(folder_.Path() / more.front(), "old");
        const ToolRun run = Run(more.front(), {more.begin() + 1, more.end()}, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 5);
        EXPECT_NE(run.errors.find("--force"), std::string::npos) << run.errors;
        EXPECT_EQ(ReadBytes(folder_.Path() / more.front()), "old");
    }
    EXPECT_EQ(Run("out.raw", {"--force"}, Reverse).exitCode, 0);
    EXPECT_EQ(ReadBytes(folder_.Path() / "out.raw").size(), 8U);
}

TEST_F(RunCommandTest, NeitherTheFrameNorTheProfileIsEverReplaced) {
    EXPECT_EQ(Run("in_2x2.raw", {"--force"}, MustNotBeCalled).exitCode, 2);
    std::filesystem::create_hard_link(folder_.Path() / "p.ini", folder_.Path() / "p.raw");
    EXPECT_EQ(Run("p.raw", {"--force"}, MustNotBeCalled).exitCode, 2);
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), "[General]\nOUTPUTRANGE=1023\n");
}

TEST_F(RunCommandTest, TwoResultsNeverGoToOneFile) {
    std::vector<std::vector<std::string>> cases{
        {"--strip", folder_.Narrow("out.png")},
        {"--strip", folder_.Narrow("s.png"), "--log", folder_.Narrow("s.png")}};
#ifdef _WIN32
    cases.push_back({"--strip", folder_.Narrow("OUT.png")});
    cases.push_back({"--log", folder_.Narrow("\u00E4.png"), "--strip", folder_.Narrow("\u00C4.png")});
#endif
    for (const std::vector<std::string>& more : cases) {
        for (const bool mayReplace : {false, true}) {
            std::vector<std::string> all = more;
            if (mayReplace) all.push_back("--force");
            const ToolRun run = Run("out.png", all, MustNotBeCalled);
            EXPECT_EQ(run.exitCode, 2) << run.errors;
            EXPECT_NE(run.errors.find(" is the file of --"), std::string::npos) << run.errors;
        }
    }
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "out.png"));
}

TEST_F(RunCommandTest, TwoResultsNeverGoToOneFileThroughALink) {
    std::filesystem::create_directory_symlink(folder_.Path(), folder_.Path() / "link");
    const ToolRun run = Run("out.png", {"--log", folder_.Narrow("link") + "/out.png"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2) << run.errors;
    EXPECT_NE(run.errors.find(" is the file of --"), std::string::npos) << run.errors;
}

TEST_F(RunCommandTest, ALogThatIsNotThereIsSaid) {
    const ToolRun run = Run("out.raw", {"--in-place", "--log", folder_.Narrow("log.txt")}, Reverse);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.errors.find("the run wrote no log"), std::string::npos) << run.errors;
}

TEST_F(RunCommandTest, IsCancelledAlsoBetweenTwoCalls) {
    const auto cancelledRun = [this](const std::string& leaf, const ExportCaller& callExport) {
        CatchCancellation();
        const ToolRun run = Run(leaf, {}, callExport);
        const bool isClean = run.errors == "vastrelline: cancelled\n" && HasOnlyItsOwnFiles();
        std::exit(isClean ? run.exitCode : 1);
    };
    const auto raiseIn = [](ExportRequest&) { return raise(SIGINT); };
    EXPECT_EXIT(cancelledRun("out.raw", raiseIn), testing::ExitedWithCode(130), "");
    // What is then missing is no fault of the library.
    EXPECT_EXIT(cancelledRun("out.bmp", raiseIn), testing::ExitedWithCode(130), "");
}

TEST_F(RunCommandTest, TheBitmapIsMadeInAFolderOfTheTool) {
    const ToolRun run = Run("out.bmp", {}, [this](ExportRequest& request) {
        EXPECT_NE(std::filesystem::path(request.bitmapPath).parent_path(), folder_.Path());
        return WriteBitmap(request);
    });
    EXPECT_EQ(run.exitCode, 0) << run.errors;
}

TEST_F(RunCommandTest, AMissingFolderIsNoticedBeforeTheWork) {
    const ToolRun run = Run("missing/out.raw", {}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_NE(run.errors.find("cannot be written"), std::string::npos);
}

TEST_F(RunCommandTest, ADamagedFrameIsAFailure) {
    WriteBytes(folder_.Path() / "in_2x2.raw", "1234567");
    const ToolRun run = Run("out.raw", {}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_NE(run.errors.find("has 8 bytes, the file has 7"), std::string::npos) << run.errors;
}

TEST_F(RunCommandTest, InPlaceTheRunsOwnLogIsNoPlaceForItsCopy) {
    const ToolRun run = Run("out.raw", {"--in-place", "--log", folder_.Narrow("ExtraOralLog.txt"), "--force"},
                            MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

TEST_F(RunCommandTest, InPlaceTheProfileItselfIsUsed) {
    std::string profile;
    const ToolRun run = Run("out.raw", {"--in-place"}, [&](ExportRequest& request) {
        profile = request.profile;
        return 0;
    });
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(profile, folder_.Narrow("p.ini"));
}

TEST_F(RunCommandTest, KeepsTheLogWhereItIsWanted) {
    const ToolRun run = Run("out.raw", {"--log", folder_.Narrow("log.txt")}, [](ExportRequest& request) {
        WriteBytes(std::filesystem::path(request.profile).parent_path() / "ExtraOralLog.txt", "words");
        return 0;
    });
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(ReadBytes(folder_.Path() / "log.txt"), "words");
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "ExtraOralLog.txt"));
}

TEST_F(RunCommandTest, TakesAnExportThatKnowsTheMode) {
    WriteBytes(
        folder_.Path() / "p.ini",
        "[General]\nPROCMODE=3\nFunctionCount=1\n00_Function_Number=10\n[IP_LOWMODE]\nOUTPUTRANGE=9\n");
    ExportRequest seen;
    const auto keep = [&](ExportRequest& request) {
        seen = request;
        return request.bitmapPath.empty() ? 0 : WriteBitmap(request);
    };
    EXPECT_EQ(Run("out.raw", {}, keep).exitCode, 0);
    EXPECT_EQ(seen.kind, ExportKind::S);
    EXPECT_EQ(Run("out.bmp", {}, keep).exitCode, 0);
    EXPECT_EQ(seen.kind, ExportKind::NS);
    const ToolRun chosen = Run("out2.raw", {"--export", "ImageProcessing"}, keep);
    EXPECT_EQ(seen.kind, ExportKind::Plain);
    EXPECT_NE(chosen.errors.find("[mode-and-export]"), std::string::npos) << chosen.errors;
    EXPECT_NE(chosen.report.find("ImageProcessing: fixed chain"), std::string::npos) << chosen.report;
}

TEST_F(RunCommandTest, RefusesARunThatGoesByNothing) {
    const auto run = [&](const std::string& profile, const std::string& section,
                         const std::vector<std::string>& more) {
        std::vector<std::string> words{
            "run",   folder_.Narrow("in_2x2.raw"), "--profile", profile, "--section", section,
            "--out", folder_.Narrow("out.raw"),    "--force"};
        words.insert(words.end(), more.begin(), more.end());
        return RunTool(words, more.empty() ? MustNotBeCalled : ExportCaller(Reverse));
    };
    const ToolRun misspelt = run(folder_.Narrow("p.ini"), "Generl", {});
    EXPECT_EQ(misspelt.exitCode, 2);
    EXPECT_NE(misspelt.errors.find("; did you mean 'General'? --force-section"), std::string::npos)
        << misspelt.errors;
    const ToolRun forced = run(folder_.Narrow("p.ini"), "Generl", {"--force-section"});
    EXPECT_EQ(forced.exitCode, 0);
    EXPECT_NE(forced.errors.find("[missing-section]"), std::string::npos) << forced.errors;

    WriteBytes(folder_.Path() / "empty.ini", "");
    EXPECT_EQ(run(folder_.Narrow("empty.ini"), "General", {}).exitCode, 3);
    EXPECT_EQ(run(folder_.Path().string(), "General", {}).exitCode, 3);
    EXPECT_EQ(run(folder_.Narrow("missing.ini"), "General", {}).exitCode, 3);
}

TEST_F(RunCommandTest, WarnsOfABlackResultAndOfFewBits) {
    const ToolRun black = Run("out.raw", {}, [](ExportRequest&) { return 0; });
    EXPECT_EQ(black.exitCode, 0);
    EXPECT_NE(black.errors.find("[black-result]"), std::string::npos) << black.errors;
    WriteBytes(folder_.Path() / "in_2x2.raw", "\x01\x00\x02\x00\x03\x00\xFF\xFF"s);
    const ToolRun bright = Run("out2.raw", {}, Reverse);
    EXPECT_NE(bright.errors.find("[above-bits]"), std::string::npos) << bright.errors;
    EXPECT_EQ(Run("out3.raw", {"--quiet"}, Reverse).errors, "");
}

TEST_F(RunCommandTest, PrintsOneObjectForPrograms) {
    const ToolRun run = Run("out.raw", {"--json"}, Reverse);
    EXPECT_EQ(run.exitCode, 0);
    const nlohmann::json object = nlohmann::json::parse(run.report);
    EXPECT_EQ(object.at("export"), "ImageProcessing");
    EXPECT_EQ(object.at("output").at("greatest"), 1023);
    const ToolRun failed = Run("out4.raw", {"--json"}, [](ExportRequest&) { return 6; });
    EXPECT_EQ(failed.exitCode, 4);
    const nlohmann::json error = nlohmann::json::parse(failed.report);
    EXPECT_EQ(error.at("exit"), 4);
    EXPECT_NE(error.at("error").at("what").get<std::string>().find("returned 6"), std::string::npos);
}

TEST_F(RunCommandTest, AStripThatFailsLeavesNothing) {
    int calls = 0;
    const ToolRun run = Run("out.raw", {"--strip", folder_.Narrow("strip.png")},
                            [&](ExportRequest&) { return ++calls == 1 ? 0 : 6; });
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_TRUE(HasOnlyItsOwnFiles());
}

}  // namespace
}  // namespace vastrelline
