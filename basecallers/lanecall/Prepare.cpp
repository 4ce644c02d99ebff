// SPDX-License-Identifier: MIT
#include "lanecall/Prepare.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "lanecall/Baseline.h"
#include "lanecall/RawTrace.h"
#include "lanecall/Spikes.h"
#include "lanecall/Unreadable.h"

namespace lanecall {

namespace {

constexpr int minScans = 200;          // some 15 bases; a read must have 10 that can be trusted
constexpr int baselineWindow = 300;    // scans, some 20 bases: wider than any run of one letter, which is no baseline
constexpr double maxSaturated = 0.25;  // share of the scans of the read; beyond this the heights mean nothing

}  // namespace

Prepared Prepare(const Recorded& recorded, SignalPart part) {
    const int scans = ScanCount(recorded.curves);
    if (scans < minScans)
        throw CUnreadable("The trace is too short: " + std::to_string(scans) + " scans, " + std::to_string(minScans) +
                          " are needed");
    Prepared prepared{recorded.curves, {}};
    PerChannel noise{};
    for (std::size_t c = 0; c < channelCount; ++c) {
        RemoveBaseline(prepared.curves[c], baselineWindow);
        noise[c] = QuietNoise(prepared.curves[c]);
    }
    RemoveSpikes(prepared.curves, noise);
    ScanRange range = FindSignal(prepared.curves, noise, part);
    if (recorded.wanted) {
        const ScanRange cut{std::max(range.first, recorded.wanted->first), std::min(range.end, recorded.wanted->end)};
        if (cut.Length() >= minScans) range = cut;
    }
    if (range.Length() == 0) throw CUnreadable("No signal: no peaks stand out from the noise in any channel");
    if (range.Length() < minScans)
        throw CUnreadable("The signal is too short: " + std::to_string(range.Length()) + " scans");
    const double saturated = SaturatedShare(recorded.curves, range);
    if (saturated > maxSaturated)
        throw CUnreadable("The detector is saturated in " + std::to_string(static_cast<int>(100 * saturated)) +
                          " percent of the signal");
    prepared.range = range;
    return prepared;
}

}  // namespace lanecall
