// SPDX-License-Identifier: MIT
// CConversation: the processed curves.
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "plugins/Conversation.h"

namespace {

// A library may extend its curves beyond the end of the run, but no processing makes a run more than twice as long.
constexpr std::int64_t minExtension = 1000;  // scans

std::int64_t MaxEnd(std::int64_t rawScans) {
    return rawScans + std::max(rawScans, minExtension);
}

// Values `start` to `end` - 1 of a curve, with 0 for negative ones; all zeros for a null curve.
std::vector<double> CopyCurve(const double* curve, std::int32_t start, std::int32_t end) {
    std::vector<double> copy(static_cast<std::size_t>(end - start));
    if (curve) std::transform(curve + start, curve + end, copy.begin(), [](double v) { return v < 0.0 ? 0.0 : v; });
    return copy;
}

// The raw current at the same scans; beyond the end of the run its last value.
std::vector<double> CopyCurrent(const std::vector<double>& current, std::int32_t start, std::int32_t end) {
    std::vector<double> copy(static_cast<std::size_t>(end - start));
    if (current.empty()) return copy;
    for (std::size_t i = 0; i < copy.size(); ++i)
        copy[i] = current[std::min(static_cast<std::size_t>(start) + i, current.size() - 1)];
    return copy;
}

}  // namespace

bool CConversation::TakeCurves(CProcessedTrace& trace) {
    std::int32_t scratch = 0;
    std::int32_t start = 0;
    end = 0;
    double** const curves = library.peekProcessedTrace(0, &scratch, &start, &end);
    start = std::max(start, 0);
    if (end < start) return false;
    if (end > MaxEnd(raw.scanCount))
        return Fail("The library reports a processed trace up to scan " + std::to_string(end) + " of a run of " +
                    std::to_string(raw.scanCount) + " scans");
    if (end > start && (!curves || std::none_of(curves, curves + channelCount, [](double* curve) { return curve; })))
        return Fail("The library reports no processed trace");

    std::array<std::vector<double>, channelCount> channels;
    for (std::size_t k = 0; k < channels.size() && end > start; ++k)
        channels[k] = CopyCurve(curves[k], start, end);
    trace.SetArrays(std::move(channels), CopyCurrent(raw.current, start, end));
    trace.traceStart = start;
    trace.traceEnd = end;
    return true;
}
