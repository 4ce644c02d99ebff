// SPDX-License-Identifier: MIT
#include "samplegen/Trace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "samplegen/Dyes.h"
#include "samplegen/Exp.h"
#include "samplegen/Wander.h"
#include "samplestore/SampleInfo.h"

namespace samplegen {

namespace {

using Curve = std::vector<double>;

void AddPeak(Curve& curve, const Peak& peak) {
    constexpr double reach = 5;  // standard deviations, beyond which a peak is below one count
    const double end = static_cast<double>(curve.size());
    const auto from = static_cast<std::size_t>(std::clamp(std::ceil(peak.scan - reach * peak.sigma), 0.0, end));
    const auto to = static_cast<std::size_t>(std::clamp(std::ceil(peak.scan + reach * peak.sigma), 0.0, end));
    for (std::size_t scan = from; scan < to; ++scan) {
        const double distance = (static_cast<double>(scan) - peak.scan) / peak.sigma;
        curve[scan] += peak.height * Exp(-distance * distance / 2);
    }
}

// The signals before the read: a broad front of free dye, and the primers that were not extended.
void AddFront(std::array<Curve, channelCount>& dyes, const Read& read, CRandom& random) {
    for (std::size_t d = 0; d < channelCount; ++d) {
        const double front = random.Between(150, 500);
        const double primer = read.height * random.Between(1.5, 3);
        AddPeak(dyes[d], {0, 0.55 * read.firstScan, front, 8 * read.spacing});
        AddPeak(dyes[d], {0, read.firstScan - 12 * read.spacing, primer, 1.5 * read.spacing});
    }
}

std::array<Curve, channelCount> DyeSignals(const Read& read, std::size_t scanCount, CRandom& random) {
    std::array<Curve, channelCount> dyes;
    dyes.fill(Curve(scanCount));
    for (const Peak& peak : read.peaks)
        AddPeak(dyes[static_cast<std::size_t>(peak.dye)], peak);
    AddFront(dyes, read, random);
    return dyes;
}

// The sum of the spikes in one channel.
Curve Flashes(const Read& read, std::size_t scanCount, std::size_t channel) {
    Curve flashes(scanCount);
    for (const Spike& spike : read.spikes)
        AddPeak(flashes, {0, spike.scan, spike.height * spike.gains[channel], spike.sigma});
    return flashes;
}

std::uint32_t WholeWithin(double value, std::uint32_t limit) {
    return static_cast<std::uint32_t>(std::clamp(std::floor(value + 0.5), 0.0, static_cast<double>(limit)));
}

// Light of all dyes on a background, with a noise that grows with the light.
void RecordChannel(std::vector<ScanRecord>& scans, std::size_t channel, const std::array<Curve, channelCount>& dyes,
                   const Curve& flashes, const Troubles& troubles, double scansPerSecond, CRandom& random) {
    constexpr double shotNoise = 0.15;  // variance per count of light
    const auto crossTalk = CrossTalk(troubles.crossTalk)[channel];
    const double noise = troubles.noise;
    const double offset = random.Between(400, 900);
    const double warmUp = random.Between(20, 80);
    const CWander wander(scans.size(), 90 * scansPerSecond, 15, random);
    for (std::size_t scan = 0; scan < scans.size(); ++scan) {
        double light = flashes[scan];
        for (std::size_t d = 0; d < channelCount; ++d)
            light += static_cast<double>(crossTalk[d]) * dyes[d][scan];
        const double background = offset + wander.At(scan) + warmUp * 500 / (500 + static_cast<double>(scan));
        const double deviation = noise == 0 ? 0 : std::sqrt(noise * noise + shotNoise * light);
        scans[scan].words[channel + 1] = WholeWithin(light + background + deviation * random.Normal(), detectorLimit);
    }
}

// The current rises as the voltage is ramped up, and drifts from then on.
void RecordCurrent(std::vector<ScanRecord>& scans, double scansPerSecond, CRandom& random) {
    const double plateau = random.Between(200, 240);
    const CWander wander(scans.size(), 60 * scansPerSecond, 2, random);
    for (std::size_t scan = 0; scan < scans.size(); ++scan) {
        const double seconds = static_cast<double>(scan) / scansPerSecond;
        const double drift = 1 + 0.03 * seconds / 1800;
        const double current = plateau * std::min(1.0, seconds / 60) * drift + wander.At(scan) + 0.5 * random.Normal();
        scans[scan].words[0] = WholeWithin(current, detectorLimit);
    }
}

}  // namespace

std::vector<ScanRecord> RecordRun(const Read& read, const Troubles& troubles, double scansPerSecond, CRandom& random) {
    constexpr double tailSeconds = 120;
    const auto scanCount = static_cast<std::size_t>(read.lastScan + tailSeconds * scansPerSecond);
    const auto dyes = DyeSignals(read, scanCount, random);
    std::vector<ScanRecord> scans(scanCount);
    RecordCurrent(scans, scansPerSecond, random);
    for (std::size_t channel = 0; channel < channelCount; ++channel)
        RecordChannel(scans, channel, dyes, Flashes(read, scanCount, channel), troubles, scansPerSecond, random);
    return scans;
}

}  // namespace samplegen
