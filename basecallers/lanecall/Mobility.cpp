// SPDX-License-Identifier: MIT
#include "lanecall/Mobility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

#include "lanecall/CallBases.h"
#include "lanecall/DyeShifts.h"
#include "lanecall/FreeShifts.h"
#include "lanecall/Impulses.h"
#include "lanecall/Processor.h"
#include "lanecall/Rhythm.h"
#include "lanecall/SmoothFit.h"
#include "lanecall/Smoothing.h"

namespace lanecall {

namespace {

constexpr double maxShift = 2;  // spacings; known chemistries reach 0.7

// Limits the shifts and makes them average 0 at every knot.
ChannelTracks Centred(ChannelTracks shifts, const Spacing& spacing) {
    for (std::size_t w = 0; w < spacing.scans.Size(); ++w) {
        const double limit = maxShift * spacing.scans[w];
        double mean = 0;
        for (CTrack& track : shifts) {
            track[w] = std::clamp(track[w], -limit, limit);
            mean += track[w] / channelCount;
        }
        for (CTrack& track : shifts)
            track[w] -= mean;
    }
    return shifts;
}

struct Angle {
    double value = 0;   // radians
    double weight = 0;  // 0 to 1: how well the windows agree
};

// The angle between a channel's rhythm and that of the other channels, near a window.
Angle AngleNear(const Phasors& phasors, const std::vector<Phasor>& all, std::size_t channel, int window) {
    constexpr int reach = 3;  // windows to either side
    const int count = static_cast<int>(phasors.size());
    Phasor sum;
    double length = 0;
    for (int k = std::max(0, window - reach); k < std::min(count, window + reach + 1); ++k) {
        const auto at = static_cast<std::size_t>(k);
        const double taper = 1 - std::abs(k - window) / (reach + 1.0);
        const Phasor own = phasors[at][channel], others = all[at] - own;
        sum += taper * own * std::conj(others);
        length += taper * std::abs(own) * std::abs(others);
    }
    const double agreement = length > 0 ? std::abs(sum) / length : 0;
    return {std::arg(sum), agreement * agreement};
}

// Known shifts, corrected by the angles between the rhythms of the channels.
ChannelTracks Refined(ChannelTracks shifts, Phasors phasors, const Spacing& spacing) {
    constexpr double trust = 0.3;                  // weight of the known shift; a clear angle has a weight of 1
    constexpr double stiffness = 50, level = 0.5;  // see SmoothFit.h, by trial
    constexpr double circle = 2 * std::numbers::pi;
    std::vector<Phasor> all(phasors.size());
    for (std::size_t w = 0; w < phasors.size(); ++w)
        for (std::size_t c = 0; c < channelCount; ++c) {
            phasors[w][c] *= std::polar(1.0, -circle * shifts[c][w] / spacing.scans[w]);
            all[w] += phasors[w][c];
        }
    for (std::size_t c = 0; c < channelCount; ++c) {
        std::vector<double> rests(phasors.size()), weights(phasors.size());
        for (std::size_t w = 0; w < rests.size(); ++w) {
            const Angle angle = AngleNear(phasors, all, c, static_cast<int>(w));
            weights[w] = angle.weight + trust;
            rests[w] = angle.value * spacing.scans[w] / circle * angle.weight / weights[w];
        }
        rests = SmoothFit(rests, weights, stiffness, level);
        for (std::size_t w = 0; w < rests.size(); ++w)
            shifts[c][w] += rests[w];
    }
    return shifts;
}

// Rows are compared at every second scan of a part, which takes a quarter of the time.
constexpr int stride = 2;

Curve ShiftedPart(const Curve& curve, ScanRange part, const CTrack& shift) {
    Curve moved;
    moved.reserve(static_cast<std::size_t>(part.Length() / stride + 1));
    for (int i = part.first; i < part.end; i += stride)
        moved.push_back(Interpolate(curve, i + shift.At(i)));
    return moved;
}

// The spacing in units of `stride` scans, one knot for each scan that is used.
CTrack SpacingOfPart(const CTrack& spacing, ScanRange part) {
    std::vector<double> strides;
    for (int i = part.first; i < part.end; i += stride)
        strides.push_back(spacing.At(i) / stride);
    return {0, 1, std::move(strides)};
}

constexpr int partScans = 4000;  // some 300 bases

ScanRange PartFrom(double scan, ScanRange range) {
    const int first = static_cast<int>(scan);
    return {std::clamp(first, range.first, range.end), std::clamp(first + partScans, range.first, range.end)};
}

// The first part of the read that has a rhythm. The shifts are greatest there.
ScanRange FirstPart(ScanRange range, const Spacing& spacing) {
    constexpr double rhythm = 2;  // regularity, twice that of peaks without rhythm
    std::size_t w = 0;
    while (w + 1 < spacing.regularity.Size() && spacing.regularity[w] < rhythm)
        ++w;
    return PartFrom(spacing.scans.ScanOf(w > 0 ? w - 1 : 0), range);
}

// The part with the clearest rhythm: before a weak read there may be other signals.
ScanRange ClearestPart(ScanRange range, const Spacing& spacing) {
    const CTrack& regularity = spacing.regularity;
    std::size_t best = 0;
    double sum = 0, greatest = 0;
    for (std::size_t from = 0, to = 0; to < regularity.Size(); ++to) {
        sum += regularity[to];
        while (regularity.ScanOf(to) - regularity.ScanOf(from) > partScans)
            sum -= regularity[from++];
        if (sum > greatest) {
            greatest = sum;
            best = from;
        }
    }
    return PartFrom(regularity.ScanOf(best), range);
}

constexpr int blockScans = 64;

// moved[i] = curve between scans, at i + shift. In most blocks the shift has the same whole part everywhere; then all
// values come from neighbouring places, and the processor computes several at once.
LANECALL_WIDE void MoveBlock(const Curve& curve, ScanRange block, const CTrack& shift, Curve& moved) {
    std::array<double, blockScans> places;
    const auto count = static_cast<std::size_t>(block.Length());
    for (std::size_t i = 0; i < count; ++i)
        places[i] = block.first + static_cast<int>(i) + shift.At(block.first + static_cast<int>(i));
    const double whole = std::floor(places[0]) - block.first;
    bool isEven = places[0] >= 1 && places[count - 1] + 3 < static_cast<double>(curve.size());
    for (std::size_t i = 0; i < count; ++i)
        isEven &= std::floor(places[i]) == whole + (block.first + static_cast<int>(i));
    for (std::size_t i = 0; i < count; ++i) {
        const auto at = static_cast<std::size_t>(block.first) + i;
        if (isEven) {
            const double* y = curve.data() + static_cast<std::ptrdiff_t>(at) + static_cast<std::ptrdiff_t>(whole);
            moved[at] = Cubic(y[-1], y[0], y[1], y[2], places[i] - (whole + static_cast<double>(at)));
        } else {
            moved[at] = Interpolate(curve, places[i]);
        }
    }
}

}  // namespace

ChannelTracks EstimateMobility(const Curves& sharp, ScanRange range, const Spacing& spacing, const Letters& letters) {
    constexpr double preference =
        2;  // in the row's score: free shifts must be better by this, since they also fit noise
    if (!spacing.found) return {};
    const ImpulseLists impulses = FindImpulses(sharp, range);
    const Phasors phasors = RhythmOf(impulses, spacing);
    const ScanRange part = FirstPart(range, spacing);
    const auto scoreOf = [&](const ChannelTracks& shifts) {
        double score = 0;
        for (const ScanRange scored : {part, ClearestPart(range, spacing)}) {
            Curves moved;
            for (std::size_t c = 0; c < channelCount; ++c)
                moved[c] = ShiftedPart(sharp[c], scored, shifts[c]);
            score += RowScore(moved, {0, ScanCount(moved)}, SpacingOfPart(spacing.scans, scored));
        }
        return score;
    };
    ChannelTracks best = Centred(FreeShifts(impulses, part, phasors, spacing), spacing);
    double bestScore = scoreOf(best) - preference;
    for (int chemistry = 0; chemistry < chemistryCount; ++chemistry) {
        auto known = KnownShifts(chemistry, spacing.scans, letters);
        if (!known) break;
        ChannelTracks shifts = Centred(Refined(std::move(*known), phasors, spacing), spacing);
        const double score = scoreOf(shifts);
        if (score > bestScore) {
            bestScore = score;
            best = std::move(shifts);
        }
    }
    return best;
}

void ShiftCurves(Curves& curves, ScanRange range, const ChannelTracks& shifts) {
    for (std::size_t c = 0; c < channelCount; ++c) {
        if (shifts[c].Size() == 0) continue;
        Curve moved = curves[c];
        for (int first = range.first; first < range.end; first += blockScans)
            MoveBlock(curves[c], {first, std::min(first + blockScans, range.end)}, shifts[c], moved);
        curves[c].swap(moved);
    }
}

}  // namespace lanecall
