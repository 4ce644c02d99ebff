#include <algorithm>
#include <cmath>

#include "samplestore/CapTrace.h"

double CProcessedTrace::ScaleFor(double& offset, double range) const {
    double low = 1000.0;
    double high = 0.0;
    const double scans = std::ceil(traceEnd - traceStart);
    for (const auto& channel : channels) {
        // An empty array reads as 0 everywhere.
        if (channel.empty() && scans > 0.0) low = std::min(low, 0.0);
        // A scan beyond the array would repeat its last value, which changes neither bound.
        const double size = static_cast<double>(channel.size());
        const std::size_t count = scans > 0.0 ? static_cast<std::size_t>(std::min(scans, size)) : 0;
        for (std::size_t i = 0; i < count; ++i) {
            low = std::min(low, channel[i]);
            high = std::max(high, channel[i]);
        }
    }
    offset = low;
    return (high - low) / range;
}
