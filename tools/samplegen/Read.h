// SPDX-License-Identifier: MIT
// The read of a well: its bases and the place, height and width of their peaks.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "samplegen/Options.h"
#include "samplegen/Random.h"
#include "samplegen/Troubles.h"

namespace samplegen {

struct Peak {
    int dye = 0;        // index, see Dyes.h
    double scan = 0;    // of its top
    double height = 0;  // counts
    double sigma = 0;   // standard deviation of its Gaussian, in scans
};

// A flash in all channels at once.
struct Spike {
    double scan = 0;                // of its top
    double height = 0;              // counts
    double sigma = 0;               // standard deviation, in scans
    std::array<double, 4> gains{};  // its height in each channel, relative to `height`
};

struct Read {
    std::string bases;        // true letters; an ambiguity code at a mixed site
    std::vector<Peak> peaks;  // one per base, two at a mixed site; then the blobs
    std::vector<Spike> spikes;
    double firstScan = 0;  // of the first base, without the shift of its dye
    double lastScan = 0;   // of the last base, or where it would be if the template did not end early
    double spacing = 0;    // typical distance of bases, in scans
    double height = 0;     // typical height of the first peaks, in counts; 0 without bases
};

enum class WellKind { good, failed, saturated };

// The random numbers of a well. Troubles have a source of their own, so that adding one changes nothing else in a read.
struct WellRandom {
    CRandom read, troubles;
};

// The read of a failed well has times, but no bases.
Read MakeRead(const Options& options, const Troubles& troubles, WellKind kind, double scansPerSecond,
              WellRandom& random);

}  // namespace samplegen
