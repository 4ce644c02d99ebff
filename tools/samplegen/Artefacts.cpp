// SPDX-License-Identifier: MIT
#include "samplegen/Artefacts.h"

#include <array>
#include <cstddef>
#include <vector>

#include "samplegen/Dyes.h"
#include "samplestore/SampleInfo.h"

namespace samplegen {

namespace {

// A bubble or a speck that passes the detector: it is seen in all channels, for one or a few scans.
Spike DrawSpike(const Read& read, CRandom& random) {
    constexpr double usualHeight = 2500;  // counts, in a read without bases
    const double height = read.height > 0 ? read.height : usualHeight;
    Spike spike;
    spike.scan = random.Between(read.firstScan, read.lastScan);
    spike.height = height * random.Between(0.5, 4);
    spike.sigma = random.Between(0.4, 1.2);
    for (double& gain : spike.gains)
        gain = random.Between(0.7, 1.3);
    return spike;
}

// Dye that has come off its nucleotides moves as a cloud among the first fragments.
Peak DrawBlob(const Read& read, CRandom& random) {
    Peak blob;
    blob.dye = random.Below(static_cast<int>(channelCount));
    blob.scan = read.firstScan + read.spacing * random.Between(10, 110);
    blob.height = read.height * random.Between(0.3, 1.5) * Dyes()[static_cast<std::size_t>(blob.dye)].brightness;
    blob.sigma = read.spacing * random.Between(1.2, 3.5);
    return blob;
}

}  // namespace

void AddArtefacts(Read& read, const Troubles& troubles, CRandom& random) {
    for (int i = 0; i < troubles.spikes; ++i)
        read.spikes.push_back(DrawSpike(read, random));
    for (int i = 0; i < troubles.blobs && read.height > 0; ++i)
        read.peaks.push_back(DrawBlob(read, random));
}

}  // namespace samplegen
