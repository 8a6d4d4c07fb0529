// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <filesystem>

#include "platform/PathText.h"
#include "support/SetVariable.h"
#include "support/TemporaryFolder.h"
#include "workbench/RunHistory.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

PastRun MakeRun(uint64_t id, const std::string& profile = "[A]\n") {
    PastRun run;
    run.row.id = id;
    run.row.desk = {profile, "A", 0, {}};
    run.frameName = "tooth.raw";
    return run;
}

std::vector<uint64_t> IdsOf(const PastRuns& past) {
    std::vector<uint64_t> ids;
    for (const PastRun& run : past.runs) ids.push_back(run.row.id);
    return ids;
}

size_t Count(const std::string& text, const std::string& part) {
    size_t count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

class RunHistoryTest : public testing::Test {
protected:
    PastRuns ReadPast() const { return RunHistory(path_).TakePast(); }

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): every test is a class derived from it
    TemporaryFolder folder_;
    std::string path_ = folder_.Narrow("runs.jsonl");
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(RunHistoryTest, ComesBackWithTheNextWorkbench) {
    {
        RunHistory history(path_);
        EXPECT_TRUE(history.TakePast().runs.empty());
        history.AddRun(MakeRun(1));
        history.AddRun(MakeRun(2));
        history.AddRun(MakeRun(3, "[B]\n"));
        history.AddName(2, "two");
        history.AddPin(1, true);
        history.AddChoice({1, 2}, {0, 1, 0});
    }
    EXPECT_EQ(Count(ReadBytes(folder_.Path() / "runs.jsonl"), "\"profile\":"), 2U);
    RunHistory history(path_);
    EXPECT_EQ(history.Note(), "");
    PastRuns past = history.TakePast();
    EXPECT_EQ(IdsOf(past), (std::vector<uint64_t>{1, 2, 3}));
    EXPECT_EQ(past.runs[1].row.name, "two");
    EXPECT_EQ(past.pinnedA, 1U);
    EXPECT_EQ(past.choices.size(), 1U);
    // The profile of the last line is not written once more.
    history.AddRun(MakeRun(4, "[B]\n"));
    EXPECT_EQ(Count(ReadBytes(folder_.Path() / "runs.jsonl"), "\"profile\":"), 2U);
}

TEST_F(RunHistoryTest, IsHeldByOneWorkbench) {
    RunHistory first(path_);
    first.AddRun(MakeRun(1));
    RunHistory second(path_);
    EXPECT_THAT(second.Note(), HasSubstr("another workbench works on this profile"));
    EXPECT_TRUE(second.TakePast().runs.empty());
    second.AddRun(MakeRun(2));
    first.AddRun(MakeRun(3));
    EXPECT_EQ(first.Note(), "");
    EXPECT_THAT(ReadBytes(folder_.Path() / "runs.jsonl"), testing::Not(HasSubstr("\"id\":2")));
}

TEST_F(RunHistoryTest, GoesOnBehindALineThatNobodyFinished) {
    { RunHistory(path_).AddRun(MakeRun(1)); }
    WriteBytes(folder_.Path() / "runs.jsonl",
               ReadBytes(folder_.Path() / "runs.jsonl") + R"({"kind":"run","id":2,"wh)");
    {
        RunHistory history(path_);
        EXPECT_EQ(IdsOf(history.TakePast()), (std::vector<uint64_t>{1}));
        history.AddRun(MakeRun(3));
        history.AddRun(MakeRun(4));
    }
    EXPECT_EQ(IdsOf(ReadPast()), (std::vector<uint64_t>{1, 3, 4}));
}

TEST_F(RunHistoryTest, IsWrittenAnewWhenItHasTooManyRuns) {
    PastRuns many;
    for (uint64_t id = 1; id <= RunHistory::kMostRuns; ++id) many.runs.push_back(MakeRun(id));
    WriteBytes(folder_.Path() / "runs.jsonl", WriteHistoryLines(many, many.runs.size()));
    {
        RunHistory history(path_);
        history.AddRun(MakeRun(2001));
        history.AddRun(MakeRun(2002));
        RunHistory second(path_);
        EXPECT_NE(second.Note(), "");
    }
    const PastRuns past = ReadPast();
    ASSERT_EQ(past.runs.size(), 1002U);
    EXPECT_EQ(past.runs.front().row.id, 1001U);
    EXPECT_EQ(past.runs.back().row.id, 2002U);
    EXPECT_FALSE(std::filesystem::exists(path_ + ".new"));
}

TEST_F(RunHistoryTest, IsWrittenAnewWhenItIsTooLong) {
    { RunHistory(path_).AddRun(MakeRun(1)); }
    WriteBytes(folder_.Path() / "runs.jsonl",
               std::string(RunHistory::kMostBytes, 'x') + "\n" + ReadBytes(folder_.Path() / "runs.jsonl"));
    { RunHistory(path_).AddRun(MakeRun(2)); }
    EXPECT_LT(std::filesystem::file_size(path_), 10000U);
    EXPECT_EQ(IdsOf(ReadPast()), (std::vector<uint64_t>{1, 2}));
}

TEST_F(RunHistoryTest, DoesWithoutAFile) {
    RunHistory none{std::string()};
    none.AddRun(MakeRun(1));
    none.AddName(1, "x");
    EXPECT_EQ(none.Note(), "");
    RunHistory lost(folder_.Narrow("missing") + "/runs.jsonl");
    EXPECT_THAT(lost.Note(), HasSubstr("not kept for later"));
    lost.AddRun(MakeRun(1));
}

TEST_F(RunHistoryTest, LeavesOutRunsOfHugeProfiles) {
    {
        RunHistory history(path_);
        history.AddRun(MakeRun(1, std::string(RunHistory::kMostProfileBytes + 1, ';')));
        history.AddRun(MakeRun(2));
    }
    EXPECT_EQ(IdsOf(ReadPast()), (std::vector<uint64_t>{2}));
}

TEST_F(RunHistoryTest, HasAFileForEachProfile) {
#ifdef _WIN32
    const SetVariable state("LOCALAPPDATA", folder_.Path().string());
#else
    const SetVariable state("XDG_STATE_HOME", folder_.Path().string());
#endif
    const std::filesystem::path file = HistoryFileOf(folder_.Narrow("a.ini"));
    EXPECT_EQ(file.parent_path().filename(), "tune");
    EXPECT_TRUE(std::filesystem::is_directory(file.parent_path()));
    EXPECT_EQ(file.extension().string(), ".jsonl");
    EXPECT_EQ(file.stem().string().size(), 16U);
    EXPECT_EQ(file.stem().string().find_first_not_of("0123456789abcdef"), std::string::npos);
    EXPECT_EQ(file.string(), HistoryFileOf((folder_.Path() / "." / "a.ini").string()));
    EXPECT_NE(file.string(), HistoryFileOf(folder_.Narrow("b.ini")));
    // Where that is another name of the same file it has the same history.
    EXPECT_EQ(file.string() == HistoryFileOf(folder_.Narrow("A.INI")), FoldName("a") == FoldName("A"));
    EXPECT_EQ(RunHistory(file.string()).Note(), "");
}

}  // namespace
}  // namespace vastrelline
