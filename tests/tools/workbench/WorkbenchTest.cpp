// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "workbench/BenchFixture.h"
#include "workbench/DeskEdits.h"
#include "workbench/Workbench.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

class WorkbenchTest : public BenchFixture {
protected:
    static uint64_t SetRatio(Workbench& bench, const std::string& value, const std::string& topic = {}) {
        return bench.Change(
            [&](const Desk& desk) {
                DeskState next = desk.Now();
                next.bytes = SetKey("p.ini", next.bytes, "A", "00_POST_GAMMA_RATIO", value);
                return next;
            },
            topic);
    }

    static uint16_t Brightest(const KeptRun& run) { return run.points.back()->point.frame->pixels.back(); }
};

TEST_F(WorkbenchTest, RunsAtTheBeginningAndAfterEachChange) {
    Workbench bench(Setup(), TimesRatio, events_);
    EXPECT_THROW(bench.FindRun("latest"), InputError);
    bench.Start();
    const auto first = AwaitRun(bench);
    EXPECT_EQ(Brightest(*first), 30);
    EXPECT_EQ(first->change, "as the file has it");
    SetRatio(bench, "20");
    const auto second = AwaitRun(bench, first->id);
    EXPECT_EQ(Brightest(*second), 60);
    EXPECT_EQ(second->change, "00_POST_GAMMA_RATIO 10 -> 20");
    bench.Undo();
    EXPECT_EQ(Brightest(*AwaitRun(bench, second->id)), 30);
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kProfile);
}

TEST_F(WorkbenchTest, RunsOnceForChangesThatFollowEachOther) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kCalm{100};
    // A busy machine may stop between two changes for longer than a run waits: then they do not follow each
    // other.
    for (int tries = 0; tries < 100; ++tries) {
        std::atomic<int> calls{0};
        Workbench bench(
            Setup(),
            [&](ExportRequest& request) {
                ++calls;
                return TimesRatio(request);
            },
            events_);
        bool haveFollowed = true;
        Clock::time_point before = Clock::now();
        bench.Start();
        for (int i = 0; i < 10; ++i) {
            const Clock::time_point begin = Clock::now();
            SetRatio(bench, std::to_string(11 + i), "key");
            haveFollowed &= Clock::now() - before < kCalm;
            before = begin;
        }
        const auto run = AwaitRun(bench);
        if (!haveFollowed) continue;
        EXPECT_EQ(Brightest(*run), 60);
        EXPECT_EQ(calls, 2);
        EXPECT_EQ(bench.State()["history"].size(), 1U);
        return;
    }
    FAIL() << "the machine never made ten changes in a row";
}

TEST_F(WorkbenchTest, EndsARunForANewerChange) {
    std::atomic<bool> isStuck{true};
    std::atomic<bool> wasEnded{false};
    Workbench bench(
        Setup(),
        [&](ExportRequest& request) {
            try {
                while (isStuck) request.onWait();
            } catch (const CancelledError&) {
                isStuck = false;
                wasEnded = true;
                throw;
            }
            return TimesRatio(request);
        },
        events_);
    bench.Start();
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    SetRatio(bench, "2");
    EXPECT_EQ(Brightest(*AwaitRun(bench)), 6);
    EXPECT_TRUE(wasEnded);
    EXPECT_EQ(bench.State()["history"].size(), 1U);
}

TEST_F(WorkbenchTest, SavesTheValuesAndNothingElse) {
    Workbench bench(Setup(), TimesRatio, events_);
    SetRatio(bench, "20");
    EXPECT_EQ(bench.State()["profile"]["unsaved"], 1);
    EXPECT_THROW(bench.Save(1), ConflictError);
    bench.Save(2);
    std::string expected = kProfile;
    expected.replace(expected.find("RATIO=10"), 8, "RATIO=20");
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), expected);
    EXPECT_EQ(bench.State()["profile"]["unsaved"], 0);
    bench.Save(2);
    bench.Undo();
    EXPECT_EQ(bench.State()["profile"]["unsaved"], 1);
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), expected);
}

TEST_F(WorkbenchTest, TakesWhatAnotherProgramSaves) {
    Workbench bench(Setup(), TimesRatio, events_);
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    std::string other = kProfile;
    other.replace(other.find("RATIO=10"), 8, "RATIO=30");
    WriteBytes(folder_.Path() / "p.ini", other);
    bench.PollDisk();
    EXPECT_EQ(Brightest(*AwaitRun(bench, first)), 90);
    EXPECT_EQ(bench.State()["profile"]["unsaved"], 0);
    EXPECT_EQ(bench.State()["profile"]["canUndo"], true);
    std::filesystem::remove(folder_.Path() / "p.ini");
    bench.PollDisk();
    EXPECT_EQ(bench.State()["profile"]["changedOnDisk"], false);
}

TEST_F(WorkbenchTest, NeverWritesOverWhatItHasNotSeen) {
    Workbench bench(Setup(), TimesRatio, events_);
    SetRatio(bench, "20");
    WriteBytes(folder_.Path() / "p.ini", "[A]\nPROCMODE=2\n");
    EXPECT_THROW(bench.Save(2), ConflictError);
    bench.PollDisk();
    EXPECT_EQ(bench.State()["profile"]["changedOnDisk"], true);
    // It has noticed by itself what the person has not decided on.
    EXPECT_THROW(bench.Save(2), ConflictError);
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), "[A]\nPROCMODE=2\n");
    bench.KeepMine();
    bench.Save(2);
    EXPECT_THAT(ReadBytes(folder_.Path() / "p.ini"), HasSubstr("RATIO=20"));
}

// What it has read of the file just before it saved is nobody else's work.
TEST_F(WorkbenchTest, TakesNoFileOfItsOwnForAnothers) {
    Workbench bench(Setup(), TimesRatio, events_);
    std::jthread poller([&](const std::stop_token& end) {
        while (!end.stop_requested()) bench.PollDisk();
    });
    for (uint64_t revision = 2; revision < 52; ++revision) {
        SetRatio(bench, std::to_string(revision));
        ASSERT_NO_THROW(bench.Save(revision));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        ASSERT_EQ(bench.CopyDesk().textRevision, revision);
    }
}

TEST_F(WorkbenchTest, SavesAnewWhatAnotherProgramHasTakenAway) {
    Workbench bench(Setup(), TimesRatio, events_);
    std::filesystem::remove(folder_.Path() / "p.ini");
    bench.PollDisk();
    bench.Save(1);
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kProfile);
    std::filesystem::remove(folder_.Path() / "p.ini");
    SetRatio(bench, "20");
    bench.Save(2);
    EXPECT_THAT(ReadBytes(folder_.Path() / "p.ini"), HasSubstr("RATIO=20"));
    EXPECT_EQ(bench.State()["profile"]["unsaved"], 0);
}

TEST_F(WorkbenchTest, GoesBackToAnyRun) {
    Workbench bench(Setup(), TimesRatio, events_);
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    bench.Change(
        [](const Desk& desk) {
            DeskState next = desk.Now();
            next.frame = 1;
            next.offKeys = {"00_Function_Number"};
            return next;
        },
        {});
    const auto second = AwaitRun(bench, first);
    EXPECT_EQ(Brightest(*second), 30);
    EXPECT_EQ(second->change, "frame b_2x2.raw; 00_Function_Number off");
    bench.GoTo(first);
    EXPECT_EQ(AwaitRun(bench, second->id)->desk.frame, 0U);
    EXPECT_THROW(bench.GoTo(99), InputError);
}

TEST_F(WorkbenchTest, NamesPinsAndCountsChoices) {
    Workbench bench(Setup(), TimesRatio, events_);
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    bench.Name(first, "the first");
    bench.Pin(std::nullopt, true);
    bench.Pin(first, false);
    bench.Choose(first, 2, "a");
    bench.Choose(first, 2, "a");
    bench.Choose(first, 2, "same");
    EXPECT_THROW(bench.Choose(first, 2, "c"), UsageError);
    EXPECT_THROW(bench.Name(99, ""), InputError);
    EXPECT_THROW(bench.Name(first, std::string(401, 'x')), UsageError);
    EXPECT_THROW(bench.Pin(99, false), InputError);
    const nlohmann::ordered_json state = bench.State();
    EXPECT_EQ(state["history"][0]["name"], "the first");
    EXPECT_TRUE(state["pinned"]["A"].is_null());
    EXPECT_EQ(state["pinned"]["B"], first);
    EXPECT_EQ(bench.Choices()["choices"][0].dump(), R"({"a":1,"b":2,"aBetter":2,"bBetter":0,"same":1})");
}

TEST_F(WorkbenchTest, ComparesWithWhatTheFileHadOnEveryFrame) {
    Workbench bench(Setup(), TimesRatio, events_);
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    EXPECT_EQ(bench.State()["pinned"]["A"], first);
    SetRatio(bench, "20");
    const uint64_t second = AwaitRun(bench, first)->id;
    EXPECT_EQ(bench.State()["pinned"]["A"], first);
    ChooseFrame(bench, 1);
    const uint64_t third = AwaitRun(bench, second)->id;
    for (int i = 0; i < 1000 && bench.State()["pinned"]["A"] == first; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const uint64_t a = bench.State()["pinned"]["A"];
    EXPECT_EQ(Brightest(*bench.FindRun(std::to_string(a))), 300);
    EXPECT_EQ(bench.FindRun(std::to_string(a))->of, first);
    EXPECT_EQ(Brightest(*bench.FindRun("latest")), 600);
    EXPECT_EQ(bench.FindRun("latest")->of, std::nullopt);
    EXPECT_EQ(bench.FindRun("latest")->id, third);
    EXPECT_EQ(bench.State()["history"].size(), 3U);
}

// Side A is run on a new frame by itself: a person who pins another one meanwhile is right.
TEST_F(WorkbenchTest, KeepsWhatAPersonPinsWhileSideAIsAtWork) {
    constexpr int kFirstCallForSideA = 5;
    std::atomic<int> calls{0};
    std::atomic<bool> isFree{false};
    Workbench bench(
        Setup(),
        [&](ExportRequest& request) {
            if (++calls == kFirstCallForSideA)
                while (!isFree) std::this_thread::yield();
            return TimesRatio(request);
        },
        events_);
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    ChooseFrame(bench, 1);
    const uint64_t second = AwaitRun(bench, first)->id;
    while (calls < kFirstCallForSideA) std::this_thread::yield();
    bench.Pin(second, true);
    isFree = true;
    const std::string aside = std::to_string(second + 1);
    while (bench.FindRun(aside)->state != RunState::Complete) std::this_thread::yield();
    EXPECT_EQ(bench.State()["pinned"]["A"], second);
}

TEST_F(WorkbenchTest, TellsAPlaceItsControls) {
    WorkbenchSetup setup = Setup();
    // Names of sections are the same in small letters.
    setup.bytes.replace(setup.bytes.find("[Settings]"), 10, "[settings]");
    const Workbench bench(setup, TimesRatio, events_);
    const nlohmann::ordered_json state = bench.State();
    EXPECT_EQ(state["profile"]["sections"].dump(), R"(["A","B","Empty"])");
    EXPECT_EQ(state["profile"]["topLevel"], 255);
    EXPECT_EQ(state["frames"][0]["name"], "a_2x2.raw");
    EXPECT_TRUE(state["error"].is_null());
    const nlohmann::ordered_json& place = state["places"].back();
    EXPECT_EQ(place["title"], "00 Gamma curve");
    EXPECT_EQ(place["canSwitch"], true);
    const auto value = std::find_if(place["values"].begin(), place["values"].end(),
                                    [](const auto& each) { return each["key"] == "00_POST_GAMMA_RATIO"; });
    ASSERT_NE(value, place["values"].end());
    EXPECT_EQ((*value)["text"], "10");
    EXPECT_EQ((*value)["fileText"], "10");
    EXPECT_EQ((*value)["line"], 7);
    EXPECT_FALSE((*value)["meaning"].get<std::string>().empty());
}

TEST_F(WorkbenchTest, ShowsABrokenProfileAndKeepsTheLastPicture) {
    Workbench bench(Setup(), TimesRatio, events_);
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    bench.Change([](const Desk& desk) { return DeskState{"no section\n", desk.Now().section, 0, {}}; }, {});
    for (int i = 0; i < 300 && bench.FindRun("latest")->id == first; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    const nlohmann::ordered_json state = bench.State();
    EXPECT_EQ(state["run"], first);
    EXPECT_THAT(state["error"]["what"].get<std::string>(), HasSubstr("holds no section with settings"));
    EXPECT_EQ(state["error"]["remedy"], "'vastrelline profile new' makes a profile");
    EXPECT_FALSE(state["findings"].empty());
}

TEST_F(WorkbenchTest, TellsNoMoreFindingsThanAnybodyReads) {
    WorkbenchSetup setup = Setup();
    std::string lines;
    for (int i = 0; i < 1200; ++i) lines += "NOKEY" + std::to_string(i) + "=1\n";
    setup.bytes.insert(setup.bytes.find("PROCMODE"), lines);
    const Workbench bench(setup, TimesRatio, events_);
    EXPECT_EQ(bench.State()["findings"].size(), 1000U);
}

TEST_F(WorkbenchTest, TellsWhyAFrameCannotBeRead) {
    std::filesystem::remove(folder_.Path() / "a_2x2.raw");
    Workbench bench(Setup(), TimesRatio, events_);
    bench.Start();
    nlohmann::ordered_json state;
    for (int i = 0; i < 1000; ++i) {
        state = bench.State();
        if (!state["frames"][0]["error"].is_null()) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_THAT(state["frames"][0]["error"]["what"].get<std::string>(), HasSubstr("does not exist"));
}

}  // namespace
}  // namespace vastrelline
