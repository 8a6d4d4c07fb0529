// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>

#include "platform/Cancellation.h"
#include "runs/ChildProcess.h"

namespace vastrelline {
namespace {

TEST(Cancellation, IsRememberedAndEndsNothing) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EXIT(
            {
                CatchCancellation();
                if (IsCancelled()) std::exit(1);
                raise(number);
                std::exit(IsCancelled() ? 42 : 2);
            },
            testing::ExitedWithCode(42), "");
    }
}

TEST(Cancellation, TheSecondWishEndsTheProcess) {
    EXPECT_EXIT(
        {
            CatchCancellation();
            raise(SIGINT);
            raise(SIGINT);
            std::exit(1);
        },
        testing::KilledBySignal(SIGINT), "");
}

TEST(Cancellation, LeavesWhatWasIgnoredBefore) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EXIT(
            {
                signal(number, SIG_IGN);
                CatchCancellation();
                raise(number);
                std::exit(IsCancelled() ? 2 : 42);
            },
            testing::ExitedWithCode(42), "");
    }
}

TEST(Cancellation, AReaderWhoGoesAwayEndsNothing) {
    EXPECT_EXIT(
        {
            CatchCancellation();
            if (IsReaderGone()) std::exit(1);
            raise(SIGPIPE);
            raise(SIGPIPE);
            std::exit(IsReaderGone() && !IsCancelled() ? 42 : 2);
        },
        testing::ExitedWithCode(42), "");
}

TEST(Cancellation, EndsAChildThatRuns) {
    EXPECT_EXIT(
        {
            CatchCancellation();
            const ChildEnd end =
                RunChild({"/bin/sh", "-c", "kill -INT $PPID; exec sleep 1000"}, std::nullopt);
            std::exit(end.kind == ChildEnd::Kind::Cancelled ? 42 : 2);
        },
        testing::ExitedWithCode(42), "");
}

}  // namespace
}  // namespace vastrelline
