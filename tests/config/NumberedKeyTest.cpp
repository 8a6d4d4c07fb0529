// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

#include "config/NumberedKey.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

struct NumberedKeyCase {
    const char* name;
    int32_t position;
    const wchar_t* key;
    const wchar_t* expected;
};

class NumberedKeyTest : public testing::TestWithParam<NumberedKeyCase> {};

TEST_P(NumberedKeyTest, PutsThePositionInFrontOfTheKey) {
    EXPECT_EQ(MakeNumberedKey(GetParam().position, GetParam().key), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Positions, NumberedKeyTest,
    testing::Values(NumberedKeyCase{"FirstPosition", 0, L"Function_Number", L"00_Function_Number"},
                    NumberedKeyCase{"OneDigitTakesAZero", 7, L"GAUSSIAN_SIZE", L"07_GAUSSIAN_SIZE"},
                    NumberedKeyCase{"ThirdPosition", 3, L"BLOCK_SIZE", L"03_BLOCK_SIZE"},
                    NumberedKeyCase{"TwoDigits", 99, L"K", L"99_K"},
                    NumberedKeyCase{"ThreeDigits", 100, L"K", L"100_K"},
                    NumberedKeyCase{"LargestPosition", INT32_MAX, L"K", L"2147483647_K"},
                    NumberedKeyCase{"EmptyKey", 5, L"", L"05_"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(NumberedKeys, ReadTheKeysOfTheirPosition) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "p.ini", "[Molar]\r\nSIZE=1\r\n03_SIZE=2\r\n04_SIZE=3\r\n100_SIZE=4\r\n");
    const auto sizeAt = [&](int32_t position) {
        int32_t size = 9;
        NumberedKeys(folder.Wide(L"p.ini"), L"Molar", position).Read(L"SIZE", size);
        return size;
    };
    EXPECT_EQ(sizeAt(3), 2);
    EXPECT_EQ(sizeAt(4), 3);
    EXPECT_EQ(sizeAt(100), 4);
    EXPECT_EQ(sizeAt(0), 9);
}

}  // namespace
}  // namespace vastrelline
