// SPDX-License-Identifier: MIT
#include "samplegen/Read.h"

#include <algorithm>
#include <cstddef>

#include "samplegen/Artefacts.h"
#include "samplegen/DyeShifts.h"
#include "samplegen/Dyes.h"
#include "samplegen/Exp.h"
#include "samplegen/Heights.h"
#include "samplegen/MixedSites.h"
#include "samplegen/SpacingCurve.h"

namespace samplegen {

namespace {

// Properties that differ from well to well.
struct Well {
    double start;    // scan of the first base
    double spacing;  // scans between bases
    double height;   // of the first peaks, in counts
};

// The fragments of the first bases arrive after some 850 seconds.
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

// Spacing at base n relative to the usual one: it grows over the first bases and shrinks slowly afterwards.
double SpacingDrift(double n) {
    return 0.88 + 0.24 * n / (n + 120) - 0.00015 * n;
}

double SpacingAt(const Well& well, const Troubles& troubles, double n) {
    return troubles.realSpacing > 0 ? troubles.realSpacing * RealSpacing(n) : well.spacing * SpacingDrift(n);
}

// Standard deviation of a peak at base n, in spacings: peaks become broader until they merge.
double RelativeWidth(double widening, double n) {
    return 0.25 + 0.0003 * widening * n;
}

// The shift of a letter's peak at base n, in bases; above 0 it comes later.
double ShiftOf(char base, const Dye& dye, const Troubles& troubles, double n) {
    if (AreRealShifts(troubles.dyeShifts)) return RealShift(troubles.dyeShifts, base, n);
    return troubles.mobility * dye.shift * 300 / (n + 300);
}

// How many of the bases the template has.
int EndOf(const Troubles& troubles, int bases) {
    return troubles.endAt > 0 ? std::min(troubles.endAt, bases) : bases;
}

// The level around the drop: it falls over a dozen bases from 1 to 1 / drop.
double DropFactor(const Troubles& troubles, int bases, double n) {
    constexpr double length = 12;
    const int at = troubles.dropAt > 0 ? troubles.dropAt : EndOf(troubles, bases) / 2;
    return 1 + (1 / troubles.drop - 1) * std::clamp((n - at) / length + 0.5, 0.0, 1.0);
}

// The level at base n, 1 at the first: long fragments are rarer than short ones.
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
    double scan;    // its place without jitter and without the shift of its dye
    double jitter;  // random deviation from this place, in bases
    double level;   // of the read at this site; 1 at the first base
    double factor;  // of the height: random, and depending on the base before
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

// Random numbers are drawn for the sites after the end of the template too, so that an early end changes nothing else.
void AddSites(Read& read, const Options& options, const Troubles& troubles, const Well& well, WellRandom& random) {
    const std::string letters = DrawBases(options.bases, random.read);
    const std::string second = DrawSecondLetters(letters, troubles, random.troubles);
    const auto end = static_cast<std::size_t>(EndOf(troubles, options.bases));
    Site site{};
    site.scan = well.start;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        site.n = static_cast<double>(i);
        site.base = letters[i];
        site.second = second[i];
        site.jitter = 0.05 * random.read.Normal();
        site.level = LevelAt(troubles, options.bases, site.n);
        site.factor = HeightFactor(troubles, i == 0 ? ' ' : letters[i - 1], site.base, random.read);
        if (i < end) AddSite(read, options, troubles, well, site);
        read.lastScan = site.scan;
        site.scan += SpacingAt(well, troubles, site.n);
    }
    // Of all fragments, most have the length of the whole template.
    constexpr double wholeTemplate = 2.5;
    if (end < letters.size()) read.peaks.back().height *= wholeTemplate;
}

}  // namespace

Read MakeRead(const Options& options, const Troubles& troubles, WellKind kind, double scansPerSecond,
              WellRandom& random) {
    const Well well = DrawWell(kind, scansPerSecond, random.read);
    Read read;
    read.firstScan = well.start;
    read.spacing = troubles.realSpacing > 0 ? SpacingAt(well, troubles, 75) : well.spacing;
    read.height = well.height;
    AddSites(read, options, troubles, well, random);
    if (kind == WellKind::failed) {
        read.bases.clear();
        read.peaks.clear();
        read.height = 0;
    }
    AddArtefacts(read, troubles, random.troubles);
    return read;
}

}  // namespace samplegen
