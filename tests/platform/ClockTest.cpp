// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <thread>

#include "platform/Clock.h"

namespace vastrelline {
namespace {

TEST(TickCount, CountsMilliseconds) {
    const uint32_t start = TickCount();
    std::this_thread::sleep_for(std::chrono::milliseconds(60));
    const uint32_t elapsed = TickCount() - start;
    EXPECT_GE(elapsed, 40U);  // a tick of the clock may be 16 ms long
    EXPECT_LT(elapsed, 30'000U);
}

TEST(LocalTime, IsTheWallClock) {
    const CalendarTime now = LocalTime();
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    parts.tm_isdst = -1;
    EXPECT_LE(std::abs(std::difftime(std::time(nullptr), std::mktime(&parts))), 5.0);
}

}  // namespace
}  // namespace vastrelline
