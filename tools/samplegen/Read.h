// The bases of a well, and where and how high each of them shows.
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
    double sigma = 0;               // as above
    std::array<double, 4> gains{};  // of the channels
};

struct Read {
    std::string bases;        // with the ambiguity code at a mixed site
    std::vector<Peak> peaks;  // one per base and two at a mixed site; then those of blobs
    std::vector<Spike> spikes;
    double firstScan = 0;  // where the read begins, before mobility shifts
    double lastScan = 0;   // where it ends, or would if its template went on
    double spacing = 0;    // scans between bases, on the whole
    double height = 0;     // counts of the first peaks, on the whole; 0 without bases
};

enum class WellKind { good, failed, saturated };

// The sources of chance of a well. What is new since troubles exist draws from its own, so that a read without them
// stays what it was.
struct Chance {
    CRandom read, troubles;
};

// A failed well has the times of a read, but no bases.
Read MakeRead(const Options& options, const Troubles& troubles, WellKind kind, double scansPerSecond, Chance& chance);

}  // namespace samplegen
