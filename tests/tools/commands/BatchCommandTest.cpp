// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "commands/BatchCommand.h"
#include "messages/ToolError.h"
#include "platform/Cancellation.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;

// The export that gives the frame turned round.
int32_t Reverse(ExportRequest& request) {
    std::reverse_copy(request.frame.pixels.begin(), request.frame.pixels.end(), request.output.begin());
    return 0;
}

// A code for the frame whose first level is 9.
int32_t RefuseNine(ExportRequest& request) {
    return request.frame.pixels.front() == 9 ? 2 : Reverse(request);
}

// Three frames of two pixels, two of them of one name.
class BatchCommandTest : public testing::Test {
protected:
    BatchCommandTest() {
        fs::create_directories(folder_.Path() / "in/a");
        WriteBytes(folder_.Path() / "in/a/x_2x1.raw", "\x01\x00\x02\x00"s);
        WriteBytes(folder_.Path() / "in/x_2x1.raw", "\x03\x00\x04\x00"s);
        WriteBytes(folder_.Path() / "in/y_2x1.raw", "\x05\x00\x06\x00"s);
        WriteBytes(folder_.Path() / "p.ini", "[General]\nPROCMODE=2\n[Other]\nPROCMODE=2\n");
    }

    ToolRun Run(const std::vector<std::string>& more, const ExportCaller& callExport) const {
        std::vector<std::string> arguments{"batch",     folder_.Narrow("in"),
                                           "--profile", folder_.Narrow("p.ini"),
                                           "--section", section_,
                                           "--out",     folder_.Narrow("out"),
                                           "--format",  "raw"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunTool(arguments, callExport);
    }

    // The frames' lines by their frames below `in`, and the summary under an empty name.
    std::map<std::string, nlohmann::json> Lines(const std::string& report) const {
        std::map<std::string, nlohmann::json> lines;
        std::istringstream text(report);
        for (std::string line; std::getline(text, line);) {
            nlohmann::json object = nlohmann::json::parse(line);
            const std::string name =
                object["type"] == "summary"
                    ? ""
                    : fs::path(object["frame"].get<std::string>().substr(folder_.Narrow("in/").size()))
                          .generic_string();
            EXPECT_FALSE(lines.contains(name)) << name << " twice";
            lines[name] = std::move(object);
        }
        return lines;
    }

    std::map<std::string, std::string> Results() const {
        std::map<std::string, std::string> results;
        for (const auto& entry : fs::recursive_directory_iterator(folder_.Path() / "out"))
            if (entry.is_regular_file() && entry.path().extension() != ".jsonl")
                results[entry.path().lexically_relative(folder_.Path() / "out").generic_string()] =
                    ReadBytes(entry.path());
        return results;
    }

    // How many frames are worked on by a run with --resume.
    size_t CountWorkedOn() const {
        std::atomic<size_t> count{0};
        const ToolRun run = Run({"--resume"}, [&](ExportRequest& request) {
            ++count;
            return Reverse(request);
        });
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return count;
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
    std::string section_ = "General";
    const std::map<std::string, std::string> all_{{"a/x_2x1.raw", "\x02\x00\x01\x00"s},
                                                  {"x_2x1.raw", "\x04\x00\x03\x00"s},
                                                  {"y_2x1.raw", "\x06\x00\x05\x00"s}};
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(BatchCommandTest, DoesEveryFrameOfAFolder) {
    for (const char* const jobs : {"1", "2", "7"}) {
        const ToolRun run = Run({"--jobs", jobs, "--force"}, Reverse);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_EQ(Results(), all_);
        EXPECT_NE(run.report.find("frames   3: 3 done\n"), std::string::npos) << run.report;
    }
}

TEST_F(BatchCommandTest, PrintsALineAFrameAndASummary) {
    ToolRun run = Run({"--json"}, Reverse);
    auto lines = Lines(run.report);
    ASSERT_EQ(lines.size(), 4U) << run.report;
    EXPECT_EQ(lines["a/x_2x1.raw"]["state"], "done");
    EXPECT_EQ(lines["a/x_2x1.raw"]["result"], folder_.Narrow("out/a/x_2x1.raw"));
    EXPECT_EQ(lines["a/x_2x1.raw"]["width"], 2);
    EXPECT_EQ(lines["a/x_2x1.raw"]["error"], nullptr);
    EXPECT_EQ(lines[""]["command"], "batch");
    EXPECT_EQ(lines[""]["exit"], 0);
    EXPECT_EQ(lines[""]["done"], 3);
    run = Run({"--json", "--resume"}, MustNotBeCalled);
    lines = Lines(run.report);
    EXPECT_EQ(lines["y_2x1.raw"]["state"], "before");
    EXPECT_EQ(lines[""]["before"], 3);
    EXPECT_EQ(lines[""]["done"], 0);
}

TEST_F(BatchCommandTest, ResumesWhatHasChanged) {
    EXPECT_EQ(Run({}, Reverse).exitCode, 0);
    EXPECT_EQ(CountWorkedOn(), 0U);
    WriteBytes(folder_.Path() / "in/y_2x1.raw", "\x07\x00\x06\x00"s);
    EXPECT_EQ(CountWorkedOn(), 1U) << "another frame under the same name";
    EXPECT_EQ(Results().at("y_2x1.raw"), "\x06\x00\x07\x00"s);
    WriteBytes(folder_.Path() / "out/x_2x1.raw", "half");
    EXPECT_EQ(CountWorkedOn(), 1U) << "a result that is not as it was written";
    fs::remove(folder_.Path() / "out/a/x_2x1.raw");
    EXPECT_EQ(CountWorkedOn(), 1U) << "a result that is gone";
    WriteBytes(folder_.Path() / "in/z_2x1.raw", "\x08\x00\x09\x00"s);
    EXPECT_EQ(CountWorkedOn(), 1U) << "a frame more";
    WriteBytes(folder_.Path() / "p.ini", "[General]\nPROCMODE=2 \n[Other]\nPROCMODE=2\n");
    EXPECT_EQ(CountWorkedOn(), 4U) << "a profile of other bytes";
    section_ = "Other";
    EXPECT_EQ(CountWorkedOn(), 4U) << "another section";
    EXPECT_EQ(CountWorkedOn(), 0U);
    EXPECT_EQ(Run({"--resume", "--mapping"}, MustNotBeCalled).exitCode, 4) << "other options";
}

TEST_F(BatchCommandTest, GoesOnAfterAFailureWhenAsked) {
    WriteBytes(folder_.Path() / "in/b.png", "no picture");
    WriteBytes(folder_.Path() / "in/c_2x1.raw", "\x09\x00\x02\x00"s);
    const ToolRun run = Run({"--keep-going", "--json"}, RefuseNine);
    EXPECT_EQ(run.exitCode, 4) << "the higher of input and processing";
    EXPECT_EQ(Results(), all_);
    auto lines = Lines(run.report);
    EXPECT_EQ(lines["b.png"]["exit"], 3);
    EXPECT_EQ(lines["c_2x1.raw"]["exit"], 4);
    EXPECT_EQ(lines["c_2x1.raw"]["result"], nullptr);
    EXPECT_EQ(lines[""]["failed"], 2);
    EXPECT_EQ(lines[""]["exit"], 4);
    EXPECT_NE(run.errors.find("2 of 5 frames failed:\n"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find(folder_.Narrow("in/b.png")), std::string::npos) << run.errors;
    // What failed is tried again, and nothing else.
    fs::remove(folder_.Path() / "in/b.png");
    EXPECT_EQ(CountWorkedOn(), 1U);
}

TEST_F(BatchCommandTest, StopsAtTheFirstFailureOtherwise) {
    WriteBytes(folder_.Path() / "in/b_2x1.raw", "\x09\x00\x02\x00"s);  // the second of four
    const ToolRun run = Run({"--jobs", "1"}, RefuseNine);
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(Results().size(), 1U);
    EXPECT_NE(run.report.find("frames   4: 1 done, 1 failed, 2 left; --resume does them\n"),
              std::string::npos)
        << run.report;
}

TEST_F(BatchCommandTest, AWorkerThatEndsIsAFailureOfItsFrame) {
    const ToolRun run = Run({"--keep-going"}, [](ExportRequest& request) -> int32_t {
        if (request.frame.pixels.front() == 3) throw ProcessingError({}, "the run was ended by signal 11");
        return Reverse(request);
    });
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(Results().size(), 2U);
    EXPECT_NE(run.errors.find("the run was ended by signal 11"), std::string::npos) << run.errors;
}

TEST_F(BatchCommandTest, ReplacesNothingOfOthersUnlessForced) {
    fs::create_directory(folder_.Path() / "out");
    WriteBytes(folder_.Path() / "out/y_2x1.raw", "mine");
    for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"--resume"}}) {
        const ToolRun run = Run(more, MustNotBeCalled);
        EXPECT_EQ(run.exitCode, 5);
        EXPECT_EQ(run.errors, folder_.Narrow("out/y_2x1.raw") + ": exists already; --force replaces it\n");
        fs::remove(folder_.Path() / "out/batch-manifest.jsonl");
    }
    EXPECT_EQ(Results().at("y_2x1.raw"), "mine");
    EXPECT_EQ(Run({"--force"}, Reverse).exitCode, 0);
    EXPECT_EQ(Results(), all_);
    EXPECT_EQ(Run({}, MustNotBeCalled).exitCode, 5) << "an earlier batch's folder";
}

TEST_F(BatchCommandTest, GivesWorkersTheirLimits) {
    std::atomic<uint64_t> limit{0};
    std::atomic<int64_t> timeout{0};
    const auto look = [&](ExportRequest& request) {
        limit = request.memoryLimit.value_or(0);
        timeout = request.timeout.value_or(std::chrono::milliseconds(0)).count();
        return Reverse(request);
    };
    EXPECT_EQ(Run({"--timeout", "2.5", "--memory", "3"}, look).exitCode, 0);
    EXPECT_EQ(limit, 3U << 20U);
    EXPECT_EQ(timeout, 2500);
    EXPECT_EQ(Run({"--force"}, look).exitCode, 0);
    EXPECT_GT(limit, 100U << 20U);
    EXPECT_EQ(timeout, 0);
}

// Those of several workers would write over each other.
TEST_F(BatchCommandTest, LeavesNoDumpsWhateverTheProfileSays) {
    WriteBytes(folder_.Path() / "p.ini", "[General]\nPROCMODE=2\nSAVE_IMAGE=1\nSAVE_BACKUP=1\n");
    std::atomic<size_t> without{0};
    const ToolRun run = Run({}, [&](ExportRequest& request) {
        const std::string copy = ReadBytes(request.profile);
        const bool isWithout =
            copy.find("SAVE_IMAGE=0") != std::string::npos && copy.find("SAVE_BACKUP=0") != std::string::npos;
        without += isWithout ? 1U : 0U;
        return Reverse(request);
    });
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(without, 3U);
}

// Not even by --force, nor by way of a link.
TEST_F(BatchCommandTest, NeverWritesThroughALinkToAFrame) {
    fs::create_directory(folder_.Path() / "out");
    fs::create_symlink(folder_.Path() / "in/y_2x1.raw", folder_.Path() / "out/y_2x1.raw");
    const ToolRun run = Run({"--force"}, MustNotBeCalled);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("y_2x1.raw would replace a frame"), std::string::npos) << run.errors;
    EXPECT_EQ(ReadBytes(folder_.Path() / "in/y_2x1.raw"), "\x05\x00\x06\x00"s);
}

TEST_F(BatchCommandTest, SaysOnceWhatManyFramesHaveInCommon) {
    const ToolRun run = Run({}, [](ExportRequest&) { return 0; });  // all black
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.errors.find("(and 2 more)"), std::string::npos) << run.errors;
}

TEST_F(BatchCommandTest, WrongUseIsCodeTwo) {
    for (const std::vector<std::string>& more :
         {std::vector<std::string>{"--jobs", "0"}, {"--format", "gif"}, {"--timeout", "0"}, {"--png16"}})
        EXPECT_EQ(Run(more, MustNotBeCalled).exitCode, 2) << more[0];
    section_ = "Generl";
    EXPECT_EQ(Run({}, MustNotBeCalled).exitCode, 2);
    EXPECT_FALSE(fs::exists(folder_.Path() / "out"));
}

TEST(BatchCancellation, LeavesWholeFilesAndCode130) {
    const auto cancelInTheMiddle = [] {
        const TemporaryFolder folder;
        fs::create_directory(folder.Path() / "in");
        for (const char* const leaf : {"in/a_1x1.raw", "in/b_1x1.raw", "in/c_1x1.raw"})
            WriteBytes(folder.Path() / leaf, "\x01\x00"s);
        WriteBytes(folder.Path() / "p.ini", "[General]\nPROCMODE=2\n");
        CatchCancellation();
        std::atomic<int> calls{0};
        const ToolRun run = RunTool(
            {"batch", folder.Narrow("in"), "--profile", folder.Narrow("p.ini"), "--section", "General",
             "--out", folder.Narrow("out"), "--format", "raw", "--jobs", "1", "--keep-going"},
            [&](ExportRequest& request) {
                if (++calls == 2) raise(SIGINT);
                return Reverse(request);
            });
        // One result and the manifest; neither the second frame nor a draft.
        const auto files = std::distance(fs::directory_iterator(folder.Path() / "out"), {});
        _exit(run.exitCode == 130 && calls == 2 && files == 2 ? 0 : 1);
    };
    EXPECT_EXIT(cancelInTheMiddle(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace vastrelline
