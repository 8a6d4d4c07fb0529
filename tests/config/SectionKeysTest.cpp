// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

#include "config/SectionKeys.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class SectionKeysTest : public testing::Test {
protected:
    // Reads from section "Molar" of a profile with these lines.
    SectionKeys Keys(const std::string& lines) const {
        WriteBytes(folder_.Path() / "p.ini", "[Other]\r\nKEY=99\r\n[Molar]\r\n" + lines);
        return {folder_.Wide(L"p.ini"), L"Molar"};
    }
    // The value that the field has after reading.
    template <typename Value>
    Value Read(const std::string& lines, Value value) const {
        Keys(lines).Read(L"KEY", value);
        return value;
    }
    int32_t ReadTruncated(const std::string& lines, int32_t value) const {
        Keys(lines).ReadTruncated(L"KEY", value);
        return value;
    }

private:
    TemporaryFolder folder_;
};

TEST_F(SectionKeysTest, FieldTakesTheValueOfTheKey) {
    EXPECT_EQ(Read("KEY=-12\r\n", int32_t{5}), -12);
    EXPECT_EQ(Read("KEY=-1.25\r\n", 5.0), -1.25);
    EXPECT_EQ(Read("KEY=0.1\r\n", 5.0F), 0.1F);
    EXPECT_EQ(Read("KEY=two words\r\n", std::wstring(L"five")), L"two words");
}

TEST_F(SectionKeysTest, FieldKeepsItsDefaultWithoutTheKey) {
    EXPECT_EQ(Read("OTHER=1\r\n", int32_t{5}), 5);
    EXPECT_EQ(Read("", INT32_MIN), INT32_MIN);
    EXPECT_EQ(Read("", 0.01), 0.01);
    EXPECT_EQ(Read("", 0.005F), 0.005F);
    EXPECT_EQ(Read("", std::wstring(L"five")), L"five");
}

// As ReadProfileDouble has it.
TEST_F(SectionKeysTest, DefaultWithAFractionHasSixDecimalPlaces) {
    EXPECT_EQ(Read("", 0.0000014), 0.000001);
    EXPECT_EQ(Read("", 0.0000014F), 0.000001F);
}

TEST_F(SectionKeysTest, ValueThatIsNoNumberIsZero) {
    EXPECT_EQ(Read("KEY=large\r\n", int32_t{5}), 0);
    EXPECT_EQ(Read("KEY=\r\n", 5.0), 0.0);
}

TEST_F(SectionKeysTest, IntegerMayBeCutFromANumberWithAFraction) {
    EXPECT_EQ(ReadTruncated("KEY=7.9\r\n", 5), 7);
    EXPECT_EQ(ReadTruncated("KEY=-7.9\r\n", 5), -7);
    EXPECT_EQ(ReadTruncated("KEY=1e3\r\n", 5), 1000);
    EXPECT_EQ(ReadTruncated("KEY=1e10\r\n", 5), INT32_MIN);
    EXPECT_EQ(ReadTruncated("", 5), 5);
    EXPECT_EQ(ReadTruncated("", INT32_MAX), INT32_MAX);
}

TEST_F(SectionKeysTest, MissingProfileLeavesTheDefaults) {
    const SectionKeys keys(L"missing.ini", L"Molar");
    int32_t number = 5;
    keys.Read(L"KEY", number);
    EXPECT_EQ(number, 5);
}

}  // namespace
}  // namespace vastrelline
