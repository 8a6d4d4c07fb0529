// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "platform/TextFormat.h"
#include "support/CommaLocale.h"

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
                    FormatCase{"NoNumber", L"%f", -std::numeric_limits<double>::quiet_NaN(), L"-nan"},
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

TEST(FormatText, TheLocaleHasNoSay) {
    const CommaLocale locale;
    EXPECT_EQ(FormatText(L"%.03lf %d", {1234.5, 1234567}), L"1234.500 1234567");
}

TEST(FormatText, TheLargestDoubleHasAllItsDigits) {
    const std::wstring text = FormatText(L"%f", {-std::numeric_limits<double>::max()});
    EXPECT_EQ(text.size(), 1U + 309U + 7U);
    EXPECT_EQ(text.substr(0, 18), L"-17976931348623157");
}

}  // namespace
}  // namespace vastrelline
