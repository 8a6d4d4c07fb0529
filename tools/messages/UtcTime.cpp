// SPDX-License-Identifier: Apache-2.0
#include "messages/UtcTime.h"

#include <chrono>
#include <iomanip>
#include <sstream>

namespace vastrelline {
namespace {

using Clock = std::chrono::system_clock;

std::string FormatDay(Clock::time_point time) {
    const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(time));
    std::ostringstream text;
    text << std::setfill('0') << std::setw(4) << static_cast<int>(date.year()) << '-' << std::setw(2)
         << static_cast<unsigned>(date.month()) << '-' << std::setw(2) << static_cast<unsigned>(date.day());
    return text.str();
}

}  // namespace

std::string UtcMinute() {
    const Clock::time_point now = Clock::now();
    const std::chrono::hh_mm_ss time(now - std::chrono::floor<std::chrono::days>(now));
    std::ostringstream text;
    text << FormatDay(now) << ' ' << std::setfill('0') << std::setw(2) << time.hours().count() << ':'
         << std::setw(2) << time.minutes().count() << " UTC";
    return text.str();
}

std::string UtcDay() { return FormatDay(Clock::now()); }

}  // namespace vastrelline
