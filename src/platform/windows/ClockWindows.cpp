// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include "platform/Clock.h"

namespace vastrelline {

uint32_t TickCount() { return GetTickCount(); }

CalendarTime LocalTime() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

}  // namespace vastrelline
