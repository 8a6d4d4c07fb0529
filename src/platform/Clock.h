// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Milliseconds of a steady clock, modulo 2^32. Only differences, taken in 32 bits, have a meaning.
uint32_t TickCount();

struct CalendarTime {
    int32_t year;    // all four digits
    int32_t month;   // 1..12
    int32_t day;     // 1..31
    int32_t hour;    // 0..23
    int32_t minute;  // 0..59
    int32_t second;  // 0..60
};

// The wall clock in the machine's time zone.
CalendarTime LocalTime();

}  // namespace vastrelline
