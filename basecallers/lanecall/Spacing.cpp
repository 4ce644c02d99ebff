// SPDX-License-Identifier: MIT
#include "lanecall/Spacing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstring>
#include <numbers>
#include <utility>
#include <vector>

#include "lanecall/Processor.h"
#include "lanecall/RunCurve.h"
#include "lanecall/SmoothFit.h"

namespace lanecall {

namespace {

constexpr double windowScans = 400;  // some 30 bases: enough for a rhythm, and the spacing hardly changes within them
constexpr double hopScans = 120;     // from window to window

// The wave of one impulse at eight neighbouring frequencies at once.
class CWave {
  public:
    // `angle` at the lowest frequency, `step` from each frequency to the next, in radians.
    CWave(double weight, double angle, double step) {
        const std::complex<double> turn = std::polar(1.0, step);
        std::complex<double> wave = std::polar(weight, angle), turns = 1;
        for (std::size_t k = 0; k < eight; ++k) {
            real[k] = static_cast<float>(wave.real());
            imaginary[k] = static_cast<float>(wave.imag());
            wave *= turn;
            turns *= turn;
        }
        turnReal = static_cast<float>(turns.real());
        turnImaginary = static_cast<float>(turns.imag());
    }
    // Adds the wave to `count` sums, a multiple of eight, at ascending frequencies. Each step turns all eight by eight
    // frequencies, which replaces a sine and a cosine per frequency.
    LANECALL_WIDE void AddTo(float* realSums, float* imaginarySums, std::size_t count) const {
        EightFloats x, y, sum;
        std::memcpy(&x, real.data(), sizeof x);
        std::memcpy(&y, imaginary.data(), sizeof y);
        for (std::size_t f = 0; f < count; f += eight) {
            std::memcpy(&sum, realSums + f, sizeof sum);
            sum += x;
            std::memcpy(realSums + f, &sum, sizeof sum);
            std::memcpy(&sum, imaginarySums + f, sizeof sum);
            sum += y;
            std::memcpy(imaginarySums + f, &sum, sizeof sum);
            const EightFloats turned = x * turnReal - y * turnImaginary;
            y = x * turnImaginary + y * turnReal;
            x = turned;
        }
    }

  private:
    std::array<float, eight> real, imaginary;
    float turnReal, turnImaginary;
};

// The frequencies, in bases per scan, at which the power of a window is computed.
struct Band {
    double lowest, step;
    std::size_t count;
    double At(double index) const { return lowest + step * index; }
};

// The sums of the waves of one channel's impulses in the window around a scan.
struct WaveSums {
    explicit WaveSums(std::size_t frequencies)
        : real((frequencies + eight - 1) / eight * eight), imaginary(real.size()) {}

    // Returns the power that the impulses would have without any rhythm.
    double Fill(const std::vector<Impulse>& impulses, double middle, const Band& band) {
        constexpr double circle = 2 * std::numbers::pi;
        std::fill(real.begin(), real.end(), 0.0f);
        std::fill(imaginary.begin(), imaginary.end(), 0.0f);
        double floor = 0;
        auto at = std::lower_bound(impulses.begin(), impulses.end(), middle - windowScans / 2,
                                   [](const Impulse& impulse, double scan) { return impulse.scan < scan; });
        for (; at != impulses.end() && at->scan < middle + windowScans / 2; ++at) {
            const double offset = at->scan - middle;
            const double taper = 0.5 + 0.5 * std::cos(circle * offset / windowScans);
            const double weight = std::min(1.0, at->weight) * taper;
            floor += weight * weight;
            CWave(weight, circle * band.lowest * offset, circle * band.step * offset)
                .AddTo(real.data(), imaginary.data(), real.size());
        }
        return floor;
    }
    double Power(std::size_t frequency) const {
        const double x = real[frequency], y = imaginary[frequency];
        return x * x + y * y;
    }

    std::vector<float> real, imaginary;
};

// Power of a window at each frequency of the band, relative to peaks without rhythm: these have about 1.
std::vector<double> PowerNear(const ImpulseLists& impulses, double middle, const Band& band) {
    std::vector<double> power(band.count, 0.0);
    WaveSums sums(band.count);
    double floor = 0;
    for (const auto& list : impulses) {
        floor += sums.Fill(list, middle, band);
        for (std::size_t f = 0; f < power.size(); ++f)
            power[f] += sums.Power(f);
    }
    for (double& value : power)
        value /= std::max(floor, 1.0);
    return power;
}

// The powers of all windows of a read. Each value is the greatest within 3 % of its frequency, since the run curve need
// not fit exactly.
class CSpectra {
  public:
    CSpectra(const ImpulseLists& impulses, ScanRange range) {
        for (double middle = range.first; middle < range.end + hopScans; middle += stride * hopScans)
            windows.push_back(Broadened(PowerNear(impulses, middle, band)));
    }
    // The sum of the windows' powers at the spacings of `curve`, whose knots are `hopScans` apart.
    double PowerAlong(const CTrack& curve) const {
        double sum = 0;
        for (std::size_t w = 0; w < windows.size(); ++w) {
            const double index = (1 / curve[w * stride] - band.lowest) / band.step;
            if (index >= 0 && index < static_cast<double>(band.count))
                sum += windows[w][static_cast<std::size_t>(index)];
        }
        return sum * stride;
    }

  private:
    static std::vector<double> Broadened(const std::vector<double>& power) {
        constexpr double part = 0.03;  // of the frequency
        std::vector<double> broad(power.size());
        for (std::size_t f = 0; f < power.size(); ++f) {
            const auto reach = static_cast<std::size_t>(part * band.At(static_cast<double>(f)) / band.step + 0.5);
            const auto from = power.begin() + static_cast<std::ptrdiff_t>(f > reach ? f - reach : 0);
            const auto to = power.begin() + static_cast<std::ptrdiff_t>(std::min(power.size(), f + reach + 1));
            broad[f] = *std::max_element(from, to);
        }
        return broad;
    }

    // Spacings in scans, wider than those of any run; the step of the frequencies in bases per scan, half of what a
    // window can distinguish.
    static constexpr double minSpacing = 4.5, maxSpacing = 30, step = 1 / (2 * windowScans);
    static constexpr std::size_t stride = 2;  // knots from window to window: each peak is in one or two windows
    static constexpr Band band{1 / maxSpacing, step,
                               static_cast<std::size_t>((1 / minSpacing - 1 / maxSpacing) / step) + 1};
    std::vector<std::vector<double>> windows;
};

// The parameters of a run curve; the defaults are those of a usual run.
struct RunShape {
    double widest = 14.6;  // the widest spacing, in scans
    double pace = 1;
    double lead = 240;  // scans before the first base
};

// What an unusual shape costs, in units of the power of one window. Measured: the widest spacing of real runs is 10 to
// 19 scans at any scan rate from 1.4 to 7 per second, because instruments choose the rate by the speed of the run.
double Rarity(const RunShape& shape) {
    constexpr double weight = 3;                             // of one standard deviation, by trial
    constexpr double deviation = 0.25, paceDeviation = 0.3;  // of the natural logarithms
    const double departure = std::log(shape.widest / RunShape{}.widest) / deviation;
    const double hurry = std::log(shape.pace) / paceDeviation;
    return weight * (departure * departure + hurry * hurry);
}

// The ratios of the frequency to the expected one that are tried: 0.75 to 1.35.
constexpr double ratioStep = 0.01;
constexpr int firstRatio = -25, ratioCount = 61;  // in steps from 1

// Finds the path through the windows with the most power, whose ratio changes slowly and stays near 1.
class CRatioPath {
  public:
    void Add(const std::vector<double>& power) {
        constexpr double departureCost = 100;  // power that a departure of 1 costs, so 1 for one of 10 %; by trial
        const Scores before = windows.empty() ? Scores{} : windows.back();
        Scores next = before;
        for (int change = 1; change <= reach; ++change)
            for (int s = 0; s + change < ratioCount; ++s) {
                const auto low = static_cast<std::size_t>(s), high = static_cast<std::size_t>(s + change);
                next[low] = std::max(next[low], before[high] - CostOf(change));
                next[high] = std::max(next[high], before[low] - CostOf(change));
            }
        for (int s = 0; s < ratioCount; ++s) {
            const double departure = ratioStep * (s + firstRatio);
            next[static_cast<std::size_t>(s)] +=
                power[static_cast<std::size_t>(s)] - departureCost * departure * departure;
        }
        windows.push_back(next);
    }
    // Index of the ratio in each window.
    std::vector<std::size_t> Trace() const {
        std::vector<std::size_t> path(windows.size());
        for (std::size_t w = windows.size(); w-- > 0;)
            path[w] = w + 1 < windows.size() ? Before(windows[w], static_cast<int>(path[w + 1])) : Best(windows[w]);
        return path;
    }

  private:
    using Scores = std::array<double, ratioCount>;

    static constexpr int reach = 8;  // steps, the greatest change from window to window
    // Power that a change from window to window costs: 0.12 for one of 1 %, by trial.
    static constexpr double CostOf(int change) {
        constexpr double changeCost = 1200;
        return changeCost * (change * ratioStep) * (change * ratioStep);
    }
    static std::size_t Best(const Scores& scores) {
        return static_cast<std::size_t>(std::max_element(scores.begin(), scores.end()) - scores.begin());
    }
    // The ratio from which the best path came to ratio s of the next window.
    static std::size_t Before(const Scores& scores, int s) {
        int best = s;
        double most = -1e300;
        for (int p = std::max(0, s - reach); p <= std::min(ratioCount - 1, s + reach); ++p) {
            const double value = scores[static_cast<std::size_t>(p)] - CostOf(p - s);
            if (value > most) {
                most = value;
                best = p;
            }
        }
        return static_cast<std::size_t>(best);
    }

    std::vector<Scores> windows;  // of the best path to each ratio
};

// The place of the top between the values: that of the parabola through three of them.
double TopPlace(const std::vector<double>& power, std::size_t at) {
    const auto place = static_cast<double>(at);
    if (at == 0 || at + 1 >= power.size()) return place;
    const double a = power[at - 1], b = power[at], c = power[at + 1];
    const double bend = a - 2 * b + c;
    return bend < 0 ? place + std::clamp(0.5 * (a - c) / bend, -0.5, 0.5) : place;
}

}  // namespace

CTrack FindRunCurve(const ImpulseLists& impulses, ScanRange range) {
    const CSpectra spectra(impulses, range);
    const auto curveOf = [&](const RunShape& shape) {
        return RunCurve(range, shape.widest, shape.pace, shape.lead, hopScans);
    };
    RunShape best;
    double bestScore = -1e300;
    const auto consider = [&](const RunShape& shape) {
        const double score = spectra.PowerAlong(curveOf(shape)) - Rarity(shape);
        if (score <= bestScore) return;
        bestScore = score;
        best = shape;
    };
    // A coarse search over scale and pace, a finer one around its result, then the lead.
    for (double pace : {0.8, 1.0, 1.25, 1.55})
        for (double widest = 6.5; widest < 28; widest *= 1.025)
            consider({widest, pace});
    for (double finer : {1.12, 1.06}) {
        const RunShape coarse = best;
        for (double widest : {coarse.widest / 1.012, coarse.widest, coarse.widest * 1.012})
            for (double pace : {coarse.pace / finer, coarse.pace * finer})
                consider({widest, pace});
    }
    const RunShape found = best;
    for (double lead : {0.0, 120.0, 360.0, 480.0, 600.0})
        consider({found.widest, found.pace, lead});
    return curveOf(best);
}

Spacing FollowSpacing(const ImpulseLists& impulses, ScanRange range, const CTrack& expected) {
    constexpr std::size_t minPeaks = 8;               // of all channels
    constexpr double stiffness = 30, level = 0.2;     // see SmoothFit.h; against weights of 0 to some 10, by trial
    constexpr double minRatio = 0.7, maxRatio = 1.5;  // of the spacing to the expected one
    std::size_t count = 0;
    for (const auto& list : impulses)
        count += list.size();
    if (count < minPeaks || range.Length() == 0) return {};
    std::vector<std::vector<double>> powers;
    CRatioPath path;
    for (double middle = range.first; middle < range.end + hopScans; middle += hopScans) {
        const double frequency = 1 / expected.At(middle);
        powers.push_back(
            PowerNear(impulses, middle, {frequency * (1 + ratioStep * firstRatio), frequency * ratioStep, ratioCount}));
        path.Add(powers.back());
    }
    const std::vector<std::size_t> states = path.Trace();
    std::vector<double> ratios(powers.size()), weights(powers.size()), regularity(powers.size());
    for (std::size_t w = 0; w < powers.size(); ++w) {
        ratios[w] = 1 / (1 + ratioStep * (TopPlace(powers[w], states[w]) + firstRatio));
        regularity[w] = powers[w][states[w]];
        weights[w] = std::max(0.0, regularity[w] - 1);
    }
    ratios = SmoothFit(ratios, weights, stiffness, level);
    for (std::size_t w = 0; w < ratios.size(); ++w)
        ratios[w] =
            std::clamp(ratios[w], minRatio, maxRatio) * expected.At(range.first + hopScans * static_cast<double>(w));
    return {CTrack(range.first, hopScans, std::move(ratios)), CTrack(range.first, hopScans, std::move(regularity)),
            true};
}

}  // namespace lanecall
