// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <ctime>

#include "platform/Clock.h"

namespace vastrelline {

uint32_t TickCount() {
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

CalendarTime LocalTime() {
    constexpr int32_t kFirstYearOfTm = 1900;
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + kFirstYearOfTm,
            local.tm_mon + 1,
            local.tm_mday,
            local.tm_hour,
            local.tm_min,
            local.tm_sec};
}

}  // namespace vastrelline
