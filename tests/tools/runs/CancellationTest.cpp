#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>

#include "runs/Cancellation.h"
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
