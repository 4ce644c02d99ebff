// SPDX-License-Identifier: MIT
#include "lanecall/Rhythm.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "lanecall/Track.h"

namespace lanecall {

Phasors RhythmOf(const ImpulseLists& impulses, const Spacing& spacing) {
    constexpr double windowScans = 480;  // some 35 bases; a Hann window, so peaks near its ends count little
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

}  // namespace lanecall
