// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "platform/WaitBudget.h"

namespace vastrelline {
namespace {

using namespace std::chrono_literals;

TEST(WaitBudget, NothingIsWaitedForWithout) {
    WaitBudget none(0ms);
    EXPECT_FALSE(none.Wait(1ms));
}

TEST(WaitBudget, IsSpentInParts) {
    WaitBudget budget(4ms);
    int waits = 0;
    while (budget.Wait(2ms)) ++waits;
    // A busy machine sleeps longer than asked to, a coarse clock may have it sleep a little less.
    EXPECT_GE(waits, 1);
    EXPECT_LE(waits, 4);
    EXPECT_FALSE(budget.Wait(1ms));
}

TEST(WaitBudget, ALongWishIsCutToWhatIsLeft) {
    WaitBudget budget(1ms);
    EXPECT_TRUE(budget.Wait(24h));
    EXPECT_FALSE(budget.Wait(24h));
}

}  // namespace
}  // namespace vastrelline
