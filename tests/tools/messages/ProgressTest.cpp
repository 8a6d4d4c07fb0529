// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sstream>

#include "messages/Progress.h"

namespace vastrelline {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// A clock that goes when it is told to.
class ProgressTest : public testing::Test {
protected:
    Progress Make(bool isTerminal, bool isQuiet, size_t total) {
        return {stream_, {isTerminal, isQuiet}, "frames", total, [this] { return now_; }};
    }

    std::string Said() {
        std::string text = stream_.str();
        stream_.str("");
        return text;
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    std::ostringstream stream_;
    std::chrono::steady_clock::time_point now_{};
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(ProgressTest, SaysNothingInTheFirstSecond) {
    for (const bool isTerminal : {false, true}) {
        Progress progress = Make(isTerminal, false, 4);
        now_ += milliseconds(999);
        progress.Update(3, 1);
        progress.Finish();
        EXPECT_EQ(Said(), "");
    }
}

TEST_F(ProgressTest, ChangesOneLineOfATerminal) {
    Progress progress = Make(true, false, 100);
    now_ += seconds(2);
    progress.Update(4, 0);
    EXPECT_EQ(Said(), "\r\033[Kframes: 4 of 100, 2.0 a second, 48 s left");
    now_ += milliseconds(50);
    progress.Update(5, 0);
    EXPECT_EQ(Said(), "") << "too soon";
    now_ += milliseconds(1950);
    progress.Update(10, 2);
    EXPECT_EQ(Said(), "\r\033[Kframes: 10 of 100, 2.5 a second, 36 s left, 2 failed");
    progress.Finish();
    EXPECT_EQ(Said(), "\r\033[K");
    progress.Update(100, 2);
    EXPECT_EQ(Said(), "");
}

TEST_F(ProgressTest, WhatTookNoWorkIsNoRate) {
    Progress progress = Make(true, false, 100);
    now_ += seconds(2);
    progress.Update(80, 0, 80);
    EXPECT_EQ(Said(), "\r\033[Kframes: 80 of 100, 0.0 a second");
    now_ += seconds(2);
    progress.Update(88, 0, 80);
    EXPECT_EQ(Said(), "\r\033[Kframes: 88 of 100, 2.0 a second, 6 s left");
}

TEST_F(ProgressTest, IsAPlainLineEveryTenSecondsElsewhere) {
    Progress progress = Make(false, false, 1000);
    now_ += seconds(9);
    progress.Update(1, 0);
    EXPECT_EQ(Said(), "");
    now_ += seconds(1);
    progress.Update(5, 0);
    EXPECT_EQ(Said(), "frames: 5 of 1000, 0.5 a second, 33:10 min left\n");
    now_ += seconds(9);
    progress.Update(5, 0);
    EXPECT_EQ(Said(), "");
    now_ += seconds(1);
    progress.Update(1000, 0);
    EXPECT_EQ(Said(), "frames: 1000 of 1000, 50.0 a second\n");
}

TEST_F(ProgressTest, OfAnUnknownTotalIsTheTime) {
    Progress progress = Make(true, false, 0);
    now_ += seconds(75);
    progress.Update(0, 0);
    EXPECT_EQ(Said(), "\r\033[Kframes: 1:15 min");
    now_ += seconds(75);
}

TEST_F(ProgressTest, IsSilentWhenQuietIsAskedFor) {
    Progress progress = Make(true, true, 10);
    now_ += seconds(20);
    progress.Update(1, 0);
    progress.Finish();
    EXPECT_EQ(Said(), "");
}

}  // namespace
}  // namespace vastrelline
