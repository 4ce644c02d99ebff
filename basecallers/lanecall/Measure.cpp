// SPDX-License-Identifier: MIT
#include "lanecall/Measure.h"

#include <cstddef>
#include <utility>

#include "lanecall/Impulses.h"
#include "lanecall/Levels.h"
#include "lanecall/NoiseSmoothing.h"
#include "lanecall/PeakWidth.h"
#include "lanecall/Unreadable.h"

namespace lanecall {

namespace {

// Smoothing for the second search of peaks, as standard deviations in spacings. Less would leave noise, more would join
// neighbours.
constexpr double minShare = 0.2, maxShare = 0.3;

CTrack Scaled(CTrack track, double factor) {
    for (std::size_t k = 0; k < track.Size(); ++k)
        track[k] *= factor;
    return track;
}

}  // namespace

Measured Measure(Separated separated) {
    const ScanRange range = separated.range;
    const CTrack curve = FindRunCurve(separated.impulses, range);
    const Spacing rough = FollowSpacing(separated.impulses, range, curve);
    if (!rough.found) throw CUnreadable("No bases: the signal shows too few peaks to find their spacing");
    const ChannelTracks smoothing = SmoothingFor(separated.curves, range, separated.noise,
                                                 Scaled(rough.scans, minShare), Scaled(rough.scans, maxShare));
    const ImpulseLists impulses = FindImpulses(Bend(separated.curves, range, smoothing), range);
    Spacing spacing = FollowSpacing(impulses, range, curve);
    if (!spacing.found) spacing = rough;
    const ChannelTracks levels = EstimateLevels(separated.curves, impulses, range, separated.noise);
    ChannelTracks noise;
    for (std::size_t c = 0; c < channelCount; ++c) {
        noise[c] = levels[c];
        for (std::size_t k = 0; k < noise[c].Size(); ++k)
            noise[c][k] = separated.noise[c] / levels[c][k];
    }
    DivideByLevels(separated.curves, levels);
    CTrack widths = EstimateWidth(separated.curves, impulses, spacing);
    return {std::move(separated.curves), range, std::move(spacing), std::move(widths), std::move(noise)};
}

}  // namespace lanecall
