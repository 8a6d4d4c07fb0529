// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "messages/ToolError.h"
#include "sweep/SweptKey.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr size_t kMost = 100;

TEST(SweptKey, CountsInDecimal) {
    const SweptKey swept = ParseSweptKey(" 04_MAX_SLOPE = 1 : 1.3 : 0.1 ", kMost);
    EXPECT_EQ(swept.key, "04_MAX_SLOPE");
    EXPECT_THAT(swept.values, ElementsAre("1", "1.1", "1.2", "1.3"));
    EXPECT_THAT(ParseSweptKey("A=-80:80:80", kMost).values, ElementsAre("-80", "0", "80"));
}

TEST(SweptKey, TakesListsAsTheyAre) {
    EXPECT_THAT(ParseSweptKey("A=2.50, 1e3 ,word", kMost).values, ElementsAre("2.50", "1e3", "word"));
    EXPECT_THAT(ParseSweptKey("A=7", kMost).values, ElementsAre("7"));
    EXPECT_THAT(ParseSweptKey("A=x=y", kMost).values, ElementsAre("x=y"));
}

struct WrongCase {
    const char* name;
    const char* text;
    const char* said;
};

class WrongSweptKeyTest : public testing::TestWithParam<WrongCase> {};

TEST_P(WrongSweptKeyTest, SaysWhatIsWrong) {
    try {
        ParseSweptKey(GetParam().text, kMost);
        ADD_FAILURE() << "was taken";
    } catch (const UsageError& error) {
        EXPECT_THAT(error.what(), HasSubstr(GetParam().said));
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, WrongSweptKeyTest,
                         testing::Values(WrongCase{"NoEqualsSign", "04_MAX_SLOPE", "sets nothing"},
                                         WrongCase{"NoKey", "=1:2:1", "sets nothing"},
                                         WrongCase{"NoValue", "A=", "an empty value"},
                                         WrongCase{"GapInAList", "A=1,,2", "an empty value"},
                                         WrongCase{"ValueTwice", "A=1,2,1", "the value 1 twice"},
                                         WrongCase{"NoStep", "A=1:2", "no start, end and step"},
                                         WrongCase{"TooManyParts", "A=1:2:3:4", "no start, end and step"},
                                         WrongCase{"NoNumber", "A=1:x:1", "'x' in 'A=1:x:1' is no decimal"},
                                         WrongCase{"DecimalComma", "A=0:1:0,1", "'0,1' in"},
                                         WrongCase{"StepOfZero", "A=1:2:0", "does not lead to the end"},
                                         WrongCase{"WrongWay", "A=1:2:-1", "does not lead to the end"},
                                         WrongCase{"TooManySteps", "A=0:100:1",
                                                   "101 values, and at most 100"}),
                         [](const auto& test) { return test.param.name; });

TEST(SweptKey, HasALimitForLists) {
    EXPECT_THROW(ParseSweptKey("A=1,2,3", 2), UsageError);
    EXPECT_EQ(ParseSweptKey("A=0:99:1", kMost).values.size(), kMost);
}

}  // namespace
}  // namespace vastrelline
