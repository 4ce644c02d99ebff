#include "lanecall/Mobility.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "lanecall/SmoothFit.h"
#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

using Phasor = std::complex<double>;
using Phasors = std::vector<std::array<Phasor, channelCount>>;  // of each window

constexpr double windowScans = 480;
constexpr double greatestShift = 2;  // of one dye against another, in spacings

// The rhythm of each channel at the known spacing: the angle tells where on the grid its peaks stand.
Phasors RhythmOf(const ImpulseLists& impulses, const Spacing& spacing) {
    Phasors phasors(spacing.scans.Size());
    for (std::size_t w = 0; w < phasors.size(); ++w) {
        const double middle = spacing.scans.ScanOf(w), turn = 2 * std::numbers::pi / spacing.scans[w];
        for (std::size_t c = 0; c < channelCount; ++c) {
            const auto& list = impulses[c];
            auto at = std::lower_bound(list.begin(), list.end(), middle - windowScans / 2,
                                       [](const Impulse& impulse, double scan) { return impulse.scan < scan; });
            for (; at != list.end() && at->scan < middle + windowScans / 2; ++at) {
                const double offset = at->scan - middle;
                const double taper = 0.5 + 0.5 * std::cos(2 * std::numbers::pi * offset / windowScans);
                phasors[w][c] += std::polar(taper * std::min(1.0, at->weight), turn * offset);
            }
        }
    }
    return phasors;
}

// Angle of `channel` against the reference in every window: unwrapped, then smoothed, since a dye's shift changes
// slowly and windows without a clear rhythm tell little.
std::vector<double> AnglesAgainst(const Phasors& phasors, const std::vector<Phasor>& reference, std::size_t channel) {
    constexpr int reach = 4;
    constexpr double stiffness = 30, level = 0.05;
    const int count = static_cast<int>(phasors.size());
    std::vector<Phasor> relative(phasors.size());
    std::size_t clearest = 0;
    for (int w = 0; w < count; ++w) {
        Phasor sum;
        for (int k = std::max(0, w - reach); k < std::min(count, w + reach + 1); ++k) {
            const auto window = static_cast<std::size_t>(k);
            const double taper = 1 - std::abs(k - w) / (reach + 1.0);
            sum += taper * phasors[window][channel] * std::conj(reference[window]);
        }
        relative[static_cast<std::size_t>(w)] = sum;
        if (std::abs(sum) > std::abs(relative[clearest])) clearest = static_cast<std::size_t>(w);
    }
    std::vector<double> angles(phasors.size()), weights(phasors.size());
    const auto follow = [&](std::size_t from, std::size_t to) {
        const double turn = std::arg(relative[to]) - angles[from];
        angles[to] = angles[from] + std::remainder(turn, 2 * std::numbers::pi);
    };
    angles[clearest] = std::arg(relative[clearest]);
    for (std::size_t w = clearest; w + 1 < angles.size(); ++w)
        follow(w, w + 1);
    for (std::size_t w = clearest; w > 0; --w)
        follow(w, w - 1);
    const double most = std::abs(relative[clearest]);
    for (std::size_t w = 0; w < weights.size(); ++w)
        weights[w] = most > 0 ? std::norm(relative[w] / most) : 0;
    return SmoothFit(angles, weights, stiffness, level);
}

// How badly the strong peaks of the four channels collide or leave holes when each channel is moved by a number of
// whole spacings besides its shift.
double Disorder(const ImpulseLists& impulses, const ShiftTracks& shifts, const Spacing& spacing,
                const std::array<int, channelCount>& wholes) {
    constexpr double strong = 0.4, regular = 1.5;
    std::vector<double> places;
    for (std::size_t c = 0; c < channelCount; ++c)
        for (const Impulse& impulse : impulses[c])
            if (impulse.weight > strong && spacing.regularity.At(impulse.scan) > regular)
                places.push_back(impulse.scan - shifts[c].At(impulse.scan) -
                                 wholes[c] * spacing.scans.At(impulse.scan));
    std::sort(places.begin(), places.end());
    double disorder = 0;
    for (std::size_t i = 1; i < places.size(); ++i) {
        const double gap = (places[i] - places[i - 1]) / spacing.scans.At(places[i]);
        if (gap < 0.5) disorder += 0.5 - gap;
    }
    return disorder;
}

std::array<int, channelCount> WholeSpacings(const ImpulseLists& impulses, const ShiftTracks& shifts,
                                            const Spacing& spacing, std::size_t anchor) {
    std::array<int, channelCount> best{};
    double least = Disorder(impulses, shifts, spacing, best);
    for (int code = 0; code < 27; ++code) {
        std::array<int, channelCount> wholes{};
        int rest = code;
        for (std::size_t c = 0; c < channelCount; ++c) {
            if (c == anchor) continue;
            wholes[c] = rest % 3 - 1;
            rest /= 3;
        }
        // A shift by a whole spacing must pay, since most dyes differ by less.
        const double disorder = Disorder(impulses, shifts, spacing, wholes) * 1.05;
        if (disorder < least) {
            least = disorder;
            best = wholes;
        }
    }
    return best;
}

}  // namespace

ShiftTracks EstimateMobility(const ImpulseLists& impulses, const Spacing& spacing) {
    ShiftTracks shifts;
    if (!spacing.found) return shifts;
    const Phasors phasors = RhythmOf(impulses, spacing);
    PerChannel power{};
    for (const auto& window : phasors)
        for (std::size_t c = 0; c < channelCount; ++c)
            power[c] += std::abs(window[c]);
    const auto anchor = static_cast<std::size_t>(std::max_element(power.begin(), power.end()) - power.begin());
    std::vector<Phasor> reference(phasors.size());
    for (std::size_t w = 0; w < phasors.size(); ++w)
        reference[w] = phasors[w][anchor];
    const double first = spacing.scans.ScanOf(0), step = spacing.scans.Size() > 1 ? spacing.scans.ScanOf(1) - first : 1;
    for (std::size_t c = 0; c < channelCount; ++c) {
        std::vector<double> values(phasors.size(), 0.0);
        if (c != anchor) {
            values = AnglesAgainst(phasors, reference, c);
            for (std::size_t w = 0; w < values.size(); ++w)
                values[w] *= spacing.scans[w] / (2 * std::numbers::pi);
        }
        shifts[c] = CTrack(first, step, std::move(values));
    }
    const auto wholes = WholeSpacings(impulses, shifts, spacing, anchor);
    for (std::size_t w = 0; w < phasors.size(); ++w) {
        const double most = greatestShift * spacing.scans[w];
        double mean = 0;
        for (std::size_t c = 0; c < channelCount; ++c) {
            shifts[c][w] = std::clamp(shifts[c][w] + wholes[c] * spacing.scans[w], -most, most);
            mean += shifts[c][w] / channelCount;
        }
        for (auto& track : shifts)
            track[w] -= mean;
    }
    return shifts;
}

void ShiftCurves(Curves& curves, ScanRange range, const ShiftTracks& shifts) {
    for (std::size_t c = 0; c < channelCount; ++c) {
        if (shifts[c].Size() == 0) continue;
        Curve moved = curves[c];
        for (int i = range.first; i < range.end; ++i)
            moved[static_cast<std::size_t>(i)] = Interpolate(curves[c], i + shifts[c].At(i));
        curves[c].swap(moved);
    }
}

}  // namespace lanecall
