// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <iomanip>
#include <string>

#include "EachFunction.h"
#include "HardCases.h"
#include "MadeArguments.h"
#include "ReferenceValue.h"
#include "elementary/Exponential.h"

// The functions beside a library that is made for right digits. It is met on one system only; the sums and
// the hard cases' results, which are checked here, carry what it says to all others.
namespace vastrelline {
namespace {

class ReferenceTest : public testing::TestWithParam<Elementary> {};

TEST_P(ReferenceTest, GivesTheSameBits) {
    const Elementary function = GetParam();
    ResultSum sum;
    size_t differences = 0;
    for (const Arguments& arguments : MakeArguments(function, VASTRELLINE_CHECKED_ARGUMENTS)) {
        const double expected = ReferenceResult(function, arguments);
        const double actual = ApplyOwn(function, arguments);
        sum.Add(expected);
        if (BitsOf(actual) == BitsOf(expected)) continue;
        constexpr size_t kShown = 10;
        if (++differences <= kShown) {
            ADD_FAILURE() << NameOf(function) << std::hexfloat << '(' << arguments.x << ", " << arguments.y
                          << ") is " << expected << ", not " << actual;
        }
    }
    EXPECT_EQ(differences, 0U);
    EXPECT_EQ(sum.Value(), ExpectedSum(function, VASTRELLINE_CHECKED_ARGUMENTS)) << std::hex << sum.Value();
}

INSTANTIATE_TEST_SUITE_P(Elementary, ReferenceTest, testing::ValuesIn(kEachFunction),
                         [](const auto& test) { return std::string(NameOf(test.param)); });

TEST(HardCases, AreAsHardAsTheySay) {
    for (const HardCase& one : HardCases()) {
        EXPECT_EQ(DistanceBits(one.function, one.arguments), one.distanceBits)
            << NameOf(one.function) << std::hexfloat << '(' << one.arguments.x << ", " << one.arguments.y
            << ')';
    }
}

TEST(HardCases, AreRoundedToTheNearest) {
    for (const HardCase& one : HardCases()) {
        EXPECT_EQ(BitsOf(ReferenceResult(one.function, one.arguments)), BitsOf(one.result))
            << NameOf(one.function) << std::hexfloat << '(' << one.arguments.x << ", " << one.arguments.y
            << ')';
    }
}

}  // namespace
}  // namespace vastrelline
