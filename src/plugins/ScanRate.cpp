// SPDX-License-Identifier: MIT
#include "plugins/ScanRate.h"

#include <array>

double ScanRateHz(std::int32_t scanRate) {
    constexpr std::array<float, 4> rates = {1.76f, 2.89f, 1.76f, 3.52f};
    const auto index = static_cast<std::uint32_t>(scanRate);
    return index < rates.size() ? static_cast<double>(rates[index]) : 2.88;
}
