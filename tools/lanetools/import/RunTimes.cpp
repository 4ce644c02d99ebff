// SPDX-License-Identifier: MIT
#include "lanetools/import/RunTimes.h"

#include <array>
#include <chrono>
#include <cmath>
#include <limits>

#include "plugins/ScanRate.h"

namespace lanetools {

namespace {

constexpr std::int64_t shortestRun = 60, longestRun = 86400;  // seconds
constexpr std::int32_t usualScanRate = 1;
constexpr std::int32_t scanRates[] = {0, 1, 3};  // 2 is the same as 0

}  // namespace

std::optional<std::int32_t> RunMoment(const CAbifDirectory& directory, std::int32_t number) {
    namespace chrono = std::chrono;
    const auto date = directory.Date("RUND", number);
    const auto time = directory.Time("RUNT", number);
    if (!date || !time) return std::nullopt;
    const chrono::year_month_day day{chrono::year((*date)[0]), chrono::month(static_cast<unsigned>((*date)[1])),
                                     chrono::day(static_cast<unsigned>((*date)[2]))};
    const auto [hour, minute, second] = *time;
    if (!day.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    const std::int64_t days = chrono::sys_days(day).time_since_epoch().count();
    const std::int64_t seconds = ((days * 24 + hour) * 60 + minute) * 60 + second;
    if (seconds < 0 || seconds > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
    return static_cast<std::int32_t>(seconds);
}

std::int32_t NearestScanRate(const CAbifDirectory& directory, std::size_t scans) {
    const auto start = RunMoment(directory, 3), stop = RunMoment(directory, 4);
    if (!start || !stop) return usualScanRate;
    const std::int64_t span = std::int64_t{*stop} - *start;
    if (span < shortestRun || span > longestRun) return usualScanRate;
    const double rate = static_cast<double>(scans) / static_cast<double>(span);
    std::int32_t nearest = scanRates[0];
    for (const std::int32_t index : scanRates)
        if (std::abs(ScanRateHz(index) - rate) < std::abs(ScanRateHz(nearest) - rate)) nearest = index;
    return nearest;
}

}  // namespace lanetools
