// SPDX-License-Identifier: MIT
// The filters that are written for speed, next to what they compute.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "lanecall/Smoothing.h"
#include "lanecall/SymmetricFilter.h"

using namespace lanecall;

TEST(LanecallFilters, ExtremesAndQuantilesAreThoseOfTheValues) {
    std::mt19937 chance(5);
    for (std::size_t count : {1U, 2U, 31U, 127U, 128U, 400U, 3001U}) {
        Curve curve(count);
        for (double& value : curve)  // many equal values, and a few far from all others
            value = chance() % 20 == 0 ? 1e9 - static_cast<double>(chance()) : static_cast<double>(chance() % 50);
        Curve sorted = curve;
        std::sort(sorted.begin(), sorted.end());
        for (double share : {0.0, 0.05, 0.3, 0.5, 0.95, 1.0}) {
            const auto rank = static_cast<std::size_t>(share * static_cast<double>(count - 1));
            EXPECT_EQ(Quantile(curve, share), sorted[rank]) << count << " values, " << share;
        }
        for (int reach : {1, 7, 150, 5000}) {
            const Curve low = RunningMinimum(curve, reach), high = RunningMaximum(curve, reach);
            for (std::size_t i = 0; i < count; i += 1 + count / 50) {
                const auto from = curve.begin() + static_cast<std::ptrdiff_t>(i) - std::min<std::ptrdiff_t>(reach, i);
                const auto to =
                    curve.begin() + std::min<std::ptrdiff_t>(count, static_cast<std::ptrdiff_t>(i) + reach + 1);
                ASSERT_EQ(low[i], *std::min_element(from, to)) << count << " values, reach " << reach << ", at " << i;
                ASSERT_EQ(high[i], *std::max_element(from, to)) << count << " values, reach " << reach << ", at " << i;
            }
        }
    }
}

TEST(LanecallFilters, ASymmetricFilterWritesItsRangeOnly) {
    const std::vector<double> taps{4, 2, 1};
    Curve curve(100), result(100, -1);
    for (std::size_t i = 0; i < curve.size(); ++i)
        curve[i] = static_cast<double>(i * i % 37);
    FilterSymmetric(curve, {2, 95}, taps, result);
    for (std::size_t i = 0; i < curve.size(); ++i)
        EXPECT_EQ(result[i], i < 2 || i >= 95
                                 ? -1
                                 : 4 * curve[i] + 2 * (curve[i - 1] + curve[i + 1]) + curve[i - 2] + curve[i + 2])
            << i;
}
