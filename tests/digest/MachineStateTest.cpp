// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cfenv>
#include <limits>

#include "MachineState.h"

namespace vastrelline::digest {
namespace {

// What the processor works out, not the compiler.
double Divide(double dividend, double divisor) {
    const volatile double known = dividend;
    return known / divisor;
}

TEST(ScopedHabits, RoundUpAsLongAsTheyLast) {
    const double nearest = Divide(1, 3);
    {
        const ScopedHabits scope({.roundsUp = true});
        EXPECT_EQ(std::fegetround(), FE_UPWARD);
        EXPECT_GT(Divide(1, 3), nearest);
    }
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
    EXPECT_EQ(Divide(1, 3), nearest);
}

TEST(ScopedHabits, FlushDenormalsAsLongAsTheyLast) {
    if (!CanHave({.flushesDenormals = true})) GTEST_SKIP() << "no such processor";
    const double smallest = std::numeric_limits<double>::min();
    {
        const ScopedHabits scope({.flushesDenormals = true});
        EXPECT_EQ(Divide(smallest, 2), 0);
    }
    EXPECT_GT(Divide(smallest, 2), 0);
}

TEST(ScopedHabits, TakeBitsFromTheX87UnitAsLongAsTheyLast) {
    if (!CanHave({.x87Double = true})) GTEST_SKIP() << "no such processor";
    const auto third = [] {
        const volatile long double dividend = 1;
        const volatile long double divisor = 3;
        return dividend / divisor;
    };
    const long double full = third();
    long double narrow = 0;
    {
        const ScopedHabits scope({.x87Double = true});
        narrow = third();
    }
    EXPECT_EQ(narrow, static_cast<long double>(Divide(1, 3)));
    EXPECT_EQ(third(), full);
}

TEST(SetCommaLocale, RefusesWhatIsNotThere) { EXPECT_FALSE(SetCommaLocale("xx_NOWHERE")); }

TEST(SetCommaLocale, RefusesALocaleWithAPoint) { EXPECT_FALSE(SetCommaLocale("C")); }

}  // namespace
}  // namespace vastrelline::digest
