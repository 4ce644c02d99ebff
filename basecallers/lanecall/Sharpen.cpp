// SPDX-License-Identifier: MIT
#include "lanecall/Sharpen.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

#include "lanecall/SymmetricFilter.h"

namespace lanecall {

namespace {

constexpr double targetShare =
    0.22;  // width of a sharpened peak in spacings: neighbours then have a valley between them

constexpr int frequencies = 64;  // from 0 to half a cycle per scan; enough for taps up to 64 scans from the middle

// The cosines of all frequencies at whole distances: as all angles are multiples of a 256th of a turn, there are 256.
class CCosines {
  public:
    CCosines() {
        for (std::size_t k = 0; k < count; ++k)
            values[k] = std::cos(2 * std::numbers::pi * static_cast<double>(k) / count);
    }
    // The k-th frequency is (k + 0.5) / (2 * frequencies) cycles per scan.
    double At(int k, std::size_t scans) const { return values[static_cast<std::size_t>(2 * k + 1) * scans % count]; }

  private:
    static constexpr std::size_t count = 4 * frequencies;
    std::array<double, count> values;
};

// A Wiener filter: gain = target * peak / (peak^2 + noisePower), where `target` and `peak` are the spectra of Gaussians
// of these standard deviations (in scans). It turns a peak of deviation `width` into one of deviation `target` as far
// as the noise allows, and keeps the height of a lone peak. Returns the taps of one half, from the middle outward.
std::vector<double> MakeFilter(const CCosines& cosines, double width, double target, double noisePower) {
    const int reach = static_cast<int>(std::ceil(3 * width)) + 2;
    std::vector<double> taps(static_cast<std::size_t>(reach + 1), 0.0);
    const auto gaussian = [](double deviation, double f) {
        const double u = std::numbers::pi * deviation * f;
        return std::exp(-2 * u * u);
    };
    double height = 0;
    for (int k = 0; k < frequencies; ++k) {
        const double f = (k + 0.5) * 0.5 / frequencies;
        const double peak = gaussian(width, f);
        const double gain = gaussian(target, f) * peak / (peak * peak + noisePower);
        height += gain * peak;
        for (std::size_t t = 0; t < taps.size(); ++t)
            taps[t] += gain * cosines.At(k, t);
    }
    // A lone peak of height 1 has the spectrum width * sqrt(2 pi) * gaussian(width, f).
    const double scale = 1 / (height * width * std::sqrt(2 * std::numbers::pi));
    for (double& tap : taps)
        tap *= scale;
    return taps;
}

// The noise term of the filter for a noise relative to a usual peak. The numbers were found by trial; even clean curves
// need some of it.
double NoisePower(double noise) {
    constexpr double factor = 0.5, min = 0.0003, max = 0.05;
    return std::clamp(factor * noise * noise, min, max);
}

// FilterSymmetric, where scans beyond the ends of the curve have the value of its first or last scan.
void FilterToEnds(const Curve& curve, ScanRange range, const std::vector<double>& taps, Curve& result) {
    const int reach = static_cast<int>(taps.size()) - 1, last = static_cast<int>(curve.size()) - 1;
    const ScanRange inner{std::clamp(reach, range.first, range.end),
                          std::clamp(last - reach + 1, range.first, range.end)};
    if (inner.Length() > 0) FilterSymmetric(curve, inner, taps, result);
    for (int i = range.first; i < range.end; ++i) {
        if (i >= inner.first && i < inner.end) continue;
        double value = taps[0] * curve[static_cast<std::size_t>(i)];
        for (int t = 1; t <= reach; ++t)
            value += taps[static_cast<std::size_t>(t)] * (curve[static_cast<std::size_t>(std::max(0, i - t))] +
                                                          curve[static_cast<std::size_t>(std::min(last, i + t))]);
        result[static_cast<std::size_t>(i)] = value;
    }
}

}  // namespace

Curve Sharpen(const Curve& curve, ScanRange range, const CTrack& widths, const CTrack& spacing, const CTrack& noise) {
    constexpr double ratio = 1.06;  // a new filter is made only when the width has changed by more, for speed
    Curve result(curve.size(), 0.0);
    const CCosines cosines;
    for (int i = range.first; i < range.end;) {
        const double width = widths.At(i);
        if (!(width > 0)) {
            ++i;
            continue;
        }
        const int first = i;
        while (i < range.end && widths.At(i) <= width * ratio && widths.At(i) >= width / ratio)
            ++i;
        const double target = std::min(width, targetShare * spacing.At(first));
        FilterToEnds(curve, {first, i}, MakeFilter(cosines, width, target, NoisePower(noise.At(first))), result);
    }
    for (double& value : result)
        value = std::max(0.0, value);
    return result;
}

}  // namespace lanecall
