// SPDX-License-Identifier: MIT
// When a run took place, and how fast it was scanned.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "lanetools/import/AbifDirectory.h"

namespace lanetools {

// RUND and RUNT of one number, taken as UTC, in seconds since 1 January 1970: 1 and 2 are the start and stop of the
// run, 3 and 4 of the collection of data. Empty if one of them is missing or is not a valid date or time, or the moment
// is before 1970 or beyond what a sample file can hold.
std::optional<std::int32_t> RunMoment(const CAbifDirectory& directory, std::int32_t number);

// The scan rate index whose frequency is nearest to `scans` in the time of collection; 1 if that time is unknown or
// not between a minute and a day.
std::int32_t NearestScanRate(const CAbifDirectory& directory, std::size_t scans);

}  // namespace lanetools
