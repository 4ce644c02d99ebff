#include "lanecall/Spacing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <numbers>

#include "lanecall/SmoothFit.h"

namespace lanecall {

namespace {

constexpr double windowScans = 400, hopScans = 120;
constexpr double frequencyStep = 1 / (3 * windowScans);

struct Spectra {
    std::vector<std::vector<double>> power;  // of each window, at each frequency; 1 where the peaks have no rhythm
    std::size_t frequencies = 0;
    double lowest = 0;  // frequency, in bases a scan
    double FrequencyOf(double index) const { return lowest + frequencyStep * index; }
};

// Some impulses of a window as numbers in the complex plane, each turned on by its step from frequency to frequency.
// Several at a time keep the processor busy.
struct Turning {
    static constexpr std::size_t size = 4;
    std::array<double, size> real{}, imaginary{}, stepReal{}, stepImaginary{};

    void Put(std::size_t place, double weight, double angle, double step) {
        real[place] = weight * std::cos(angle);
        imaginary[place] = weight * std::sin(angle);
        stepReal[place] = std::cos(step);
        stepImaginary[place] = std::sin(step);
    }
    void AddTo(std::vector<std::complex<double>>& sums) {
        for (auto& sum : sums) {
            sum += std::complex<double>((real[0] + real[1]) + (real[2] + real[3]),
                                        (imaginary[0] + imaginary[1]) + (imaginary[2] + imaginary[3]));
            for (std::size_t k = 0; k < size; ++k) {
                const double turned = real[k] * stepReal[k] - imaginary[k] * stepImaginary[k];
                imaginary[k] = real[k] * stepImaginary[k] + imaginary[k] * stepReal[k];
                real[k] = turned;
            }
        }
    }
};

// Adds the power of one channel's impulses in the window round `middle`.
void AddPower(const std::vector<Impulse>& impulses, double middle, const Spectra& spectra, std::vector<double>& power,
              double& floor) {
    constexpr double circle = 2 * std::numbers::pi;
    auto at = std::lower_bound(impulses.begin(), impulses.end(), middle - windowScans / 2,
                               [](const Impulse& impulse, double scan) { return impulse.scan < scan; });
    std::vector<std::complex<double>> sums(spectra.frequencies);
    while (at != impulses.end() && at->scan < middle + windowScans / 2) {
        Turning turning;
        for (std::size_t k = 0; k < Turning::size && at != impulses.end() && at->scan < middle + windowScans / 2; ++k) {
            const double offset = at->scan - middle;
            const double taper = 0.5 + 0.5 * std::cos(circle * offset / windowScans);
            const double weight = std::min(1.0, at->weight) * taper;
            floor += weight * weight;
            turning.Put(k, weight, circle * spectra.FrequencyOf(0) * offset, circle * frequencyStep * offset);
            ++at;
        }
        turning.AddTo(sums);
    }
    for (std::size_t f = 0; f < sums.size(); ++f)
        power[f] += std::norm(sums[f]);
}

Spectra MakeSpectra(const ImpulseLists& impulses, ScanRange range, double shortest, double longest) {
    Spectra spectra;
    spectra.lowest = 1 / longest;
    spectra.frequencies = static_cast<std::size_t>((1 / shortest - 1 / longest) / frequencyStep) + 1;
    for (double middle = range.first; middle < range.end + hopScans; middle += hopScans) {
        std::vector<double> power(spectra.frequencies, 0.0);
        double floor = 0;
        for (const auto& list : impulses)
            AddPower(list, middle, spectra, power, floor);
        for (double& value : power)
            value /= std::max(floor, 1.0);
        spectra.power.push_back(std::move(power));
    }
    return spectra;
}

// The frequency of the whole read. Very even peaks have as much power at twice the frequency, so the lowest of nearly
// equal frequencies is the one.
std::size_t OverallFrequency(const Spectra& spectra) {
    std::vector<double> total(spectra.frequencies, 0.0);
    for (const auto& power : spectra.power)
        for (std::size_t f = 0; f < total.size(); ++f)
            total[f] += power[f];
    std::vector<double> broad(total.size());
    for (std::size_t f = 0; f < total.size(); ++f) {
        const std::size_t reach = 2 + f / 8;  // spacing drifts, so the power of a read spreads in proportion
        const std::size_t from = f > reach ? f - reach : 0, to = std::min(total.size(), f + reach + 1);
        for (std::size_t k = from; k < to; ++k)
            broad[f] += total[k] / static_cast<double>(to - from);
    }
    const double limit = 1 + 0.8 * (*std::max_element(broad.begin(), broad.end()) - 1);
    std::size_t best = 0;
    while (best + 1 < broad.size() && broad[best] < limit)
        ++best;
    while (best + 1 < broad.size() && broad[best + 1] > broad[best])
        ++best;
    return best;
}

// The most powerful path through the windows that changes its frequency slowly and stays near the overall one.
std::vector<std::size_t> FollowFrequency(const Spectra& spectra, std::size_t overall) {
    constexpr double changeCost = 600, departureCost = 6;
    const double centre = spectra.FrequencyOf(static_cast<double>(overall));
    const auto indexOf = [&](double frequency) {
        const double index = (frequency - spectra.FrequencyOf(0)) / frequencyStep;
        return static_cast<int>(std::clamp(index, 0.0, static_cast<double>(spectra.frequencies - 1)));
    };
    const int low = indexOf(centre * 0.6), high = indexOf(centre * 1.5);
    const int states = high - low + 1, windows = static_cast<int>(spectra.power.size());
    constexpr int reach = 12;
    std::vector<double> score(static_cast<std::size_t>(states), 0.0), next(score.size());
    std::vector<std::vector<int>> from(static_cast<std::size_t>(windows), std::vector<int>(score.size(), 0));
    for (int w = 0; w < windows; ++w) {
        for (int s = 0; s < states; ++s) {
            double best = -1e300;
            const double frequency = spectra.FrequencyOf(low + s);
            for (int p = std::max(0, s - reach); p <= std::min(states - 1, s + reach); ++p) {
                const double change = (s - p) * frequencyStep / frequency;
                const double value = score[static_cast<std::size_t>(p)] - changeCost * change * change;
                if (value > best) {
                    best = value;
                    from[static_cast<std::size_t>(w)][static_cast<std::size_t>(s)] = p;
                }
            }
            const double departure = frequency / centre - 1;
            const double power =
                spectra.power[static_cast<std::size_t>(w)][static_cast<std::size_t>(low) + static_cast<std::size_t>(s)];
            next[static_cast<std::size_t>(s)] = best + power - departureCost * departure * departure;
        }
        score.swap(next);
    }
    auto state = static_cast<int>(std::max_element(score.begin(), score.end()) - score.begin());
    std::vector<std::size_t> path(static_cast<std::size_t>(windows));
    for (int w = windows - 1; w >= 0; --w) {
        path[static_cast<std::size_t>(w)] = static_cast<std::size_t>(low) + static_cast<std::size_t>(state);
        state = from[static_cast<std::size_t>(w)][static_cast<std::size_t>(state)];
    }
    return path;
}

}  // namespace

Spacing EstimateSpacing(const ImpulseLists& impulses, ScanRange range, double shortest, double longest) {
    Spacing spacing;
    std::size_t count = 0;
    for (const auto& list : impulses)
        count += list.size();
    if (count < 8 || range.Length() == 0) return spacing;
    const Spectra spectra = MakeSpectra(impulses, range, shortest, longest);
    const std::vector<std::size_t> path = FollowFrequency(spectra, OverallFrequency(spectra));
    std::vector<double> scans, regularity;
    for (std::size_t w = 0; w < path.size(); ++w) {
        const std::vector<double>& power = spectra.power[w];
        double place = static_cast<double>(path[w]);
        if (path[w] > 0 && path[w] + 1 < power.size()) {
            const double a = power[path[w] - 1], b = power[path[w]], c = power[path[w] + 1];
            const double bend = a - 2 * b + c;
            if (bend < 0) place += std::clamp(0.5 * (a - c) / bend, -0.5, 0.5);
        }
        scans.push_back(1 / spectra.FrequencyOf(place));
        regularity.push_back(power[path[w]]);
    }
    std::vector<double> weights;
    weights.reserve(regularity.size());
    for (double power : regularity)
        weights.push_back(std::max(0.0, power - 1));
    constexpr double stiffness = 30, level = 0.2;
    scans = SmoothFit(scans, weights, stiffness, level);
    for (double& value : scans)
        value = std::clamp(value, 0.5 * shortest, 2 * longest);
    spacing.scans = CTrack(range.first, hopScans, std::move(scans));
    spacing.regularity = CTrack(range.first, hopScans, std::move(regularity));
    spacing.found = true;
    return spacing;
}

}  // namespace lanecall
