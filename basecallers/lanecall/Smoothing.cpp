// SPDX-License-Identifier: MIT
#include "lanecall/Smoothing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <limits>

namespace lanecall {

namespace {

// The extreme of the 2 * reach + 1 values around each place. A window is covered by two shorter ones, whose length is a
// power of two and which come from doubling: their extremes are those of two halves. No step depends on the one before,
// so the processor works on several places at once. `outside` stands for the places beyond the ends and is never
// chosen.
template <class Choose>
Curve RunningExtreme(const Curve& curve, int reach, double outside, Choose choose) {
    const std::size_t count = curve.size(), margin = static_cast<std::size_t>(reach), width = 2 * margin + 1;
    Curve windows(count + 2 * margin, outside);
    std::copy(curve.begin(), curve.end(), windows.begin() + reach);
    std::size_t length = 1;
    for (; 2 * length <= width; length *= 2)
        for (std::size_t i = 0; i + length < windows.size(); ++i)
            windows[i] = choose(windows[i], windows[i + length]);
    Curve result(count);
    for (std::size_t i = 0; i < count; ++i)
        result[i] = choose(windows[i], windows[i + width - length]);
    return result;
}

// Limits between which the value of a rank most likely is, from a sample of the values.
struct Bracket {
    double low, high;
};
Bracket BracketOf(const std::vector<double>& values, std::size_t rank) {
    constexpr std::size_t count = 32;
    constexpr double margin = 5;  // places: 1.8 times the greatest deviation of a place in the sample, sqrt(32 / 4)
    std::array<double, count> sample;
    for (std::size_t k = 0; k < count; ++k)
        sample[k] = values[k * values.size() / count];
    std::sort(sample.begin(), sample.end());
    const double place = static_cast<double>(rank * count) / static_cast<double>(values.size());
    const double limit = std::numeric_limits<double>::infinity();
    return {place < margin ? -limit : sample[static_cast<std::size_t>(place - margin)],
            place + margin < count ? sample[static_cast<std::size_t>(place + margin)] : limit};
}

// The value of a rank, from 0; reorders the values. Only the values in the bracket are ordered. The passes over all
// have no branch that depends on a value, since the processor could not predict it.
double Select(std::vector<double>& values, std::size_t rank) {
    constexpr std::size_t many = 128;  // fewer are not worth a sample
    auto begin = values.begin(), end = values.end();
    if (values.size() >= many) {
        const Bracket bracket = BracketOf(values, rank);
        const auto isHeld = [&](double value) { return (value >= bracket.low) & (value <= bracket.high); };
        std::size_t below = 0, held = 0;
        for (const double value : values) {
            below += value < bracket.low;
            held += isHeld(value);
        }
        if (rank >= below && rank - below < held) {
            std::size_t next = 0;
            for (std::size_t i = 0; next < held; ++i) {
                values[next] = values[i];
                next += isHeld(values[i]);
            }
            rank -= below;
            end = begin + static_cast<std::ptrdiff_t>(held);
        }
    }
    std::nth_element(begin, begin + static_cast<std::ptrdiff_t>(rank), end);
    return begin[static_cast<std::ptrdiff_t>(rank)];
}

}  // namespace

Curve BoxSmooth(const Curve& curve, int reach) {
    const int count = static_cast<int>(curve.size());
    Curve result(curve.size());
    const auto at = [&](int i) { return curve[static_cast<std::size_t>(i)]; };
    double sum = 0;
    for (int i = 0; i < std::min(reach, count); ++i)
        sum += at(i);
    // The window grows at the start of the curve, moves along it, and shrinks at its end.
    int i = 0;
    for (; i < count && i <= reach; ++i) {
        if (i + reach < count) sum += at(i + reach);
        result[static_cast<std::size_t>(i)] = sum / (std::min(count, i + reach + 1));
    }
    const double share = 1.0 / (2 * reach + 1);
    for (; i + reach < count; ++i) {
        sum += at(i + reach) - at(i - reach - 1);
        result[static_cast<std::size_t>(i)] = sum * share;
    }
    for (; i < count; ++i) {
        sum -= at(i - reach - 1);
        result[static_cast<std::size_t>(i)] = sum / (count - i + reach);
    }
    return result;
}

Curve RunningMinimum(const Curve& curve, int reach) {
    return RunningExtreme(curve, reach, std::numeric_limits<double>::infinity(),
                          [](double a, double b) { return a < b ? a : b; });
}

Curve RunningMaximum(const Curve& curve, int reach) {
    return RunningExtreme(curve, reach, -std::numeric_limits<double>::infinity(),
                          [](double a, double b) { return a > b ? a : b; });
}

double Quantile(std::vector<double> values, double share) {
    constexpr std::size_t few = 16;  // values above the place: found by a single pass with a short list
    if (values.empty()) return 0;
    const double place = std::clamp(share, 0.0, 1.0) * static_cast<double>(values.size() - 1);
    const auto rank = static_cast<std::size_t>(place);
    if (values.size() - rank <= few) {
        const auto wanted = values.begin() + static_cast<std::ptrdiff_t>(values.size() - 1 - rank);
        std::partial_sort(values.begin(), wanted + 1, values.end(), std::greater<>());
        return *wanted;
    }
    return Select(values, rank);
}

}  // namespace lanecall
