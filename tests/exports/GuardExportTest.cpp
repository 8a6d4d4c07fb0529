// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cfenv>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>

#include "exports/GuardExport.h"

namespace vastrelline {
namespace {

TEST(GuardExport, GivesTheResultOfTheBody) {
    EXPECT_EQ(GuardExport<int32_t>(6, [] { return 4; }), 4);
}

TEST(GuardExport, GivesTheFailureForWhateverIsThrown) {
    EXPECT_EQ(GuardExport<int32_t>(6, []() -> int32_t { throw std::runtime_error("any"); }), 6);
    EXPECT_EQ(GuardExport<int32_t>(6, []() -> int32_t { throw std::bad_alloc(); }), 6);
    EXPECT_EQ(GuardExport<int32_t>(6, []() -> int32_t { throw 17; }), 6);
    EXPECT_EQ(GuardExport<int32_t>(-1, []() -> int32_t { throw std::string("any"); }), -1);
}

TEST(GuardExport, BodyRoundsToNearestWhateverTheHostDoes) {
    volatile double three = 3;
    const auto third = [&three] { return 1 / three; };
    ASSERT_EQ(std::fesetround(FE_UPWARD), 0);
    const double inside = GuardExport<double>(-1, third);
    const double ofThrown = GuardExport<double>(-1, []() -> double { throw 17; });
    const double outside = third();
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(inside, 0x1.5555555555555p-2);
    EXPECT_EQ(ofThrown, -1);
    EXPECT_EQ(outside, 0x1.5555555555556p-2);
}

TEST(GuardExport, NeverThrows) {
    const auto body = []() -> int32_t { throw 17; };
    EXPECT_TRUE(noexcept(GuardExport<int32_t>(6, body)));
}

TEST(GuardExport, BodyMayChangeWhatItCaptured) {
    int32_t calls = 0;
    GuardExport<int32_t>(6, [&] { return ++calls; });
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace vastrelline
