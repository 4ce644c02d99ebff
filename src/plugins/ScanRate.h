// What the scan rate index of a sample stands for.
#pragma once

#include <cstdint>

// Scans a second: 1.76, 2.89, 1.76, 3.52 for the indices 0 to 3 (32-bit values, widened), 2.88 (a 64-bit value) for any
// other.
double ScanRateHz(std::int32_t scanRate);
