// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <iomanip>
#include <string>

#include "EachFunction.h"
#include "HardCases.h"
#include "MadeArguments.h"
#include "elementary/Exponential.h"

namespace vastrelline {
namespace {

class EachFunctionTest : public testing::TestWithParam<Elementary> {};

TEST_P(EachFunctionTest, RoundsEachResultRight) {
    ResultSum sum;
    for (const Arguments& arguments : MakeArguments(GetParam(), VASTRELLINE_CHECKED_ARGUMENTS))
        sum.Add(ApplyOwn(GetParam(), arguments));
    EXPECT_EQ(sum.Value(), ExpectedSum(GetParam(), VASTRELLINE_CHECKED_ARGUMENTS));
}

TEST_P(EachFunctionTest, RoundsHardCasesRight) {
    size_t count = 0;
    for (const HardCase& one : HardCases()) {
        if (one.function != GetParam()) continue;
        ++count;
        const double actual = ApplyOwn(one.function, one.arguments);
        EXPECT_EQ(BitsOf(actual), BitsOf(one.result))
            << std::hexfloat << '(' << one.arguments.x << ", " << one.arguments.y << ") is " << one.result
            << ", not " << actual;
    }
    EXPECT_GE(count, 20U);
}

INSTANTIATE_TEST_SUITE_P(Elementary, EachFunctionTest, testing::ValuesIn(kEachFunction),
                         [](const auto& test) { return std::string(NameOf(test.param)); });

TEST(ResultSum, EachBitOfEachResultCounts) {
    ResultSum zeros;
    zeros.Add(0.0);
    zeros.Add(0.0);
    ResultSum signs;
    signs.Add(-0.0);
    signs.Add(-0.0);
    EXPECT_NE(zeros.Value(), signs.Value());
    ResultSum swapped;
    swapped.Add(1.0);
    swapped.Add(0.0);
    ResultSum ordered;
    ordered.Add(0.0);
    ordered.Add(1.0);
    EXPECT_NE(swapped.Value(), ordered.Value());
}

}  // namespace
}  // namespace vastrelline
