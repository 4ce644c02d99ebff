// The lowest and the highest of many values.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

// The search begins with `low` and `high`; what is no number counts for neither.
struct Extremes {
    double low, high;

    void Take(std::span<const double> values) {
        // Several searches side by side, each of which looks at every fourth value: one alone would wait for its own
        // last comparison at each value.
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
