// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "profile_text/WholeNumber.h"

namespace vastrelline {
namespace {

std::string DecimalOf(WholeNumber number) {
    std::string digits;
    do {
        digits.insert(0, 1, static_cast<char>('0' + number.DivideBy(10)));
    } while (number.BitCount() > 0);
    return digits;
}

TEST(WholeNumber, CountsItsBits) {
    EXPECT_EQ(WholeNumber().BitCount(), 0U);
    EXPECT_EQ(WholeNumber(1).BitCount(), 1U);
    EXPECT_EQ(WholeNumber(0xFFFFFFFF).BitCount(), 32U);
    EXPECT_EQ(WholeNumber(0x100000000).BitCount(), 33U);
    EXPECT_EQ(WholeNumber(UINT64_MAX).BitCount(), 64U);
}

TEST(WholeNumber, PowersOfTen) {
    for (const size_t power : std::vector<size_t>{0, 1, 8, 9, 10, 19, 100, 1100}) {
        WholeNumber number(7);
        number.MultiplyByPowerOfTen(power);
        EXPECT_EQ(DecimalOf(number), "7" + std::string(power, '0'));
    }
}

TEST(WholeNumber, DigitAfterDigit) {
    WholeNumber number;
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        const auto digit = static_cast<uint32_t>(1 + i % 9);
        number.MultiplyAdd(10, digit);
        text.push_back(static_cast<char>('0' + digit));
    }
    EXPECT_EQ(DecimalOf(number), text);
}

TEST(WholeNumber, PowersOfTwo) {
    WholeNumber number(3);
    number.MultiplyByPowerOfTwo(64);
    EXPECT_EQ(DecimalOf(number), "55340232221128654848");
    for (const size_t power : std::vector<size_t>{0, 1, 31, 32, 33, 63, 64, 65, 1000, 3776}) {
        SCOPED_TRACE(power);
        WholeNumber moved(0x9000000000000001);
        moved.MultiplyByPowerOfTwo(power);
        EXPECT_EQ(moved.BitCount(), 64 + power);
        moved.DivideByPowerOfTwo(power);
        EXPECT_EQ(DecimalOf(moved), "10376293541461622785");
    }
    WholeNumber zero;
    zero.MultiplyByPowerOfTwo(100);
    EXPECT_EQ(zero.BitCount(), 0U);
}

TEST(WholeNumber, HalvesGoToTheEvenNumber) {
    const auto divided = [](uint64_t value, size_t power) {
        WholeNumber number(value);
        number.DivideByPowerOfTwo(power);
        return DecimalOf(number);
    };
    EXPECT_EQ(divided(1, 1), "0");
    EXPECT_EQ(divided(3, 1), "2");
    EXPECT_EQ(divided(5, 1), "2");
    EXPECT_EQ(divided(5, 2), "1");
    EXPECT_EQ(divided(6, 2), "2");
    EXPECT_EQ(divided(7, 2), "2");
    EXPECT_EQ(divided(9, 3), "1");
    EXPECT_EQ(divided(0x8000000000000000, 64), "0");
    EXPECT_EQ(divided(0x8000000000000001, 64), "1");
    EXPECT_EQ(divided(UINT64_MAX, 64), "1");
    EXPECT_EQ(divided(UINT64_MAX, 200), "0");
    EXPECT_EQ(divided(0x1FFFFFFFF, 1), "4294967296");
}

TEST(WholeNumber, SubtractsAcrossLimbs) {
    WholeNumber number(1);
    number.MultiplyByPowerOfTwo(96);
    number.Subtract(WholeNumber(1));
    EXPECT_EQ(DecimalOf(number), "79228162514264337593543950335");
    number.Subtract(number);
    EXPECT_EQ(number.BitCount(), 0U);
}

TEST(WholeNumber, Compares) {
    WholeNumber large(1);
    large.MultiplyByPowerOfTwo(96);
    WholeNumber larger = large;
    larger.MultiplyAdd(1, 1);
    EXPECT_TRUE(WholeNumber(5) < WholeNumber(6));
    EXPECT_FALSE(WholeNumber(6) < WholeNumber(6));
    EXPECT_FALSE(WholeNumber(7) < WholeNumber(6));
    EXPECT_TRUE(WholeNumber(UINT64_MAX) < large);
    EXPECT_TRUE(large < larger);
    EXPECT_FALSE(larger < large);
}

TEST(WholeNumber, DividesAndTellsWhatIsLeft) {
    WholeNumber number(UINT64_MAX);
    EXPECT_EQ(number.DivideBy(1'000'000'000), 709551615U);
    EXPECT_EQ(DecimalOf(number), "18446744073");
}

}  // namespace
}  // namespace vastrelline
