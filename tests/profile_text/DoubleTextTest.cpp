// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <sstream>
#include <string>

#include "profile_text/DoubleText.h"
#include "support/CommaLocale.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Decimal digits times a factor below 2^59, as one learns it at school.
std::string Times(std::string digits, uint64_t factor) {
    uint64_t carry = 0;
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        carry += static_cast<uint64_t>(*digit - '0') * factor;
        *digit = static_cast<char>('0' + carry % 10);
        carry /= 10;
    }
    for (; carry > 0; carry /= 10) digits.insert(0, 1, static_cast<char>('0' + carry % 10));
    return digits;
}

// All digits of factor * 2^-power.
std::string ExactText(uint64_t factor, int power) {
    std::string digits = Times("1", factor);
    for (int i = 0; i < power; ++i) digits = Times(digits, 5);
    return digits + "e-" + std::to_string(power);
}

// All digits of a double from 2^53 on.
std::string WholeText(uint64_t factor, int power) {
    std::string digits = Times("1", factor);
    for (int i = 0; i < power; ++i) digits = Times(digits, 2);
    return digits;
}

std::string Zeros(size_t count) { return std::string(count, '0'); }

struct DoubleCase {
    const char* name;
    std::string text;
    double value;
};

class ParseUnsignedDoubleTest : public testing::TestWithParam<DoubleCase> {};

TEST_P(ParseUnsignedDoubleTest, GivesTheNearestDouble) {
    const ParsedDouble parsed = ParseUnsignedDouble(GetParam().text);
    EXPECT_EQ(std::bit_cast<uint64_t>(parsed.value), std::bit_cast<uint64_t>(GetParam().value));
    EXPECT_EQ(parsed.length, GetParam().text.size());
}

INSTANTIATE_TEST_SUITE_P(
    Limits, ParseUnsignedDoubleTest,
    testing::Values(DoubleCase{"LargestSubnormal", "2.2250738585072011e-308", 0x0.fffffffffffffp-1022},
                    DoubleCase{"SmallestNormal", "2.2250738585072012e-308", 0x1p-1022},
                    DoubleCase{"Largest", "1.7976931348623158e308", 0x1.fffffffffffffp+1023},
                    DoubleCase{"JustTooLarge", "1.7976931348623159e308", kInfinity},
                    DoubleCase{"Smallest", "4.9406564584124654e-324", 0x1p-1074},
                    DoubleCase{"BelowHalfTheSmallest", "2.4703282292062327e-324", 0.0},
                    DoubleCase{"AboveHalfTheSmallest", "2.4703282292062328e-324", 0x1p-1074},
                    DoubleCase{"AboveThreeHalvesOfTheSmallest", "7.4109846876186982e-324", 0x1p-1073},
                    DoubleCase{"ExponentOfTenDigits", "1e9999999999", kInfinity},
                    DoubleCase{"NegativeExponentOfTenDigits", "1e-9999999999", 0.0},
                    DoubleCase{"ExponentPastAnyInteger", "0.1e-" + std::string(50, '9'), 0.0},
                    DoubleCase{"ZeroWithHugeExponent", "000.000e9999999999", 0.0}),
    [](const auto& test) { return test.param.name; });

// Numbers that lie in the middle between two doubles, or beside it by no more than their last digit.
INSTANTIATE_TEST_SUITE_P(
    Ties, ParseUnsignedDoubleTest,
    testing::Values(DoubleCase{"Down", "9007199254740993", 0x1p53},
                    DoubleCase{"Up", "9007199254740995", 0x1.0000000000002p+53},
                    DoubleCase{"Above", "9007199254740993." + Zeros(900) + "1", 0x1.0000000000001p+53},
                    DoubleCase{"WithZerosBehind", "9007199254740993." + Zeros(900), 0x1p53},
                    DoubleCase{"Below", "9007199254740994." + std::string(900, '9'), 0x1.0000000000001p+53},
                    DoubleCase{"HalfTheSmallest", ExactText(1, 1075), 0.0},
                    DoubleCase{"AboveHalfTheSmallest",
                               "0." + Zeros(323) + "24703282292062327208828439643411068618253", 0x1p-1074},
                    DoubleCase{"ThreeHalvesOfTheSmallest", ExactText(3, 1075), 0x1p-1073},
                    // 768 digits, as many as such a number can have.
                    DoubleCase{"LongestUp", ExactText((uint64_t{1} << 54) - 1, 1075), 0x1p-1021},
                    DoubleCase{"LongestDown", ExactText((uint64_t{1} << 54) - 3, 1075),
                               0x1.ffffffffffffep-1022},
                    DoubleCase{"AboveTheLongest",
                               "0." + Zeros(307) + ExactText((uint64_t{1} << 54) - 3, 1075).substr(0, 768) +
                                   Zeros(500) + "1",
                               0x1.fffffffffffffp-1022},
                    DoubleCase{"LargestAndInfinity", WholeText((uint64_t{1} << 54) - 1, 970), kInfinity},
                    DoubleCase{"BelowInfinity", WholeText((uint64_t{1} << 54) - 1, 970).substr(0, 308) + "1",
                               std::numeric_limits<double>::max()},
                    DoubleCase{"SubnormalAndNormal", ExactText((uint64_t{1} << 53) - 1, 1075), 0x1p-1022}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(ManyDigits, ParseUnsignedDoubleTest,
                         testing::Values(DoubleCase{"Nines", "0." + std::string(800, '9'), 1.0},
                                         DoubleCase{"ZerosInFront", Zeros(800) + "2.5", 2.5},
                                         DoubleCase{"ZerosBehindThePoint", "0." + Zeros(800) + "25e801", 2.5},
                                         DoubleCase{"ZerosBehind", "25" + Zeros(800) + "e-801", 2.5},
                                         DoubleCase{"DigitsOfOne", "1." + Zeros(799) + "1", 1.0},
                                         DoubleCase{"LongAndSmall", "625" + Zeros(37) + "e-39", 6.25}),
                         [](const auto& test) { return test.param.name; });

// Digits and power of ten are exact in doubles, and so easily multiplied; but not by a processor that rounds
// the product to 64 bits first.
INSTANTIATE_TEST_SUITE_P(
    RoundedOnce, ParseUnsignedDoubleTest,
    testing::Values(DoubleCase{"A", "7984462819249647e14", 0x1.427d691b39a1fp+99},
                    DoubleCase{"B", "6308624889174012e12", 0x1.4625f48830dcfp+92},
                    DoubleCase{"C", "8086384272244349e21", 0x1.855861aaf98ffp+122},
                    DoubleCase{"D", "6541746943287802e11", 0x1.0e8f709e917f3p+89},
                    DoubleCase{"TenTo22", "1e22", 0x1.0f0cf064dd592p+73},
                    DoubleCase{"TenTo23", "1e23", 0x1.52d02c7e14af6p+76},
                    DoubleCase{"ItsExactValue", "99999999999999991611392", 0x1.52d02c7e14af6p+76},
                    DoubleCase{"Tenth", "0.1", 0x1.999999999999ap-4},
                    DoubleCase{"ThirdOfATenth", "0.03333333333333333", 0x1.1111111111111p-5}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Hexadecimal, ParseUnsignedDoubleTest,
    testing::Values(DoubleCase{"Tie", "0x1.00000000000008p0", 1.0},
                    DoubleCase{"TieUp", "0x1.00000000000018p0", 0x1.0000000000002p+0},
                    DoubleCase{"AboveATie", "0x1.00000000000008" + Zeros(900) + "1p0", 0x1.0000000000001p+0},
                    DoubleCase{"HalfTheSmallest", "0x1p-1075", 0.0},
                    DoubleCase{"AboveHalfTheSmallest", "0x1.8p-1075", 0x1p-1074},
                    DoubleCase{"SubnormalTie", "0X0.00000000000018P-1022", 0x1p-1073},
                    DoubleCase{"Largest", "0x1.fffffffffffff7ffp1023", std::numeric_limits<double>::max()},
                    DoubleCase{"TooLarge", "0x1.fffffffffffff8p1023", kInfinity},
                    DoubleCase{"ManyZeros", "0x" + Zeros(500) + "." + Zeros(500) + "8p2001", 1.0},
                    DoubleCase{"HugeExponent", "0x1p9999999999", kInfinity},
                    DoubleCase{"HugeNegativeExponent", "0x1p-9999999999", 0.0},
                    DoubleCase{"ZeroWithHugeExponent", "0x0p9999999999", 0.0}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Words, ParseUnsignedDoubleTest,
    testing::Values(DoubleCase{"Infinity", "iNfInItY", kInfinity}, DoubleCase{"Inf", "INF", kInfinity},
                    DoubleCase{"Nan", "nAn", std::numeric_limits<double>::quiet_NaN()},
                    DoubleCase{"NanWithBracket", "nan(0x_7F)", std::numeric_limits<double>::quiet_NaN()},
                    DoubleCase{"NanWithEmptyBracket", "nan()", std::numeric_limits<double>::quiet_NaN()}),
    [](const auto& test) { return test.param.name; });

struct LengthCase {
    const char* name;
    const char* text;
    size_t length;
};

class NumberLengthTest : public testing::TestWithParam<LengthCase> {};

TEST_P(NumberLengthTest, EndsWithTheNumber) {
    EXPECT_EQ(ParseUnsignedDouble(GetParam().text).length, GetParam().length);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NumberLengthTest,
    testing::Values(
        LengthCase{"Empty", "", 0}, LengthCase{"Point", ".", 0}, LengthCase{"PointAndExponent", ".e5", 0},
        LengthCase{"Sign", "-5", 0}, LengthCase{"Blank", " 5", 0}, LengthCase{"LastPoint", "5.", 2},
        LengthCase{"TwoPoints", "1.2.3", 3}, LengthCase{"Comma", "1,5", 1}, LengthCase{"Grouped", "1'000", 1},
        LengthCase{"ExponentOnly", "e5", 0}, LengthCase{"ExponentWithoutDigits", "1e", 1},
        LengthCase{"ExponentWithSignOnly", "1e-", 1}, LengthCase{"ExponentWithTwoSigns", "1e+-5", 1},
        LengthCase{"ExponentBehindThePoint", "1.e5x", 4}, LengthCase{"BrokenExponent", "1e5.5", 3},
        LengthCase{"InfinityCutShort", "infinit", 3}, LengthCase{"LongerThanInfinity", "infinityx", 8},
        LengthCase{"AlmostNan", "na", 0}, LengthCase{"OpenBracket", "nan(12", 3},
        LengthCase{"OtherSignInBracket", "nan(1-2)", 3}, LengthCase{"HexWithoutDigits", "0xg", 1},
        LengthCase{"HexPointOnly", "0x.", 1}, LengthCase{"HexExponentOnly", "0xp1", 1},
        LengthCase{"HexWithoutExponentDigits", "0x1p", 3}, LengthCase{"HexTwoSigns", "0x1p+-1", 3},
        LengthCase{"HexLastPoint", "0x1.p1", 6}, LengthCase{"HexInDecimal", "1x1", 1}),
    [](const auto& test) { return test.param.name; });

struct FixedCase {
    const char* name;
    double value;
    int precision;
    std::string text;
};

class FormatUnsignedFixedTest : public testing::TestWithParam<FixedCase> {};

TEST_P(FormatUnsignedFixedTest, GivesTheDigits) {
    EXPECT_EQ(FormatUnsignedFixed(GetParam().value, GetParam().precision), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, FormatUnsignedFixedTest,
    testing::Values(FixedCase{"Zero", 0.0, 0, "0"}, FixedCase{"ZeroWithDecimals", 0.0, 3, "0.000"},
                    FixedCase{"HalfToZero", 0.5, 0, "0"}, FixedCase{"HalfUpToTwo", 1.5, 0, "2"},
                    FixedCase{"HalfDownToTwo", 2.5, 0, "2"}, FixedCase{"EighthDown", 0.125, 2, "0.12"},
                    FixedCase{"EighthsUp", 0.375, 2, "0.38"}, FixedCase{"BelowATie", 1.0005, 3, "1.000"},
                    FixedCase{"AboveATie", 0.05, 1, "0.1"}, FixedCase{"CarriesThrough", 9.9999, 3, "10.000"},
                    FixedCase{"CarriesToOne", 0.99951, 3, "1.000"}, FixedCase{"Small", 1e-7, 6, "0.000000"},
                    FixedCase{"AllDigits", 0.1, 60,
                              "0.1000000000000000055511151231257827021181583404541015625" + Zeros(5)},
                    FixedCase{"Whole", 123.0, 2, "123.00"}, FixedCase{"Nine", 1e9, 1, "1000000000.0"},
                    FixedCase{"TenTo22", 1e22, 0, "1" + Zeros(22)},
                    FixedCase{"TenTo23", 1e23, 1, "99999999999999991611392.0"},
                    FixedCase{"Largest", std::numeric_limits<double>::max(), 2,
                              WholeText((uint64_t{1} << 53) - 1, 971) + ".00"},
                    FixedCase{"SmallestTie", 0x1p-1074, 0, "0"},
                    FixedCase{"LastPlaceBehindAllDigits", 0.5, 1100, "0.5" + Zeros(1099)}),
    [](const auto& test) { return test.param.name; });

TEST(FormatUnsignedFixed, TheSmallestHasAllItsDigits) {
    std::string digits = "1";
    for (int i = 0; i < 1074; ++i) digits = Times(digits, 5);
    EXPECT_EQ(FormatUnsignedFixed(0x1p-1074, 1074), "0." + Zeros(1074 - digits.size()) + digits);
    EXPECT_EQ(FormatUnsignedFixed(0x1p-1074, 1080), "0." + Zeros(1074 - digits.size()) + digits + Zeros(6));
}

// A host's way of rounding is not asked.
TEST(DoubleText, TheRoundingModeHasNoSay) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        const double tenth = ParseUnsignedDouble("0.1").value;
        const double large = ParseUnsignedDouble("7984462819249647e14").value;
        const std::string text = FormatUnsignedFixed(0.375, 2);
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(tenth, 0x1.999999999999ap-4);
        EXPECT_EQ(large, 0x1.427d691b39a1fp+99);
        EXPECT_EQ(text, "0.38");
    }
}

// Nor is its decimal comma.
TEST(DoubleText, TheLocaleHasNoSay) {
    const CommaLocale locale;
    std::ostringstream local;
    local << 1234.5;
    ASSERT_EQ(local.str(), "1.234,5");
    if (locale.IsOfC()) {
        char text[8];
        std::snprintf(text, sizeof text, "%.1f", 2.5);
        ASSERT_EQ(std::string(text), "2,5");
    }
    EXPECT_EQ(ParseUnsignedDouble("2.5").value, 2.5);
    EXPECT_EQ(ParseUnsignedDouble("2,5").value, 2.0);
    EXPECT_EQ(ParseUnsignedDouble("1.234,5").value, 1.234);
    EXPECT_EQ(ParseUnsignedDouble("0x2.8p0").value, 2.5);
    EXPECT_EQ(FormatUnsignedFixed(1234.5, 2), "1234.50");
}

}  // namespace
}  // namespace vastrelline
