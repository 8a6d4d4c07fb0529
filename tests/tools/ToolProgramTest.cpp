// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "ToolRun.h"
#include "ToolWorkers.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"

// The built program with the library itself.
namespace vastrelline {
namespace {

// A chain of one stage, the gamma curve.
constexpr const char* kProfile =
    "[General]\nPROCMODE=2\nBITSTORED=12\nINTRAORAL_MASK=0\nINVERSE_INTENSITY=0\nFunctionCount=1\n"
    "00_Function_Number=10\n";

pid_t BeginTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments) {
    std::vector<std::string> words{VASTRELLINE_TOOL};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);

    const std::string report = folder.Narrow("report.txt");
    const std::string errors = folder.Narrow("errors.txt");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int flags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, report.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), flags, 0600);
    pid_t child = 0;
    const int failure = posix_spawn(&child, VASTRELLINE_TOOL, &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error("the tool does not start");
    return child;
}

ToolRun AwaitTool(const TemporaryFolder& folder, pid_t child) {
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status))
        throw std::runtime_error("the tool crashed");
    return {WEXITSTATUS(status), ReadBytes(folder.Path() / "report.txt"),
            ReadBytes(folder.Path() / "errors.txt")};
}

ToolRun StartTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments) {
    return AwaitTool(folder, BeginTool(folder, arguments));
}

class ToolProgram : public testing::Test {
protected:
    ToolProgram() {
        WriteBytes(folder_.Path() / "p.ini", kProfile);
        const ToolRun phantom = Start({"phantom", "--size", "130x167", "--out", frame_});
        if (phantom.exitCode != 0) throw std::runtime_error(phantom.errors);
    }

    ToolRun Start(const std::vector<std::string>& arguments) const { return StartTool(folder_, arguments); }

    ToolRun Process(const std::string& exportName, const std::string& leaf,
                    const std::string& profile) const {
        return Start({"run", frame_, "--profile", folder_.Narrow(profile), "--section", "General", "--out",
                      folder_.Narrow(leaf), "--export", exportName});
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    std::string frame_ = folder_.Narrow("frame_130x167.raw");
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

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

std::vector<std::string> LeavesOf(const std::filesystem::path& folder) {
    std::vector<std::string> leaves;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        leaves.push_back(entry.path().filename().string());
    std::sort(leaves.begin(), leaves.end());
    return leaves;
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

TEST_F(ToolProgram, LeavesNothingOfAFolderThatIsCancelled) {
    // A median that takes more than a minute.
    WriteBytes(folder_.Path() / "slow.ini",
               "[General]\nPROCMODE=2\nINTRAORAL_MASK=0\nFunctionCount=1\n00_Function_Number=7\n"
               "00_MEDIAN_SIZE=101\n00_MEDIAN_REPEAT=2000000000\n");
    for (const std::string command : {"stages", "sweep"}) {
        std::vector<std::string> words{command,     frame_,    "--profile", folder_.Narrow("slow.ini"),
                                       "--section", "General", "--out",     folder_.Narrow("out")};
        if (command == "sweep") words.insert(words.end(), {"--set", "00_MEDIAN_SIZE=99,101"});
        const pid_t tool = BeginTool(folder_, words);
        while (WorkersOf(tool).empty()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        kill(tool, SIGINT);
        const ToolRun run = AwaitTool(folder_, tool);
        EXPECT_EQ(run.exitCode, 130) << run.errors;
        EXPECT_EQ(LeavesOf(folder_.Path()), (std::vector<std::string>{"errors.txt", "frame_130x167.raw",
                                                                      "p.ini", "report.txt", "slow.ini"}))
            << command;
    }
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
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kProfile);
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

#ifndef __SANITIZE_ADDRESS__  // which takes address space without end for itself
// Heads of frames of half a gigabyte and more, with hardly a byte behind them.
TEST_F(ToolProgram, LyingFilesTakeNoMemory) {
    const auto little = [](uint32_t value, int count) {
        std::string bytes;
        for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i));
        return bytes;
    };
    const auto field = [&](uint32_t tag, uint32_t kind, uint32_t value) {
        return little(tag, 2) + little(kind, 2) + little(1, 4) + little(value, 4);
    };
    const std::string filler(30000, '\x01');
    const auto tiff = [&](uint32_t packing) {
        const auto table = static_cast<uint32_t>(8 + filler.size());
        return "II*" + std::string(1, '\0') + little(table, 4) + filler + little(8, 2) +
               field(256, 4, 16000) + field(257, 4, 16000) + field(258, 3, 16) + field(259, 3, packing) +
               field(262, 3, 1) + field(273, 4, 8) + field(278, 4, 16000) + field(279, 4, 30000) +
               little(0, 4);
    };
    constexpr uint32_t kDeflate = 8;
    constexpr uint32_t kZstd = 50000;
    constexpr uint32_t kLzma = 34925;
    const std::vector<std::pair<std::string, std::string>> files{
        {"plain.tif", tiff(1)},
        {"deflate.tif", tiff(kDeflate)},
        {"zstd.tif", tiff(kZstd)},
        {"lzma.tif", tiff(kLzma)},
        {"a.pgm", "P5\n16000 16000\n65535\n" + filler},
        {"a.bmp", "BM" + little(0, 8) + little(1078, 4) + little(40, 4) + little(22000, 4) +
                      little(22000, 4) + little(1, 2) + little(8, 2) + little(0, 24) + filler},
        {"a_16000x16000.raw", filler},
    };
    for (const auto& [leaf, bytes] : files) {
        WriteBytes(folder_.Path() / leaf, bytes);
        const std::string command = "ulimit -v 300000; '" VASTRELLINE_TOOL "' info '" + folder_.Narrow(leaf) +
                                    "' > '" + folder_.Narrow("said") + "' 2>&1";
        const int status = std::system(command.c_str());  // NOLINT(cert-env33-c): as its users start it
        ASSERT_TRUE(WIFEXITED(status)) << leaf;
        // 3: refused for what it is; 4 would be the end of memory
        EXPECT_EQ(WEXITSTATUS(status), 3) << leaf << ": " << ReadBytes(folder_.Path() / "said");
    }
}
#endif

}  // namespace
}  // namespace vastrelline
