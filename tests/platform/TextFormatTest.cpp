#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "platform/TextFormat.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct FormatCase {
    const char* name;
    std::wstring format;
    FormatArgument argument;
    std::wstring text;
};

class FormatTextTest : public testing::TestWithParam<FormatCase> {};

TEST_P(FormatTextTest, OneConversion) {
    EXPECT_EQ(FormatText(GetParam().format, {GetParam().argument}), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Integers, FormatTextTest,
    testing::Values(FormatCase{"Plain", L"%d", 42, L"42"}, FormatCase{"I", L"<%i>", -7, L"<-7>"},
                    FormatCase{"Zero", L"%d", 0, L"0"},
                    FormatCase{"Smallest", L"%d", std::numeric_limits<int32_t>::min(), L"-2147483648"},
                    FormatCase{"TwoDigitKey", L"%02d_", 3, L"03_"},
                    FormatCase{"ThreeDigitsGrow", L"%02d_", 100, L"100_"},
                    FormatCase{"PaddedByBlanks", L"%4d", 26, L"  26"},
                    FormatCase{"ZerosBehindTheSign", L"%05d", -42, L"-0042"},
                    FormatCase{"LongIsIgnored", L"%ld", 5, L"5"}),
    [](const auto& test) { return test.param.name; });

// All values but the last ones are exact in binary, so the digits can be written down.
INSTANTIATE_TEST_SUITE_P(
    Doubles, FormatTextTest,
    testing::Values(FormatCase{"SixDecimals", L"%lf", 0.5, L"0.500000"},
                    FormatCase{"TooSmallForSixDecimals", L"%lf", 0.0000001, L"0.000000"},
                    FormatCase{"NegativeZero", L"%f", -0.0, L"-0.000000"},
                    FormatCase{"ThreeDecimals", L"%.03lf", 1.5, L"1.500"},
                    FormatCase{"TieToEvenDown", L"%.2f", 0.125, L"0.12"},
                    FormatCase{"TieToEvenUp", L"%.2f", 0.375, L"0.38"},
                    FormatCase{"NoDecimals", L"%.0f", 2.5, L"2"},
                    FormatCase{"DotWithoutDigits", L"%.f", 3.5, L"4"},
                    FormatCase{"ManyIntegerDigits", L"%.0f", 1180591620717411303424.0,
                               L"1180591620717411303424"},
                    FormatCase{"ManyDecimals", L"%.10f", 0.0009765625, L"0.0009765625"},
                    FormatCase{"Width", L"%8.3f", 1.25, L"   1.250"},
                    FormatCase{"ZerosBehindTheSign", L"%08.3f", -1.5, L"-001.500"},
                    FormatCase{"Infinity", L"%f", kInfinity, L"inf"},
                    FormatCase{"NegativeInfinity", L"%f", -kInfinity, L"-inf"},
                    FormatCase{"InfinityIsNotZeroPadded", L"%06f", kInfinity, L"   inf"},
                    FormatCase{"NotExactBelowTheTie", L"%.3f", 1.0005, L"1.000"},  // 1.000499999...
                    FormatCase{"NotExactAboveTheTie", L"%.1f", 0.05, L"0.1"}),     // 0.0500000000000000027...
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Texts, FormatTextTest,
    testing::Values(FormatCase{"Plain", L"[%s]", std::wstring_view(L"a\u00E9"), L"[a\u00E9]"},
                    FormatCase{"Empty", L"[%s]", std::wstring_view(), L"[]"},
                    FormatCase{"Long", L"%ls", std::wstring_view(L"x"), L"x"},
                    FormatCase{"Width", L"%3s|", std::wstring_view(L"x"), L"  x|"},
                    FormatCase{"ItsPercentIsNoFormat", L"%s", std::wstring_view(L"%d%%"), L"%d%%"}),
    [](const auto& test) { return test.param.name; });

TEST(FormatText, TextWithoutConversionsStays) {
    EXPECT_EQ(FormatText(L"", {}), L"");
    EXPECT_EQ(FormatText(L"\r\n100%% done", {}), L"\r\n100% done");
}

TEST(FormatText, SeveralArgumentsInTheirOrder) {
    EXPECT_EQ(FormatText(L"#### %02d:%02d:%02d \t: CLAHE ( %.03lf sec )\r\n", {9, 5, 59, 0.25}),
              L"#### 09:05:59 \t: CLAHE ( 0.250 sec )\r\n");
    EXPECT_EQ(FormatText(L"%s\\%s", {std::wstring_view(L"a"), std::wstring_view(L"b.ini")}), L"a\\b.ini");
}

TEST(FormatText, TheLargestDoubleHasAllItsDigits) {
    const std::wstring text = FormatText(L"%f", {-std::numeric_limits<double>::max()});
    EXPECT_EQ(text.size(), 1U + 309U + 7U);
    EXPECT_EQ(text.substr(0, 18), L"-17976931348623157");
}

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

}  // namespace
}  // namespace vastrelline
