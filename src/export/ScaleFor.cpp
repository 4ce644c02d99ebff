// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

#include "export/Extremes.h"
#include "samplestore/CapTrace.h"

double CProcessedTrace::ScaleFor(double& offset, double range) const {
    Extremes found{1000.0, 0.0};
    const double scans = std::ceil(traceEnd - traceStart);
    for (const auto& channel : channels) {
        // An empty array reads as 0 everywhere.
        if (channel.empty() && scans > 0.0) found.low = std::min(found.low, 0.0);
        // A scan beyond the array would repeat its last value, which changes neither bound.
        const double size = static_cast<double>(channel.size());
        const std::size_t count = scans > 0.0 ? static_cast<std::size_t>(std::min(scans, size)) : 0;
        found.Take(std::span(channel).first(count));
    }
    offset = found.low;
    return (found.high - found.low) / range;
}
