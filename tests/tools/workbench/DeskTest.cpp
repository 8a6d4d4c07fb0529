// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "workbench/Desk.h"

namespace vastrelline {
namespace {

using namespace std::chrono_literals;

const Desk::Clock::time_point kStart{};

DeskState With(const Desk& desk, const std::string& bytes) {
    DeskState next = desk.Now();
    next.bytes = bytes;
    return next;
}

Desk MakeDesk() { return Desk({"file", "General", 0, {}}); }

TEST(Desk, BeginsWithWhatTheFileHolds) {
    const Desk desk = MakeDesk();
    EXPECT_FALSE(desk.HasUnsaved());
    EXPECT_FALSE(desk.CanUndo());
    EXPECT_FALSE(desk.CanRedo());
    EXPECT_EQ(desk.TextRevision(), 1U);
}

TEST(Desk, GoesBackAndForth) {
    Desk desk = MakeDesk();
    desk.Change(With(desk, "1"), "");
    desk.Change(With(desk, "2"), "");
    EXPECT_TRUE(desk.HasUnsaved());
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "1");
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "file");
    EXPECT_FALSE(desk.CanUndo());
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "file");
    desk.Redo();
    desk.Redo();
    EXPECT_EQ(desk.Now().bytes, "2");
    EXPECT_FALSE(desk.CanRedo());
    desk.Undo();
    desk.Change(With(desk, "3"), "");
    EXPECT_FALSE(desk.CanRedo());
    EXPECT_EQ(desk.TextRevision(), 9U);  // one and eight changes
}

TEST(Desk, TakesChangesOfOneTopicForOneStepWhileTheyFollowEachOther) {
    Desk desk = MakeDesk();
    desk.Change(With(desk, "1"), "key A", kStart);
    desk.Change(With(desk, "2"), "key A", kStart + 2s);
    desk.Change(With(desk, "3"), "key A", kStart + 4s);  // counted from the last one
    desk.Change(With(desk, "4"), "key B", kStart + 4s);
    desk.Change(With(desk, "5"), "key B", kStart + 6s + 1ms);
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "4");
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "3");
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "file");
    EXPECT_FALSE(desk.CanUndo());
}

TEST(Desk, DoesNotMixAStepWithWhatCameAfterAnUndo) {
    Desk desk = MakeDesk();
    desk.Change(With(desk, "1"), "", kStart);
    desk.Change(With(desk, "2"), "key A", kStart);
    desk.Undo();
    desk.Change(With(desk, "3"), "key A", kStart + 1s);
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "1");
}

TEST(Desk, HasNothingToUndoWhenAKeyIsPulledBack) {
    Desk desk = MakeDesk();
    desk.Change(With(desk, "1"), "key A", kStart);
    desk.Change(With(desk, "file"), "key A", kStart + 1s);
    EXPECT_FALSE(desk.CanUndo());
    EXPECT_FALSE(desk.HasUnsaved());
    desk.Change(With(desk, "2"), "key A", kStart + 1s);
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "file");
}

TEST(Desk, TakesASameStateForNone) {
    Desk desk = MakeDesk();
    desk.Change(desk.Now(), "");
    EXPECT_FALSE(desk.CanUndo());
}

TEST(Desk, BringsBackSectionFrameAndWhatIsOff) {
    Desk desk = MakeDesk();
    desk.Change({"file", "LowDose", 3, {"01_Function_Number"}}, "");
    EXPECT_EQ(desk.TextRevision(), 1U);
    EXPECT_FALSE(desk.HasUnsaved());
    desk.Undo();
    EXPECT_EQ(desk.Now(), (DeskState{"file", "General", 0, {}}));
}

TEST(Desk, TakesTheFilesNewTextAsAStepWhereNothingIsUnsaved) {
    Desk desk = MakeDesk();
    desk.NoteDisk("other");
    EXPECT_EQ(desk.Now().bytes, "other");
    EXPECT_FALSE(desk.HasUnsaved());
    EXPECT_FALSE(desk.IsChangedOnDisk());
    desk.Undo();
    EXPECT_EQ(desk.Now().bytes, "file");
    EXPECT_TRUE(desk.HasUnsaved());
}

TEST(Desk, AsksWhoseTextCountsWhereThereAreEdits) {
    Desk desk = MakeDesk();
    desk.Change(With(desk, "mine"), "");
    desk.NoteDisk("other");
    EXPECT_EQ(desk.Now().bytes, "mine");
    EXPECT_TRUE(desk.IsChangedOnDisk());
    Desk taken = desk;
    taken.TakeDisk();
    EXPECT_EQ(taken.Now().bytes, "other");
    EXPECT_FALSE(taken.IsChangedOnDisk());
    taken.Undo();
    EXPECT_EQ(taken.Now().bytes, "mine");
    desk.KeepMine();
    EXPECT_FALSE(desk.IsChangedOnDisk());
    EXPECT_TRUE(desk.HasUnsaved());
    EXPECT_EQ(desk.FileBytes(), "other");
    desk.NoteSaved("mine");
    EXPECT_FALSE(desk.HasUnsaved());
}

TEST(Desk, AsksNothingWhereBothWroteTheSame) {
    Desk desk = MakeDesk();
    desk.Change(With(desk, "same"), "");
    desk.NoteDisk("same");
    EXPECT_FALSE(desk.IsChangedOnDisk());
    EXPECT_FALSE(desk.HasUnsaved());
    desk.NoteDisk("same");
    EXPECT_EQ(desk.Now().bytes, "same");
}

}  // namespace
}  // namespace vastrelline
