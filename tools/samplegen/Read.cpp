#include "samplegen/Read.h"

#include <algorithm>

#include "samplegen/Dyes.h"
#include "samplegen/Exp.h"

namespace samplegen {

namespace {

// What differs from well to well.
struct Well {
    double start;    // scan of the first base
    double spacing;  // scans between bases
    double height;   // counts of the first peaks
};

// Fragments of the first bases come somewhat after 800 seconds.
Well DrawWell(WellKind kind, double scansPerSecond, CRandom& random) {
    Well well{};
    well.start = scansPerSecond * random.Between(835, 865);
    well.spacing = scansPerSecond * random.Between(3.4, 3.8);
    well.height = random.Between(1800, 3200);
    if (kind == WellKind::saturated) well.height *= 20;
    return well;
}

std::string DrawBases(int count, CRandom& random) {
    std::string bases(static_cast<std::size_t>(count), ' ');
    for (char& base : bases)
        base = "ACGT"[random.Below(4)];
    return bases;
}

// Spacing at base n as a part of the usual: it grows over the first bases and shrinks slowly later on.
double SpacingDrift(double n) {
    return 0.88 + 0.24 * n / (n + 120) - 0.00015 * n;
}

// Width at base n as a part of the spacing: peaks broaden until they run together.
double RelativeWidth(double n) {
    return 0.25 + 0.0003 * n;
}

// Long fragments are few.
double Decay(double n) {
    return Exp(-n / 450);
}

// What the neighbourhood does to a height: chance mostly, and a G behind an A is weak.
double HeightFactor(char before, char base, CRandom& random) {
    const double chance = std::max(0.35, 1 + 0.2 * random.Normal());
    return before == 'A' && base == 'G' ? 0.6 * chance : chance;
}

}  // namespace

Read MakeRead(const Options& options, WellKind kind, double scansPerSecond, CRandom& random) {
    const Well well = DrawWell(kind, scansPerSecond, random);
    Read read;
    read.firstScan = well.start;
    read.spacing = well.spacing;
    read.height = well.height;
    read.bases = DrawBases(options.bases, random);
    double scan = well.start;
    char before = ' ';
    for (std::size_t i = 0; i < read.bases.size(); ++i) {
        const char base = read.bases[i];
        const auto n = static_cast<double>(i);
        const double spacing = well.spacing * SpacingDrift(n);
        Peak peak;
        peak.dye = static_cast<int>(options.baseOrder.find(base));
        const Dye& dye = Dyes()[static_cast<std::size_t>(peak.dye)];
        const double shift = options.mobility * dye.shift * 300 / (n + 300);
        const double jitter = 0.05 * random.Normal();
        peak.scan = scan + spacing * (shift + jitter);
        peak.height = well.height * dye.brightness * Decay(n) * HeightFactor(before, base, random);
        peak.sigma = spacing * RelativeWidth(n);
        read.peaks.push_back(peak);
        read.lastScan = scan;
        scan += spacing;
        before = base;
    }
    if (kind == WellKind::failed) {
        read.bases.clear();
        read.peaks.clear();
        read.height = 0;
    }
    return read;
}

}  // namespace samplegen
