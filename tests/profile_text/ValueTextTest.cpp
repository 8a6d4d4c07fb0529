// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "profile_text/ValueText.h"
#include "support/CommaLocale.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct ParseCase {
    const char* name;
    std::wstring text;
    double value;
};

class ParseDoubleTest : public testing::TestWithParam<ParseCase> {};

TEST_P(ParseDoubleTest, ReadsTheStartOfTheText) {
    const double value = ParseDouble(GetParam().text);
    EXPECT_EQ(value, GetParam().value);
    EXPECT_EQ(std::signbit(value), std::signbit(GetParam().value));
}

INSTANTIATE_TEST_SUITE_P(
    Decimal, ParseDoubleTest,
    testing::Values(ParseCase{"Empty", L"", 0.0}, ParseCase{"Word", L"abc", 0.0},
                    ParseCase{"Plain", L"0.45", 0.45}, ParseCase{"Exponent", L"1.5e-3", 0.0015},
                    ParseCase{"BigE", L"2E2", 200.0}, ParseCase{"PlusInExponent", L"1e+2", 100.0},
                    ParseCase{"Negative", L"-2.50", -2.5}, ParseCase{"Plus", L"+5", 5.0},
                    ParseCase{"Blanks", L" \t\n\v\f\r 7", 7.0}, ParseCase{"TextBehind", L"12abc", 12.0},
                    ParseCase{"DecimalComma", L"1,5", 1.0}, ParseCase{"PointFirst", L".5", 0.5},
                    ParseCase{"PointLast", L"5.", 5.0}, ParseCase{"PointOnly", L".", 0.0},
                    ParseCase{"ExponentWithoutDigits", L"3e", 3.0},
                    ParseCase{"ExponentWithSignOnly", L"3e+", 3.0}, ParseCase{"TwoSigns", L"+-5", 0.0},
                    ParseCase{"BlankBehindSign", L"- 5", 0.0}, ParseCase{"SignOnly", L"-", 0.0},
                    ParseCase{"NegativeZero", L"-0", -0.0}, ParseCase{"OtherDigits", L"\u0663", 0.0},
                    ParseCase{"StopsAtWideCharacter", L"1\u06612", 1.0},
                    ParseCase{"LeadingZeros", L"00012", 12.0}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Hexadecimal, ParseDoubleTest,
    testing::Values(ParseCase{"Digits", L"0x10", 16.0}, ParseCase{"CapitalX", L"0XfF", 255.0},
                    ParseCase{"Fraction", L"0x1.8", 1.5}, ParseCase{"PointFirst", L"0x.8", 0.5},
                    ParseCase{"Exponent", L"0x1p-2", 0.25}, ParseCase{"Negative", L"-0x2", -2.0},
                    ParseCase{"NoDigits", L"0x", 0.0}, ParseCase{"TwoSignsOfTheExponent", L"0x3p+-1", 3.0},
                    ParseCase{"TwoSignsBehindThePoint", L"0x1.8p--1", 1.5},
                    ParseCase{"NoHexDigits", L"0xg", 0.0}, ParseCase{"PointWithoutDigits", L"0x.", 0.0},
                    ParseCase{"BlankBehindZero", L"0 x1", 0.0}, ParseCase{"TooLarge", L"0x1p1024", kInfinity},
                    ParseCase{"TooSmall", L"-0x1p-2000", -0.0}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Limits, ParseDoubleTest,
    testing::Values(
        ParseCase{"Infinity", L"inf", kInfinity}, ParseCase{"InfinityInFull", L"-INFINITY", -kInfinity},
        ParseCase{"TooLarge", L"1e309", kInfinity}, ParseCase{"TooLargeNegative", L"-1e999", -kInfinity},
        ParseCase{"TooSmall", L"1e-999", 0.0}, ParseCase{"TooSmallNegative", L"-1e-999", -0.0},
        ParseCase{"Largest", L"1.7976931348623157e308", std::numeric_limits<double>::max()},
        ParseCase{"Smallest", L"4.9406564584124654e-324", std::numeric_limits<double>::denorm_min()},
        ParseCase{"HugeExponent", L"1e99999999999999999999", kInfinity},
        ParseCase{"HugeNegativeExponent", L"1e-99999999999999999999", 0.0},
        ParseCase{"ZeroWithHugeExponent", L"0e99999999999999999999", 0.0},
        ParseCase{"ManyDigits", L"1" + std::wstring(400, L'0') + L"e-400", 1.0},
        ParseCase{"ManyDigitsTooLarge", L"1" + std::wstring(400, L'0'), kInfinity},
        ParseCase{"ManyDecimalsTooSmall", L"0." + std::wstring(400, L'0') + L"1", 0.0},
        // Halfway between 1 and the next double, and the least above it.
        ParseCase{"TieToEven", L"1.00000000000000011102230246251565404236316680908203125", 1.0},
        ParseCase{"AboveTie", L"1.00000000000000011102230246251565404236316680908203126",
                  1.0000000000000002220446049250313}),
    [](const auto& test) { return test.param.name; });

TEST(ParseDouble, NotANumber) {
    EXPECT_TRUE(std::isnan(ParseDouble(L"nan")));
    EXPECT_TRUE(std::isnan(ParseDouble(L"NaN(1)")));
}

TEST(ParseDoubleAtStart, TellsWhereTheNumberEnds) {
    EXPECT_EQ(ParseDoubleAtStart(L"12abc").length, 2U);
    EXPECT_EQ(ParseDoubleAtStart(L" -1.5e-3 ").length, 8U);
    EXPECT_EQ(ParseDoubleAtStart(L"1,5").length, 1U);
    EXPECT_EQ(ParseDoubleAtStart(L"3e+").length, 1U);
    EXPECT_EQ(ParseDoubleAtStart(L"+0x1.8p1z").length, 8U);
    EXPECT_EQ(ParseDoubleAtStart(L"0x").length, 1U);
    EXPECT_EQ(ParseDoubleAtStart(L"1e999x").length, 5U);
    EXPECT_EQ(ParseDoubleAtStart(L"-infinity.").length, 9U);
    EXPECT_EQ(ParseDoubleAtStart(L"nan").length, 3U);
    EXPECT_EQ(ParseDoubleAtStart(L"").length, 0U);
    EXPECT_EQ(ParseDoubleAtStart(L" -").length, 0U);
    EXPECT_EQ(ParseDoubleAtStart(L"abc").length, 0U);
    EXPECT_EQ(ParseDoubleAtStart(L"+-5").length, 0U);
}

struct IntegerCase {
    const char* name;
    std::wstring text;
    int32_t value;
};

class ParseLeadingIntegerTest : public testing::TestWithParam<IntegerCase> {};

TEST_P(ParseLeadingIntegerTest, ReadsTheStartOfTheText) {
    EXPECT_EQ(ParseLeadingInteger(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ParseLeadingIntegerTest,
    testing::Values(IntegerCase{"Empty", L"", 0}, IntegerCase{"Plain", L"42", 42},
                    IntegerCase{"Negative", L"-7", -7}, IntegerCase{"PlusIsNoDigit", L"+7", 0},
                    IntegerCase{"BlankAndTab", L" \t8", 8}, IntegerCase{"OtherBlanks", L"\v8", 0},
                    IntegerCase{"Fraction", L"2.9", 2}, IntegerCase{"Hexadecimal", L"0x10", 0},
                    IntegerCase{"BlankBehindSign", L"- 7", 0}, IntegerCase{"OtherDigits", L"\u0663", 0},
                    IntegerCase{"LargestUnsigned", L"4294967295", -1}, IntegerCase{"Wraps", L"4294967298", 2},
                    IntegerCase{"Smallest", L"-2147483648", INT32_MIN},
                    IntegerCase{"PastTheLargest", L"2147483648", INT32_MIN}),
    [](const auto& test) { return test.param.name; });

TEST(DropQuotes, TakesTwoOfAKindOnce) {
    EXPECT_EQ(DropQuotes(L"\"5\""), L"5");
    EXPECT_EQ(DropQuotes(L"'5'"), L"5");
    EXPECT_EQ(DropQuotes(L"''5''"), L"'5'");
    EXPECT_EQ(DropQuotes(L"\"\""), L"");
    EXPECT_EQ(DropQuotes(L"\"5'"), L"\"5'");
    EXPECT_EQ(DropQuotes(L"\""), L"\"");
    EXPECT_EQ(DropQuotes(L""), L"");
}

TEST(FormatFixed, RoundsTheExactValue) {
    EXPECT_EQ(FormatFixed(0.0000001, 6), L"0.000000");
    EXPECT_EQ(FormatFixed(-0.0, 6), L"-0.000000");
    EXPECT_EQ(FormatFixed(0.125, 2), L"0.12");
    EXPECT_EQ(FormatFixed(-kInfinity, 3), L"-inf");
    EXPECT_EQ(FormatFixed(-2.5, 0), L"-2");
}

TEST(FormatFixed, NoNumberShowsItsSign) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(FormatFixed(kNan, 3), L"nan");
    EXPECT_EQ(FormatFixed(-kNan, 3), L"-nan");
}

TEST(ValueText, TheLocaleHasNoSay) {
    const CommaLocale locale;
    EXPECT_EQ(ParseDouble(L"-0.45"), -0.45);
    EXPECT_EQ(ParseDouble(L"0,45"), 0.0);
    EXPECT_EQ(ParseLeadingInteger(L"1.234"), 1);
    EXPECT_EQ(FormatFixed(-1234.5, 2), L"-1234.50");
}

}  // namespace
}  // namespace vastrelline
