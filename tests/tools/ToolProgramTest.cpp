// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "ToolProgram.h"
#include "platform/PathText.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

// The built program with the library itself.
namespace vastrelline {
namespace {

TEST_F(ToolProgram, EnhancesAFrame) {
    for (const std::string name : {"ImageProcessing", "ImageProcessingS"}) {
        // A profile of its own: from the second run on, one without a sensor has a message.
        std::filesystem::copy_file(folder_.Path() / "p.ini", folder_.Path() / (name + ".ini"));
        const ToolRun run = Process(name, name + ".raw", name + ".ini");
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_EQ(run.errors, "");
        EXPECT_NE(run.report.find(name + " returned 0 (success)"), std::string::npos) << run.report;
        EXPECT_EQ(std::filesystem::file_size(folder_.Path() / (name + ".raw")), 130U * 167U * 2U);
        const ToolRun changed =
            Start({"compare", frame_, folder_.Narrow(name + ".raw"), "--size", "130x167"});
        EXPECT_EQ(changed.exitCode, 1) << "the gamma curve changed nothing";
    }
    EXPECT_EQ(Start({"compare", folder_.Narrow("ImageProcessing.raw"), folder_.Narrow("ImageProcessingS.raw"),
                     "--size", "130x167"})
                  .exitCode,
              0);
}

TEST_F(ToolProgram, MakesAPictureThatViewersOpen) {
    EXPECT_EQ(Process("ImageProcessing", "out.png", "p.ini").exitCode, 0);
    EXPECT_EQ(ReadBytes(folder_.Path() / "out.png").substr(0, 8), "\x89PNG\r\n\x1A\n");
}

// Each command meets a name that no code page holds.
TEST_F(ToolProgram, TakesNamesOfAnyCharacter) {
    const std::filesystem::path folder = folder_.Path() / PathOf("Z\xC3\xA4hne \xE6\xAD\xAF");
    std::filesystem::create_directory(folder);
    const auto at = [&](const char* leaf) { return (folder / PathOf(leaf)).string(); };
    std::filesystem::copy_file(folder_.Path() / "p.ini", folder / "p.ini");
    const std::vector<std::vector<std::string>> commands{
        {"phantom", "--size", "130x167", "--out", at("\xE6\xAD\xAF.png")},
        {"info", at("\xE6\xAD\xAF.png")},
        {"convert", at("\xE6\xAD\xAF.png"), at("\xE6\xAD\xAF.tif")},
        {"run", at("\xE6\xAD\xAF.tif"), "--profile", at("p.ini"), "--section", "General", "--out",
         at("out \xE6\xAD\xAF.png"), "--log", at("\xE6\xAD\xAF.txt"), "--record", at("\xE6\xAD\xAF.json"),
         "--strip", at("strip.png")},
        {"rerun", at("\xE6\xAD\xAF.json")},
        {"stages", at("\xE6\xAD\xAF.png"), "--profile", at("p.ini"), "--section", "General", "--out",
         at("stages")},
        {"batch", at(""), "--profile", at("p.ini"), "--section", "General", "--out",
         at("batch \xE6\xAD\xAF")},
        {"compare", at("batch \xE6\xAD\xAF"), at("batch \xE6\xAD\xAF"), "--report", at("\xE6\xAD\xAF.html")},
        {"profile", "lint", at("p.ini")},
        {"profile", "set", at("p.ini"), "--section", "General", "BITSTORED=12"},
        {"verify", at("m.json"), "--add", "--frame", at("\xE6\xAD\xAF.png"), "--profile", at("p.ini"),
         "--section", "General"},
        {"verify", at("m.json")}};
    for (const std::vector<std::string>& words : commands) {
        const ToolRun run = Start(words);
        EXPECT_EQ(run.exitCode, 0) << words[0] << ": " << run.errors << run.report;
    }
    EXPECT_TRUE(std::filesystem::exists(folder / PathOf("batch \xE6\xAD\xAF/out \xE6\xAD\xAF.png")));
}

TEST_F(ToolProgram, TellsThatTheProfileIsMissing) {
    const ToolRun run = Process("ImageProcessing", "out.png", "missing.ini");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.errors, folder_.Narrow("missing.ini") + ": does not exist\n");
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "out.png"));
}

TEST_F(ToolProgram, LeavesABitmapOfTheFrame) {
    for (const std::string name : {"ImageProcessing_N", "ImageProcessing_NS", "ImageProcessing_NE"}) {
        const ToolRun run = Process(name, name + ".bmp", "p.ini");
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        const std::string bitmap = ReadBytes(folder_.Path() / (name + ".bmp"));
        EXPECT_EQ(bitmap.substr(0, 2), "BM");
        // Rows of 130 pixels take 132 bytes.
        EXPECT_EQ(bitmap.size(), 1078U + 132U * 167U);

        // The tool reads what the library wrote: rows from the bottom, behind head and palette.
        std::string levels;
        for (size_t row = 167; row-- > 0;) levels += bitmap.substr(1078 + row * 132, 130);
        WriteBytes(folder_.Path() / (name + ".pgm"), "P5\n130 167\n255\n" + levels);
        const ToolRun compared =
            Start({"compare", folder_.Narrow(name + ".bmp"), folder_.Narrow(name + ".pgm")});
        EXPECT_EQ(compared.exitCode, 0) << compared.report << compared.errors;
    }
}

TEST_F(ToolProgram, TakesAFrameOfOneChainForEveryKindOfFile) {
    ASSERT_EQ(Start({"phantom", "--size", "130x167", "--out", folder_.Narrow("frame.png")}).exitCode, 0);
    ASSERT_EQ(Process("ImageProcessing", "a_130x167.raw", "p.ini").exitCode, 0);
    ASSERT_EQ(Start({"run", folder_.Narrow("frame.png"), "--profile", folder_.Narrow("p.ini"), "--section",
                     "General", "--out", folder_.Narrow("b.png"), "--png16"})
                  .exitCode,
              0);
    EXPECT_EQ(Start({"compare", folder_.Narrow("a_130x167.raw"), folder_.Narrow("b.png")}).exitCode, 0);
}

TEST_F(ToolProgram, LeavesTheProfileByteForByte) {
    const std::string before = ReadBytes(folder_.Path() / "p.ini");
    ASSERT_EQ(Process("ImageProcessing", "out.raw", "p.ini").exitCode, 0);
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), before);
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "ExtraOralLog.txt"));
}

TEST_F(ToolProgram, InPlaceStoresWhatARunStores) {
    const ToolRun run = Start({"run", frame_, "--profile", folder_.Narrow("p.ini"), "--section", "General",
                               "--out", folder_.Narrow("out.raw"), "--in-place"});
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_NE(ReadBytes(folder_.Path() / "p.ini").find("[Settings]"), std::string::npos);
}

TEST_F(ToolProgram, TellsStagesOfTheLibrarysLog) {
    const ToolRun run = Process("ImageProcessing", "out.raw", "p.ini");
    EXPECT_NE(run.report.find("stages    0  Gamma curve"), std::string::npos) << run.report;
    EXPECT_EQ(run.report.find("Gamma curve                -"), std::string::npos) << run.report;
}

TEST_F(ToolProgram, DrawsAStripOfAllStages) {
    const ToolRun run = Start({"run", frame_, "--profile", folder_.Narrow("p.ini"), "--section", "General",
                               "--out", folder_.Narrow("out.png"), "--strip", folder_.Narrow("strip.png")});
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(ReadBytes(folder_.Path() / "strip.png").substr(0, 8), "\x89PNG\r\n\x1A\n");
}

TEST_F(ToolProgram, MakesAResultAgain) {
    const ToolRun made = Start({"run", frame_, "--profile", folder_.Narrow("p.ini"), "--section", "General",
                                "--out", folder_.Narrow("out.png"), "--record", folder_.Narrow("out.json")});
    ASSERT_EQ(made.exitCode, 0) << made.errors;
    const ToolRun again = Start({"rerun", folder_.Narrow("out.json")});
    EXPECT_EQ(again.exitCode, 0) << again.errors << again.report;
    const ToolRun picture =
        Start({"rerun", folder_.Narrow("out.png"), "--frame", frame_, "--profile", folder_.Narrow("p.ini")});
    EXPECT_EQ(picture.exitCode, 0) << picture.errors << picture.report;
    EXPECT_NE(picture.report.find("shows this result"), std::string::npos) << picture.report;
}

TEST_F(ToolProgram, ShowsTheFrameAfterEveryStage) {
    const std::string out = folder_.Narrow("stages");
    for (const std::string name : {"ImageProcessing", "ImageProcessingS", "ImageProcessing_N",
                                   "ImageProcessing_NS", "ImageProcessing_NE"}) {
        const ToolRun run = Start({"stages", frame_, "--profile", folder_.Narrow("p.ini"), "--section",
                                   "General", "--out", out, "--export", name, "--force"});
        ASSERT_EQ(run.exitCode, 0) << run.errors;
        // The chain caps the phantom's brightest levels, so that it begins with another frame.
        EXPECT_EQ(LeavesOf(out),
                  (std::vector<std::string>{"00_frame.png", "01_input.png", "02_gamma_curve.png",
                                            "02_gamma_curve.svg", "03_result.png", "contact.png",
                                            "stages.json", "stages.txt"}))
            << name;
    }
    const ToolRun again = Start({"rerun", out + "/stages.json"});
    EXPECT_EQ(again.exitCode, 0) << again.errors << again.report;
}

TEST_F(ToolProgram, ComparesBuilds) {
    const auto against = [&](const std::string& library) {
        return Start({"run", frame_, "--profile", folder_.Narrow("p.ini"), "--section", "General",
                      "--against", library});
    };
    std::filesystem::copy_file(VASTRELLINE_LIBRARY, folder_.Path() / "old.so");
    const ToolRun same = against(folder_.Narrow("old.so"));
    EXPECT_EQ(same.exitCode, 0) << same.errors << same.report;
    EXPECT_NE(same.report.find("00 Gamma curve"), std::string::npos) << same.report;
    const ToolRun text = against(folder_.Narrow("p.ini"));
    EXPECT_EQ(text.exitCode, 3);
    EXPECT_EQ(std::count(text.errors.begin(), text.errors.end(), '\n'), 1) << text.errors;
    EXPECT_NE(text.errors.find("p.ini: cannot be loaded as a library"), std::string::npos) << text.errors;
}

TEST_F(ToolProgram, SweepsAKey) {
    const ToolRun run =
        Start({"sweep", frame_, "--profile", folder_.Narrow("p.ini"), "--section", "General", "--out",
               folder_.Narrow("sweep"), "--set", "00_POST_GAMMA_RATIO=1:1.5:0.25", "--jobs", "2"});
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    for (const char* const value : {"1", "1.25", "1.5"})
        EXPECT_TRUE(std::filesystem::exists(folder_.Path() / "sweep" /
                                            ("00_POST_GAMMA_RATIO=" + std::string(value) + ".png")));
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kGammaProfile);
}

TEST_F(ToolProgram, EndsARunThatTakesTooLong) {
    // Passes of a large median on a whole radiograph take more than a minute.
    WriteBytes(folder_.Path() / "slow.ini",
               "[General]\nPROCMODE=2\nINTRAORAL_MASK=0\nFunctionCount=1\n00_Function_Number=7\n"
               "00_MEDIAN_SIZE=301\n00_MEDIAN_REPEAT=2000000000\n");
    const std::string frame = (SourceTreeFolder() / "tests/data/frames/bitewing_1300x1668.png").string();
    const ToolRun run = Start({"run", frame, "--profile", folder_.Narrow("slow.ini"), "--section", "General",
                               "--out", folder_.Narrow("out.png"), "--timeout", "0.1"});
    EXPECT_EQ(run.exitCode, 4) << run.report;
    EXPECT_NE(run.errors.find("took longer than 100 ms"), std::string::npos) << run.errors;
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "out.png"));
}

TEST_F(ToolProgram, WrongUseIsCodeTwo) {
    const ToolRun run = Start({"run", "a.raw"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.errors.rfind("vastrelline: ", 0), 0U);
}

}  // namespace
}  // namespace vastrelline
