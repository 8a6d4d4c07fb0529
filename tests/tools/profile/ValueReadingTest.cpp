// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "profile/ValueReading.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct ReadingCase {
    const char* name;
    KeyType type;
    std::wstring written;
    ReadValue value;
    ReadingSlip slip;
};

class ReadWrittenTest : public testing::TestWithParam<ReadingCase> {};

TEST_P(ReadWrittenTest, TellsValueAndSlip) {
    const ReadingCase& c = GetParam();
    const ValueReading reading = ReadWritten(c.written, c.type, "7");
    EXPECT_EQ(reading.value, c.value);
    EXPECT_EQ(reading.slip, c.slip);
    const ReadingMark mark = c.slip == ReadingSlip::None      ? ReadingMark::FromFile
                             : c.slip == ReadingSlip::TooLong ? ReadingMark::Cut
                                                              : ReadingMark::Misread;
    EXPECT_EQ(reading.mark, mark);
    EXPECT_EQ(DescribeSlip(reading).empty(), c.slip == ReadingSlip::None);
}

using enum ReadingSlip;

INSTANTIATE_TEST_SUITE_P(
    Integers, ReadWrittenTest,
    testing::Values(ReadingCase{"Plain", KeyType::Integer, L"42", 42, None},
                    ReadingCase{"Quoted", KeyType::Integer, L"\"42\"", 42, None},
                    ReadingCase{"OneQuote", KeyType::Integer, L"\"42", 0, NoNumber},
                    ReadingCase{"Negative", KeyType::Integer, L"-3", -3, None},
                    ReadingCase{"Plus", KeyType::Integer, L"+3", 0, NoNumber},
                    ReadingCase{"Word", KeyType::Integer, L"abc", 0, NoNumber},
                    ReadingCase{"Nothing", KeyType::Integer, L"", 0, NoValue},
                    ReadingCase{"QuotedBlank", KeyType::Integer, L"' '", 0, NoValue},
                    ReadingCase{"Fraction", KeyType::Integer, L"2.9", 2, Fraction},
                    ReadingCase{"EmptyFraction", KeyType::Integer, L"2.00", 2, None},
                    ReadingCase{"PointLast", KeyType::Integer, L"2.", 2, None},
                    ReadingCase{"Comma", KeyType::Integer, L"1,5", 1, DecimalComma},
                    ReadingCase{"CommaAtTheEnd", KeyType::Integer, L"1,", 1, TextBehind},
                    ReadingCase{"Comment", KeyType::Integer, L"5 ; more", 5, TextBehind},
                    ReadingCase{"Hexadecimal", KeyType::Integer, L"0x10", 0, TextBehind},
                    ReadingCase{"Largest", KeyType::Integer, L"2147483647", INT32_MAX, None},
                    ReadingCase{"OneMore", KeyType::Integer, L"2147483648", INT32_MIN, Wrapped},
                    ReadingCase{"Smallest", KeyType::Integer, L"-2147483648", INT32_MIN, None},
                    ReadingCase{"Wraps", KeyType::Integer, L"4294967298", 2, Wrapped},
                    // Integers are read before values are cut.
                    ReadingCase{"ManyZeros", KeyType::Integer, std::wstring(300, L'0') + L"5", 5, None}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Numbers, ReadWrittenTest,
    testing::Values(ReadingCase{"Plain", KeyType::Number, L"0.45", 0.45, None},
                    ReadingCase{"Quoted", KeyType::Number, L"'1.5 '", 1.5, None},
                    ReadingCase{"Exponent", KeyType::Number, L"+15e-1", 1.5, None},
                    ReadingCase{"Hexadecimal", KeyType::Number, L"0x10", 16.0, None},
                    ReadingCase{"Comma", KeyType::Number, L"1,5", 1.0, DecimalComma},
                    ReadingCase{"Word", KeyType::Number, L"abc", 0.0, NoNumber},
                    ReadingCase{"Nothing", KeyType::Number, L"", 0.0, NoValue},
                    ReadingCase{"Unit", KeyType::Number, L"3px", 3.0, TextBehind},
                    ReadingCase{"TwoPoints", KeyType::Number, L"1.5.2", 1.5, TextBehind},
                    ReadingCase{"TooLarge", KeyType::Number, L"1e999", kInfinity, NotFinite},
                    ReadingCase{"Infinity", KeyType::Number, L"inf", kInfinity, NotFinite},
                    ReadingCase{"TooSmall", KeyType::Number, L"1e-999", 0.0, TooSmall},
                    ReadingCase{"Zero", KeyType::Number, L"0.00e5", 0.0, None},
                    ReadingCase{"Single", KeyType::SingleNumber, L"0.1", 0.1F, None},
                    ReadingCase{"SingleTooSmall", KeyType::SingleNumber, L"1e-60", 0.0F, TooSmall},
                    ReadingCase{"CutToAnInteger", KeyType::CutNumber, L"-2.9", -2, Fraction},
                    ReadingCase{"CutOfAWholeOne", KeyType::CutNumber, L"2e2", 200, None},
                    ReadingCase{"CutTooLarge", KeyType::CutNumber, L"3e9", INT32_MIN, Wrapped},
                    ReadingCase{"CutOfInfinity", KeyType::CutNumber, L"inf", INT32_MIN, Wrapped},
                    ReadingCase{"CutInTheMiddle", KeyType::Number, std::wstring(259, L'0') + L"12", 1.0,
                                TooLong}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Texts, ReadWrittenTest,
    testing::Values(ReadingCase{"Plain", KeyType::Text, L"a b", std::wstring(L"a b"), None},
                    ReadingCase{"Empty", KeyType::Text, L"", std::wstring(), None},
                    ReadingCase{"Quoted", KeyType::Text, L"\" a\"", std::wstring(L" a"), None},
                    ReadingCase{"AsLongAsMayBe", KeyType::Text, L"'" + std::wstring(260, L'x') + L"'",
                                std::wstring(260, L'x'), None},
                    ReadingCase{"TooLong", KeyType::Text, std::wstring(261, L'x'), std::wstring(260, L'x'),
                                TooLong}),
    [](const auto& test) { return test.param.name; });

TEST(ReadWritten, MissingValueIsTheDefault) {
    const auto read = [](KeyType type, std::string_view text) {
        return ReadWritten(std::nullopt, type, text).value;
    };
    EXPECT_EQ(read(KeyType::Integer, "-7"), ReadValue(-7));
    EXPECT_EQ(read(KeyType::Number, "1.375"), ReadValue(1.375));
    EXPECT_EQ(read(KeyType::SingleNumber, "0.005"), ReadValue(0.005F));
    EXPECT_EQ(read(KeyType::CutNumber, "3"), ReadValue(3));
    EXPECT_EQ(read(KeyType::Text, ""), ReadValue(std::wstring()));
    // On its way the default has six decimals.
    EXPECT_EQ(read(KeyType::Number, "0.0000014"), ReadValue(0.000001));
    EXPECT_EQ(ReadWritten(std::nullopt, KeyType::Integer, "1").mark, ReadingMark::Default);
}

TEST(ReadWritten, NotANumberIsReadAsSuch) {
    const ValueReading reading = ReadWritten(L"nan", KeyType::Number, "1");
    EXPECT_TRUE(std::isnan(std::get<double>(reading.value)));
    EXPECT_EQ(reading.slip, NotFinite);
}

TEST(DescribeSlip, SaysWhatIsReadInstead) {
    EXPECT_EQ(DescribeSlip(ReadWritten(L"1,5", KeyType::Number, "2")),
              "the decimal sign is a point: read as 1");
    EXPECT_EQ(DescribeSlip(ReadWritten(L"abc", KeyType::Integer, "2")), "no number: read as 0");
    EXPECT_EQ(DescribeSlip(ReadWritten(std::wstring(300, L'x'), KeyType::Text, "")),
              "cut after 260 characters");
}

TEST(FormatReadValue, HasAsFewDigitsAsItTakes) {
    EXPECT_EQ(FormatReadValue(-12), "-12");
    EXPECT_EQ(FormatReadValue(0.1), "0.1");
    EXPECT_EQ(FormatReadValue(0.1F), "0.1");
    EXPECT_EQ(FormatReadValue(4095.0), "4095");
    EXPECT_EQ(FormatReadValue(kInfinity), "inf");
    EXPECT_EQ(FormatReadValue(std::wstring(L"a\u00E9")), "a\xC3\xA9");
}

TEST(MarkName, IsOneWord) {
    EXPECT_EQ(MarkName(ReadingMark::FromFile), "from-file");
    EXPECT_EQ(MarkName(ReadingMark::Default), "default");
    EXPECT_EQ(MarkName(ReadingMark::Cut), "cut");
    EXPECT_EQ(MarkName(ReadingMark::Misread), "misread");
}

}  // namespace
}  // namespace vastrelline
