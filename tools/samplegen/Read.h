// The bases of a well, and where and how high each of them shows.
#pragma once

#include <string>
#include <vector>

#include "samplegen/Options.h"
#include "samplegen/Random.h"

namespace samplegen {

struct Peak {
    int dye = 0;        // index, see Dyes.h
    double scan = 0;    // of its top
    double height = 0;  // counts
    double sigma = 0;   // standard deviation of its Gaussian, in scans
};

struct Read {
    std::string bases;
    std::vector<Peak> peaks;  // one a base
    double firstScan = 0;     // where the read begins, before mobility shifts
    double lastScan = 0;      // and where it ends
    double spacing = 0;       // scans between bases, on the whole
    double height = 0;        // counts of the first peaks, on the whole; 0 without bases
};

enum class WellKind { good, failed, saturated };

// A failed well has the times of a read, but no bases.
Read MakeRead(const Options& options, WellKind kind, double scansPerSecond, CRandom& random);

}  // namespace samplegen
