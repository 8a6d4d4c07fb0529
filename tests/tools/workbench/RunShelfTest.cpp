// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/RunShelf.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

std::shared_ptr<const KeptRun::Basis> MakeBasis(double elapsedMs) {
    auto basis = std::make_shared<KeptRun::Basis>(KeptRun::Basis{ProfileFile("p.ini", ""), {}, {}, "hash"});
    basis->run.call.record.elapsedMs = elapsedMs;
    return basis;
}

uint64_t AddRun(RunShelf& shelf, double elapsedMs = 1.0) {
    KeptRun run = shelf.Begin({"text", "A", 0, {}}, "change", "now");
    run.state = RunState::Picture;
    run.basis = MakeBasis(elapsedMs);
    const uint64_t id = run.id;
    shelf.Put(std::move(run));
    return id;
}

std::vector<uint64_t> Kept(const RunShelf& shelf) {
    std::vector<uint64_t> ids;
    for (uint64_t id = 1; id < 100; ++id)
        if (shelf.Find(id) != nullptr) ids.push_back(id);
    return ids;
}

std::vector<uint64_t> Listed(const RunShelf& shelf) {
    std::vector<uint64_t> ids;
    for (const HistoryRow* row : shelf.Rows()) ids.push_back(row->id);
    return ids;
}

TEST(RunShelf, KeepsTheFramesOfTheNewestAndTheRowsOfAll) {
    RunShelf shelf;
    EXPECT_EQ(shelf.Latest(), nullptr);
    for (int i = 0; i < 6; ++i) AddRun(shelf);
    EXPECT_THAT(Kept(shelf), ElementsAre(3, 4, 5, 6));
    EXPECT_THAT(Listed(shelf), ElementsAre(6, 5, 4, 3, 2, 1));
    EXPECT_EQ(shelf.Latest()->id, 6U);
    EXPECT_EQ(shelf.FindRow(1)->desk.bytes, "text");
    EXPECT_EQ(shelf.FindRow(7), nullptr);
}

TEST(RunShelf, LetsARunBePinnedThatEndsBehindTheBeginningOfAnother) {
    RunShelf shelf;
    KeptRun aside = shelf.Begin({"text", "A", 1, {}}, "change", "now");
    aside.isAside = true;
    const uint64_t id = aside.id;
    shelf.Begin({"text", "A", 0, {}}, "change", "now");
    aside.state = RunState::Picture;
    aside.basis = MakeBasis(1.0);
    shelf.Put(std::move(aside));
    EXPECT_TRUE(shelf.PinA(id));
    EXPECT_NE(shelf.Find(id), nullptr);
}

TEST(RunShelf, KeepsWhatIsPinnedOrHeld) {
    RunShelf shelf;
    for (int i = 0; i < 3; ++i) AddRun(shelf);
    EXPECT_TRUE(shelf.PinA(1));
    EXPECT_TRUE(shelf.PinB(2));
    shelf.Hold({3});
    for (int i = 0; i < 5; ++i) AddRun(shelf);
    EXPECT_THAT(Kept(shelf), ElementsAre(1, 2, 3, 5, 6, 7, 8));
    EXPECT_FALSE(shelf.PinA(4));
    EXPECT_EQ(shelf.A(), 1U);
    EXPECT_TRUE(shelf.PinA(std::nullopt));
    shelf.Hold({});
    EXPECT_THAT(Kept(shelf), ElementsAre(2, 5, 6, 7, 8));
}

TEST(RunShelf, ForgetsARunWithoutAPictureWhenTheNextBegins) {
    RunShelf shelf;
    AddRun(shelf, 7.0);
    KeptRun ended = shelf.Begin({}, "", "");
    EXPECT_EQ(ended.elapsedBefore, 7.0);
    ended.state = RunState::Ended;
    shelf.Put(ended);
    EXPECT_THAT(Kept(shelf), ElementsAre(1, 2));
    EXPECT_EQ(shelf.Latest()->id, 1U);
    AddRun(shelf);
    EXPECT_THAT(Kept(shelf), ElementsAre(1, 3));
    EXPECT_THAT(Listed(shelf), ElementsAre(3, 1));
}

TEST(RunShelf, KeepsThePictureOfARunThatWasEndedBehindIt) {
    RunShelf shelf;
    KeptRun run = shelf.Begin({}, "", "");
    run.state = RunState::Picture;
    run.basis = MakeBasis(1.0);
    run.points.push_back(std::make_shared<KeptPoint>());
    shelf.Put(run);
    run.points.clear();
    run.state = RunState::Ended;
    shelf.Put(run);
    EXPECT_EQ(shelf.Latest()->points.size(), 1U);
    EXPECT_EQ(shelf.Latest()->state, RunState::Ended);
}

TEST(RunShelf, NamesRuns) {
    RunShelf shelf;
    AddRun(shelf);
    EXPECT_TRUE(shelf.Name(1, "mine"));
    EXPECT_FALSE(shelf.Name(2, "other"));
    EXPECT_EQ(shelf.FindRow(1)->name, "mine");
}

}  // namespace
}  // namespace vastrelline
