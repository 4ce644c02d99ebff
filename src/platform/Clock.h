// SPDX-License-Identifier: MIT
// Local time in the process's time zone (TZ).
#pragma once

#include <cstdint>
#include <string>

namespace platform {

// The current local time in the format of strftime's "%c" in the "C" locale.
std::string LocalTimeText();

// The local time of `seconds` since 1 January 1970 in the format of ctime: 24 characters and a line feed. "N/A\n" for a
// negative count.
std::string CtimeText(std::int32_t seconds);

struct CalendarTime {
    int year = 1970;  // four digits
    int month = 1;    // 1 to 12
    int day = 1;      // 1 to 31
    int hour = 0, minute = 0, second = 0;
};

// Local calendar time of `seconds` since 1 January 1970; a negative count is taken as 0.
CalendarTime LocalCalendar(std::int32_t seconds);

// Waits that long, even if signals arrive meanwhile.
void Sleep(std::int32_t milliseconds);

}  // namespace platform
