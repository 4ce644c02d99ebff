// SPDX-License-Identifier: MIT
// The meaning of a sample's scan rate index.
#pragma once

#include <cstdint>

// Scans per second: 1.76, 2.89, 1.76 and 3.52 for the indices 0 to 3, as 32-bit floats widened to 64 bits; 2.88, a
// 64-bit value, for any other.
double ScanRateHz(std::int32_t scanRate);
