// SPDX-License-Identifier: MIT
// The lowest and the highest of many values.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

// The search begins with the given `low` and `high`. NaN counts for neither.
struct Extremes {
    double low, high;

    // Widens the two by `values`, in any units.
    void Take(std::span<const double> values) {
        // Four independent searches, each over every fourth value, which the processor runs in parallel: in a single
        // search each comparison waits for the one before.
        constexpr std::size_t lanes = 4;
        std::array<double, lanes> lows, highs;
        lows.fill(low);
        highs.fill(high);
        std::size_t i = 0;
        for (; i + lanes <= values.size(); i += lanes)
            for (std::size_t lane = 0; lane < lanes; ++lane) {
                lows[lane] = std::min(lows[lane], values[i + lane]);
                highs[lane] = std::max(highs[lane], values[i + lane]);
            }
        low = *std::min_element(lows.begin(), lows.end());
        high = *std::max_element(highs.begin(), highs.end());
        for (; i < values.size(); ++i) {
            low = std::min(low, values[i]);
            high = std::max(high, values[i]);
        }
    }
};
