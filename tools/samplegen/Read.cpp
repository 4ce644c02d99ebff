#include "samplegen/Read.h"

#include <algorithm>

#include "samplegen/Artefacts.h"
#include "samplegen/DyeShifts.h"
#include "samplegen/Dyes.h"
#include "samplegen/Exp.h"
#include "samplegen/Heights.h"
#include "samplegen/MixedSites.h"
#include "samplegen/SpacingCurve.h"

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

double SpacingAt(const Well& well, const Troubles& troubles, double n) {
    return troubles.realSpacing > 0 ? troubles.realSpacing * RealSpacing(n) : well.spacing * SpacingDrift(n);
}

// Width at base n as a part of the spacing: peaks broaden until they run together.
double RelativeWidth(double widening, double n) {
    return 0.25 + 0.0003 * widening * n;
}

// How late the dye of a letter comes at base n, in bases.
double ShiftOf(char base, const Dye& dye, const Troubles& troubles, double n) {
    if (AreRealShifts(troubles.dyeShifts)) return RealShift(troubles.dyeShifts, base, n);
    return troubles.mobility * dye.shift * 300 / (n + 300);
}

// The base with which a template of so many bases ends.
int EndOf(const Troubles& troubles, int bases) {
    return troubles.endAt > 0 ? std::min(troubles.endAt, bases) : bases;
}

// The level falls over a dozen bases, to a `drop`th.
double DropFactor(const Troubles& troubles, int bases, double n) {
    constexpr double length = 12;
    const int at = troubles.dropAt > 0 ? troubles.dropAt : EndOf(troubles, bases) / 2;
    return 1 + (1 / troubles.drop - 1) * std::clamp((n - at) / length + 0.5, 0.0, 1.0);
}

// Long fragments are few.
double LevelAt(const Troubles& troubles, int bases, double n) {
    return Exp(-n / troubles.decay) * DropFactor(troubles, bases, n);
}

double HeightFactor(const Troubles& troubles, char before, char base, CRandom& random) {
    return troubles.heights == "real" ? RealHeight(before, base, random) : PlainHeight(before, base, random);
}

// One place of the template.
struct Site {
    double n;  // its number, counted from 0
    char base;
    char second;    // the other letter of a mixed site, else ' '
    double scan;    // where it comes, but for shifts between dyes
    double jitter;  // how far it strays from there, in bases
    double level;   // of the read here, where the first bases have 1
    double factor;  // of its height, by chance and by the base before
};

void AddLetter(Read& read, const Options& options, const Troubles& troubles, const Well& well, const Site& site,
               char letter, double part) {
    const double spacing = SpacingAt(well, troubles, site.n);
    Peak peak;
    peak.dye = static_cast<int>(options.baseOrder.find(letter));
    const Dye& dye = Dyes()[static_cast<std::size_t>(peak.dye)];
    peak.scan = site.scan + spacing * (ShiftOf(letter, dye, troubles, site.n) + site.jitter);
    peak.height = well.height * dye.brightness * site.level * site.factor * part;
    peak.sigma = spacing * RelativeWidth(troubles.widening, site.n);
    read.peaks.push_back(peak);
}

void AddSite(Read& read, const Options& options, const Troubles& troubles, const Well& well, const Site& site) {
    const bool isMixed = site.second != ' ';
    AddLetter(read, options, troubles, well, site, site.base, isMixed ? 1 - troubles.mixedPart : 1);
    if (isMixed) AddLetter(read, options, troubles, well, site, site.second, troubles.mixedPart);
    read.bases += isMixed ? AmbiguityCode(site.base, site.second) : site.base;
}

// The sites after the end of the template are drawn too, so that an early end changes nothing else.
void AddSites(Read& read, const Options& options, const Troubles& troubles, const Well& well, Chance& chance) {
    const std::string letters = DrawBases(options.bases, chance.read);
    const std::string second = DrawSecondLetters(letters, troubles, chance.troubles);
    const auto end = static_cast<std::size_t>(EndOf(troubles, options.bases));
    Site site{};
    site.scan = well.start;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        site.n = static_cast<double>(i);
        site.base = letters[i];
        site.second = second[i];
        site.jitter = 0.05 * chance.read.Normal();
        site.level = LevelAt(troubles, options.bases, site.n);
        site.factor = HeightFactor(troubles, i == 0 ? ' ' : letters[i - 1], site.base, chance.read);
        if (i < end) AddSite(read, options, troubles, well, site);
        read.lastScan = site.scan;
        site.scan += SpacingAt(well, troubles, site.n);
    }
    // The whole template is the commonest fragment.
    constexpr double wholeTemplate = 2.5;
    if (end < letters.size()) read.peaks.back().height *= wholeTemplate;
}

}  // namespace

Read MakeRead(const Options& options, const Troubles& troubles, WellKind kind, double scansPerSecond, Chance& chance) {
    const Well well = DrawWell(kind, scansPerSecond, chance.read);
    Read read;
    read.firstScan = well.start;
    read.spacing = troubles.realSpacing > 0 ? SpacingAt(well, troubles, 75) : well.spacing;
    read.height = well.height;
    AddSites(read, options, troubles, well, chance);
    if (kind == WellKind::failed) {
        read.bases.clear();
        read.peaks.clear();
        read.height = 0;
    }
    AddArtefacts(read, troubles, chance.troubles);
    return read;
}

}  // namespace samplegen
