// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "sweep/DecimalNumber.h"

namespace vastrelline {
namespace {

struct ReadCase {
    const char* name;
    const char* text;
    std::optional<DecimalNumber> number;
    const char* written;
};

class ParseDecimalTest : public testing::TestWithParam<ReadCase> {};

TEST_P(ParseDecimalTest, ReadsDigitByDigit) {
    const std::optional<DecimalNumber> number = ParseDecimal(GetParam().text);
    EXPECT_EQ(number, GetParam().number);
    if (number) {
        EXPECT_EQ(FormatDecimal(*number), GetParam().written);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ParseDecimalTest,
    testing::Values(ReadCase{"Whole", "12", DecimalNumber{12, 0}, "12"},
                    ReadCase{"Zeros", "100", DecimalNumber{100, 0}, "100"},
                    ReadCase{"Fraction", "-0.50", DecimalNumber{-50, 2}, "-0.5"},
                    ReadCase{"NothingBeforeThePoint", "+.05", DecimalNumber{5, 2}, "0.05"},
                    ReadCase{"NothingBehindThePoint", "3.", DecimalNumber{3, 0}, "3"},
                    ReadCase{"NoNegativeZero", "-0.0", DecimalNumber{0, 1}, "0"},
                    ReadCase{"FifteenDigits", "0.00000000000001", DecimalNumber{1, 14}, "0.00000000000001"},
                    ReadCase{"SixteenDigits", "1234567890123456", std::nullopt, ""},
                    ReadCase{"Nothing", "", std::nullopt, ""}, ReadCase{"PointOnly", ".", std::nullopt, ""},
                    ReadCase{"SignOnly", "-", std::nullopt, ""},
                    ReadCase{"DecimalComma", "1,5", std::nullopt, ""},
                    ReadCase{"Exponent", "1e3", std::nullopt, ""},
                    ReadCase{"TwoPoints", "1.2.3", std::nullopt, ""}),
    [](const auto& test) { return test.param.name; });

std::vector<std::string> CountUp(const char* first, const char* last, const char* step) {
    std::vector<std::string> texts;
    const auto steps = MakeDecimalSteps(*ParseDecimal(first), *ParseDecimal(last), *ParseDecimal(step));
    if (!steps) return {"none"};
    for (uint64_t i = 0; i < steps->count; ++i) texts.push_back(FormatDecimal(steps->At(i)));
    return texts;
}

using Texts = std::vector<std::string>;

TEST(DecimalSteps, HaveNoErrorThatGrows) {
    EXPECT_EQ(CountUp("0", "1", "0.1"),
              (Texts{"0", "0.1", "0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.8", "0.9", "1"}));
}

TEST(DecimalSteps, TakeTheLastOnlyIfAStepHitsIt) {
    EXPECT_EQ(CountUp("0", "1", "0.3"), (Texts{"0", "0.3", "0.6", "0.9"}));
    EXPECT_EQ(CountUp("0", "0.9", "0.3"), (Texts{"0", "0.3", "0.6", "0.9"}));
    EXPECT_EQ(CountUp("2", "2.5", "7"), (Texts{"2"}));
    EXPECT_EQ(CountUp("2", "2", "-1"), (Texts{"2"}));
}

TEST(DecimalSteps, GoDown) {
    EXPECT_EQ(CountUp("0.2", "-0.2", "-0.1"), (Texts{"0.2", "0.1", "0", "-0.1", "-0.2"}));
    EXPECT_EQ(CountUp("3", "1", "1"), (Texts{"3", "2", "1"})) << "a step without a minus";
    EXPECT_EQ(CountUp("-1", "-2", "0.75"), (Texts{"-1", "-1.75"}));
}

TEST(DecimalSteps, ThatLeadNowhereAreNone) {
    EXPECT_EQ(CountUp("0", "1", "0"), (Texts{"none"}));
    EXPECT_EQ(CountUp("0", "1", "-0.1"), (Texts{"none"}));
    EXPECT_EQ(CountUp("999999999999", "1000000000000", "0.0001"), (Texts{"none"})) << "too many digits";
}

TEST(DecimalSteps, AreCountedBeforeTheyAreMade) {
    const auto steps = MakeDecimalSteps({0, 0}, {100000000, 0}, {1, 6});
    ASSERT_TRUE(steps);
    EXPECT_EQ(steps->count, 100000000000001U);
    EXPECT_EQ(FormatDecimal(steps->At(steps->count - 1)), "100000000");
}

}  // namespace
}  // namespace vastrelline
