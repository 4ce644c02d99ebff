// SPDX-License-Identifier: MIT
#include "lanecall/RunCurve.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace lanecall {

namespace {

struct Knot {
    double base, share;  // of the widest spacing
};

// Measured: medians over real runs of several instruments. Short fragments are separated less, and the longest ones
// move almost together.
constexpr std::array<Knot, 17> usualRun = {{{0, 0.66},
                                            {22, 0.71},
                                            {40, 0.765},
                                            {62, 0.825},
                                            {87, 0.875},
                                            {125, 0.915},
                                            {175, 0.95},
                                            {225, 0.975},
                                            {300, 0.993},
                                            {400, 1.0},
                                            {500, 0.995},
                                            {600, 0.96},
                                            {700, 0.905},
                                            {800, 0.835},
                                            {900, 0.755},
                                            {1000, 0.675},
                                            {1200, 0.55}}};

// The share at a base; `next` is the first knot beyond an earlier base, or the first knot, and is moved on.
double ShareAt(double base, const Knot*& next) {
    const Knot* const end = usualRun.data() + usualRun.size();
    if (!(base > 0)) return usualRun.front().share;
    while (next != end && next->base <= base)
        ++next;
    if (next == end) return usualRun.back().share;
    const Knot& before = *(next - 1);
    return before.share + (base - before.base) / (next->base - before.base) * (next->share - before.share);
}

}  // namespace

CTrack RunCurve(ScanRange range, double widest, double pace, double lead, double stepScans) {
    std::vector<double> knots;
    double base = 0;
    const Knot* next = usualRun.data();
    for (double scan = range.first; scan < range.end + stepScans; scan += stepScans) {
        knots.push_back(widest * ShareAt(pace * base, next));
        if (scan >= range.first + lead) base += stepScans / knots.back();
    }
    return {static_cast<double>(range.first), stepScans, std::move(knots)};
}

}  // namespace lanecall
