// SPDX-License-Identifier: MIT
// CSampleFile: finding the good region by the user's quality settings.
//
// Used only when allowUserGoodRegion is set, which only section "General" can do, so the program that main starts never
// uses it (see config/GeneralSettings.cpp).
#include <algorithm>

#include "config/RunSettings.h"
#include "run/Plate.h"
#include "samplestore/CalledBases.h"
#include "samplestore/CapTrace.h"
#include "samplestore/SampleFile.h"

namespace {

// The run of bases being counted. `start` is its first good base, -1 until there is one.
struct Stretch {
    std::int32_t start = -1;
    std::int32_t good = 0, bad = 0;
    std::int32_t seen = 0;

    void Add(std::int32_t base, bool isGood) {
        if (isGood && start == -1) start = base;
        ++(isGood ? good : bad);
        ++seen;
    }
    std::int64_t JunkPercent() const { return std::int64_t{bad} * 100 / (std::int64_t{good} + bad); }
};

struct Region {
    std::int32_t start = 0, end = 0;
    std::int32_t good = 0;
};

// Among regions with equally many good bases the first one wins.
void Prefer(Region& best, const Region& candidate) {
    if (candidate.good > best.good) best = candidate;
}

Region BestRegion(const CCalledBases& bases, const CRunSettings& settings) {
    const std::int32_t window = std::max(settings.qualityWindow, 1);
    const std::int32_t lastBase = bases.Count() - 1;
    Region best;
    Stretch stretch;
    for (std::int32_t i = 0; i < lastBase; ++i) {
        stretch.Add(i, bases.GetQuality(i) >= settings.userQualityCutoff);
        const bool isChecked = stretch.seen % window == 0 || i == lastBase - 1;
        if (!isChecked || stretch.JunkPercent() <= settings.allowedJunkPercent) continue;
        // The window that exceeded the junk limit is not part of the region. The search resumes after the stretch's
        // first base if that is in this window, else three bases on.
        const std::int32_t end = i - window;
        if (end > stretch.start) Prefer(best, {stretch.start, end, stretch.good});
        i = stretch.start != -1 && stretch.start > end ? stretch.start : i + 2;
        stretch = {};
    }
    if (stretch.good > 0 && lastBase > stretch.start) Prefer(best, {stretch.start, lastBase, stretch.good});
    return best;
}

}  // namespace

void CSampleFile::FindGoodRegion() {
    CProcessedTrace* trace = processedTrace ? processedTrace->Processed() : nullptr;
    if (!trace) return;
    const Region best = BestRegion(trace->calledBases, plate->Settings());
    trace->calledBases.goodStart = best.start;
    trace->calledBases.goodLength = best.end - best.start;
}
