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

// The level falls over a dozen bases, to a `drop`th.
double DropFactor(const Troubles& troubles, int bases, double n) {
    constexpr double length = 12;
    const int at = troubles.dropAt > 0 ? troubles.dropAt : bases / 2;
    return 1 + (1 / troubles.drop - 1) * std::clamp((n - at) / length + 0.5, 0.0, 1.0);
}

// Long fragments are few.
double LevelAt(const Troubles& troubles, int bases, double n) {
    return Exp(-n / troubles.decay) * DropFactor(troubles, bases, n);
}

double HeightFactor(const Troubles& troubles, char before, char base, CRandom& random) {
    return troubles.heights == "real" ? RealHeight(before, base, random) : PlainHeight(before, base, random);
}

// A read in the making.
class CReadMaker {
  public:
    CReadMaker(const Options& someOptions, const Troubles& someTroubles, const Well& itsWell, Read& itsRead)
        : options(someOptions), troubles(someTroubles), well(itsWell), read(itsRead) {}

    // Adds the base of that number, counted from 0, whose fragments of all dyes come round `scan`.
    void AddBase(std::size_t i, char before, char base, char second, double scan, CRandom& random) {
        const auto n = static_cast<double>(i);
        const double spacing = SpacingAt(well, troubles, n);
        const double jitter = 0.05 * random.Normal();
        const double level = LevelAt(troubles, options.bases, n);
        const double factor = HeightFactor(troubles, before, base, random);
        const auto add = [&](char letter, double part) {
            Peak peak;
            peak.dye = static_cast<int>(options.baseOrder.find(letter));
            const Dye& dye = Dyes()[static_cast<std::size_t>(peak.dye)];
            peak.scan = scan + spacing * (ShiftOf(letter, dye, troubles, n) + jitter);
            peak.height = well.height * dye.brightness * level * factor * part;
            peak.sigma = spacing * RelativeWidth(troubles.widening, n);
            read.peaks.push_back(peak);
        };
        add(base, second == ' ' ? 1 : 1 - troubles.mixedPart);
        if (second != ' ') add(second, troubles.mixedPart);
        read.bases += second == ' ' ? base : AmbiguityCode(base, second);
    }

  private:
    const Options& options;
    const Troubles& troubles;
    const Well& well;
    Read& read;
};

// The template's end is the commonest fragment.
void RaiseLast(Read& read) {
    if (!read.peaks.empty()) read.peaks.back().height *= 2.5;
}

void AddBases(Read& read, const Options& options, const Troubles& troubles, const Well& well, Chance& chance) {
    const std::string letters = DrawBases(options.bases, chance.read);
    const std::string second = DrawSecondLetters(letters, troubles, chance.troubles);
    const auto end = static_cast<std::size_t>(troubles.endAt > 0 ? troubles.endAt : options.bases);
    CReadMaker maker(options, troubles, well, read);
    double scan = well.start;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const char before = i == 0 ? ' ' : letters[i - 1];
        if (i < end) maker.AddBase(i, before, letters[i], second[i], scan, chance.read);
        read.lastScan = scan;
        scan += SpacingAt(well, troubles, static_cast<double>(i));
    }
    if (end < letters.size()) RaiseLast(read);
}

}  // namespace

Read MakeRead(const Options& options, const Troubles& troubles, WellKind kind, double scansPerSecond, Chance& chance) {
    const Well well = DrawWell(kind, scansPerSecond, chance.read);
    Read read;
    read.firstScan = well.start;
    read.spacing = troubles.realSpacing > 0 ? SpacingAt(well, troubles, 75) : well.spacing;
    read.height = well.height;
    AddBases(read, options, troubles, well, chance);
    if (kind == WellKind::failed) {
        read.bases.clear();
        read.peaks.clear();
        read.height = 0;
    }
    AddArtefacts(read, troubles, chance.troubles);
    return read;
}

}  // namespace samplegen
