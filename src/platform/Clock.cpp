// SPDX-License-Identifier: MIT
#include "platform/Clock.h"

#include <locale.h>
#include <time.h>

#include <algorithm>
#include <cerrno>

namespace platform {

namespace {

tm LocalTime(time_t seconds) {
    ::tzset();
    tm local{};
    ::localtime_r(&seconds, &local);
    return local;
}

// Uses the "C" locale explicitly, because a loaded library may have changed the locale of the process.
std::string Format(const char* format, time_t seconds) {
    static const locale_t classic = ::newlocale(LC_ALL_MASK, "C", nullptr);
    const tm local = LocalTime(seconds);
    char text[128];
    const std::size_t length = classic ? ::strftime_l(text, sizeof text, format, &local, classic)
                                       : ::strftime(text, sizeof text, format, &local);
    return std::string(text, length);
}

}  // namespace

std::string LocalTimeText() {
    return Format("%c", ::time(nullptr));
}

std::string CtimeText(std::int32_t seconds) {
    return seconds < 0 ? "N/A\n" : Format("%a %b %e %H:%M:%S %Y\n", seconds);
}

CalendarTime LocalCalendar(std::int32_t seconds) {
    const tm local = LocalTime(std::max(seconds, 0));
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

void Sleep(std::int32_t milliseconds) {
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1000000L};
    while (::nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

}  // namespace platform
