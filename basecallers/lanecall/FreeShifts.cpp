// SPDX-License-Identifier: MIT
#include "lanecall/FreeShifts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <vector>

#include "lanecall/SmoothFit.h"

namespace lanecall {

namespace {

// The angle between `channel` and the reference in every window, in radians. It is followed from window to window
// without jumps of a full turn, then smoothed: a dye's shift changes slowly, and windows without rhythm say little.
std::vector<double> AnglesAgainst(const Phasors& phasors, const std::vector<Phasor>& reference, std::size_t channel) {
    constexpr int reach = 4;                        // windows to either side
    constexpr double stiffness = 30, level = 0.05;  // see SmoothFit.h, by trial
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
    const double clearestLength = std::abs(relative[clearest]);
    for (std::size_t w = 0; w < weights.size(); ++w)
        weights[w] = clearestLength > 0 ? std::norm(relative[w] / clearestLength) : 0;
    return SmoothFit(angles, weights, stiffness, level);
}

using WholeShifts = std::array<int, channelCount>;             // whole spacings that are added to each channel's shift
using Places = std::array<std::vector<double>, channelCount>;  // of each channel's strong peaks, in bases, ascending

Places PlacesOf(const ImpulseLists& impulses, ScanRange part, const ChannelTracks& shifts, const Spacing& spacing) {
    constexpr double strong = 0.4;  // weight; a usual peak has 1
    const CTrack bases = BasesAlong(spacing.scans);
    Places places;
    for (std::size_t c = 0; c < channelCount; ++c)
        for (const Impulse& impulse : impulses[c]) {
            if (impulse.scan < part.first || impulse.scan >= part.end || impulse.weight < strong) continue;
            places[c].push_back(bases.At(impulse.scan - shifts[c].At(impulse.scan)));
        }
    return places;
}

// How much the peaks of the four channels overlap when each channel is moved by whole spacings in addition to its
// shift: the sum of what each gap lacks to half a spacing.
double Overlap(const Places& places, const WholeShifts& wholes) {
    constexpr double minGap = 0.5;  // spacings
    std::vector<double> all;
    for (std::size_t c = 0; c < channelCount; ++c) {
        const auto held = static_cast<std::ptrdiff_t>(all.size());
        for (double place : places[c])
            all.push_back(place - wholes[c]);
        std::inplace_merge(all.begin(), all.begin() + held, all.end());
    }
    double sum = 0;
    for (std::size_t i = 1; i < all.size(); ++i)
        sum += std::max(0.0, minGap - (all[i] - all[i - 1]));
    return sum;
}

// The best of all combinations of -1, 0 and 1 for the channels other than the anchor.
WholeShifts WholeSpacings(const Places& places, std::size_t anchor) {
    constexpr double surcharge = 1.05;  // on whole spacings: most dyes differ by less, so a change must be worth it
    constexpr int combinations = 3 * 3 * 3;
    WholeShifts best{};
    double smallest = Overlap(places, best);
    for (int code = 0; code < combinations; ++code) {
        WholeShifts wholes{};
        int rest = code;
        for (std::size_t c = 0; c < channelCount; ++c) {
            if (c == anchor) continue;
            wholes[c] = rest % 3 - 1;
            rest /= 3;
        }
        const double overlap = Overlap(places, wholes) * surcharge;
        if (overlap < smallest) {
            smallest = overlap;
            best = wholes;
        }
    }
    return best;
}

// The channel with the clearest rhythm.
std::size_t Anchor(const Phasors& phasors) {
    PerChannel power{};
    for (const auto& window : phasors)
        for (std::size_t c = 0; c < channelCount; ++c)
            power[c] += std::abs(window[c]);
    return static_cast<std::size_t>(std::max_element(power.begin(), power.end()) - power.begin());
}

}  // namespace

ChannelTracks FreeShifts(const ImpulseLists& impulses, ScanRange part, const Phasors& phasors, const Spacing& spacing) {
    const std::size_t anchor = Anchor(phasors);
    std::vector<Phasor> reference;
    reference.reserve(phasors.size());
    for (const auto& window : phasors)
        reference.push_back(window[anchor]);
    ChannelTracks shifts;
    for (std::size_t c = 0; c < channelCount; ++c) {
        shifts[c] = spacing.scans;
        const std::vector<double> angles =
            c == anchor ? std::vector<double>(phasors.size(), 0.0) : AnglesAgainst(phasors, reference, c);
        for (std::size_t w = 0; w < angles.size(); ++w)
            shifts[c][w] *= angles[w] / (2 * std::numbers::pi);
    }
    const WholeShifts wholes = WholeSpacings(PlacesOf(impulses, part, shifts, spacing), anchor);
    for (std::size_t c = 0; c < channelCount; ++c)
        for (std::size_t w = 0; w < phasors.size(); ++w)
            shifts[c][w] += wholes[c] * spacing.scans[w];
    return shifts;
}

}  // namespace lanecall
