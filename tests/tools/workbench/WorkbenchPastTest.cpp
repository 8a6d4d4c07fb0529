// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "workbench/BenchFixture.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using Json = nlohmann::ordered_json;

class WorkbenchPastTest : public BenchFixture {
protected:
    WorkbenchSetup KeptSetup() const {
        WorkbenchSetup setup = Setup();
        setup.historyFile = folder_.Narrow("runs.jsonl");
        return setup;
    }

    static void SetRatio(Workbench& bench, const std::string& value) {
        bench.Change(
            [&](const Desk& desk) {
                DeskState next = desk.Now();
                next.bytes = SetKey("p.ini", next.bytes, "A", "00_POST_GAMMA_RATIO", value);
                return next;
            },
            {});
    }

    // Two runs, on the second frame the second one; the first is named, pinned and found better.
    void WorkForADay() {
        Workbench bench(KeptSetup(), TimesRatio, events_);
        bench.Start();
        const uint64_t first = AwaitRun(bench)->id;
        bench.Pin(first, true);
        bench.Change(
            [](const Desk& desk) {
                DeskState next = desk.Now();
                next.bytes = SetKey("p.ini", next.bytes, "A", "00_POST_GAMMA_RATIO", "20");
                next.frame = 1;
                return next;
            },
            {});
        const uint64_t second = AwaitRun(bench, first)->id;
        bench.Name(first, "first");
        bench.Choose(first, second, "a");
        bench.Stop();
    }
};

TEST_F(WorkbenchPastTest, BringsBackRunsNamesAndChoices) {
    WorkForADay();
    Workbench bench(KeptSetup(), TimesRatio, events_);
    const Json rows = bench.State()["history"];
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1]["name"], "first");
    EXPECT_EQ(rows[1]["kept"], false);
    EXPECT_EQ(rows[0]["frame"], 1);
    EXPECT_EQ(rows[0]["change"], "frame b_2x2.raw; 00_POST_GAMMA_RATIO 10 -> 20");
    EXPECT_EQ(bench.Choices()["choices"][0]["aBetter"], 1);
    EXPECT_TRUE(bench.State()["notes"].empty());
    // Levels 0 to 3 times 10 of 255 levels.
    const SmallPicture picture = bench.HistoryPicture(rows[1]["id"]);
    EXPECT_EQ(picture.grey, (std::vector<uint8_t>{0, 10, 20, 30}));
    EXPECT_THROW(bench.HistoryPicture(99), InputError);
    // Numbers go on, and the way back is there.
    bench.Start();
    const auto third = AwaitRun(bench);
    EXPECT_GT(third->id, rows[0]["id"].get<uint64_t>());
    bench.GoTo(rows[0]["id"]);
    const auto fourth = AwaitRun(bench, third->id);
    EXPECT_EQ(fourth->desk.frame, 1U);
    EXPECT_EQ(fourth->points.back()->point.frame->pixels.back(), 600);
}

TEST_F(WorkbenchPastTest, RunsWhatWasPinnedOnceMore) {
    WorkForADay();
    WorkbenchSetup setup = KeptSetup();
    std::string other = kProfile;
    other.replace(other.find("RATIO=10"), 8, "RATIO=50");
    setup.bytes = other;
    Workbench bench(std::move(setup), TimesRatio, events_);
    bench.Start();
    const uint64_t now = AwaitRun(bench)->id;
    for (int i = 0;
         i < 1000 && (bench.State()["pinned"]["A"].is_null() || bench.State()["pinned"]["A"] == now); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const auto a = bench.FindRun(bench.State()["pinned"]["A"].dump());
    EXPECT_EQ(a->points.back()->point.frame->pixels.back(), 30);
    EXPECT_EQ(bench.FindRun("latest")->points.back()->point.frame->pixels.back(), 150);
}

TEST_F(WorkbenchPastTest, KnowsAFrameThatIsNoLongerThere) {
    WorkForADay();
    WorkbenchSetup setup = KeptSetup();
    setup.frames.pop_back();
    Workbench bench(std::move(setup), TimesRatio, events_);
    const Json row = bench.State()["history"][0];
    EXPECT_TRUE(row["frame"].is_null());
    EXPECT_EQ(row["lostFrame"], "b_2x2.raw");
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    bench.GoTo(row["id"]);
    EXPECT_EQ(AwaitRun(bench, first)->points.back()->point.frame->pixels.back(), 60);
}

TEST_F(WorkbenchPastTest, SaysThatAnotherWorkbenchHasTheHistory) {
    const Workbench first(KeptSetup(), TimesRatio, events_);
    const Workbench second(KeptSetup(), TimesRatio, events_);
    EXPECT_TRUE(first.State()["notes"].empty());
    EXPECT_THAT(second.State()["notes"][0].get<std::string>(), HasSubstr("another workbench"));
}

TEST_F(WorkbenchPastTest, GivesOlderRowsTwoHundredAtATime) {
    PastRuns past;
    for (uint64_t id = 1; id <= 450; ++id) {
        PastRun run;
        run.row.id = id;
        run.row.desk = {kProfile, "A", 0, {}};
        past.runs.push_back(std::move(run));
    }
    WriteBytes(folder_.Path() / "runs.jsonl", WriteHistoryLines(past, 450));
    const Workbench bench(KeptSetup(), TimesRatio, events_);
    EXPECT_EQ(bench.State()["history"].size(), 200U);
    EXPECT_EQ(bench.State()["history"].back()["id"], 251);
    const Json older = bench.HistoryBefore(251)["history"];
    EXPECT_EQ(older.size(), 200U);
    EXPECT_EQ(older.front()["id"], 250);
    EXPECT_EQ(bench.HistoryBefore(51)["history"].size(), 50U);
    EXPECT_TRUE(bench.HistoryBefore(1)["history"].empty());
}

TEST_F(WorkbenchPastTest, KeepsNothingWithoutAFile) {
    {
        Workbench bench(Setup(), TimesRatio, events_);
        bench.Start();
        SetRatio(bench, "20");
        EXPECT_EQ(bench.HistoryPicture(AwaitRun(bench)->id).grey, (std::vector<uint8_t>{0, 20, 40, 60}));
    }
    EXPECT_TRUE(Workbench(Setup(), TimesRatio, events_).State()["history"].empty());
}

}  // namespace
}  // namespace vastrelline
