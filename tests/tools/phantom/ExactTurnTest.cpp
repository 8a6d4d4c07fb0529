// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "phantom/ExactTurn.h"

namespace vastrelline {
namespace {

TEST(ExactTurn, QuartersAreExact) {
    EXPECT_EQ(SineOfTurns(0.0), 0.0);
    EXPECT_EQ(SineOfTurns(0.25), 1.0);
    EXPECT_EQ(SineOfTurns(0.5), 0.0);
    EXPECT_EQ(SineOfTurns(0.75), -1.0);
    EXPECT_EQ(SineOfTurns(-0.25), -1.0);
    EXPECT_EQ(SineOfTurns(100.25), 1.0);
    EXPECT_EQ(CosineOfTurns(0.0), 1.0);
    EXPECT_EQ(CosineOfTurns(0.5), -1.0);
}

TEST(ExactTurn, AgreesWithTheStandardLibrary) {
    for (int i = -999; i <= 999; ++i) {
        const double turns = i / 1000.0;
        EXPECT_NEAR(SineOfTurns(turns), std::sin(2.0 * kPi * turns), 2e-15) << turns;
        EXPECT_NEAR(CosineOfTurns(turns), std::cos(2.0 * kPi * turns), 2e-15) << turns;
    }
}

// sin(pi / 2) / (pi / 2); a wave that fits the length a whole number of times averages to nothing.
TEST(WaveLeftByAverage, IsTheSineOverItsAngle) {
    EXPECT_EQ(WaveLeftByAverage(0.0), 1.0);
    EXPECT_NEAR(WaveLeftByAverage(0.5), 2.0 / kPi, 1e-15);
    EXPECT_NEAR(WaveLeftByAverage(1.0), 0.0, 1e-15);
    EXPECT_NEAR(WaveLeftByAverage(-0.5), 2.0 / kPi, 1e-15);
    EXPECT_NEAR(WaveLeftByAverage(1e-12), 1.0, 1e-15);
}

}  // namespace
}  // namespace vastrelline
