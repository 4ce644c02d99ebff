// CSampleFile: the good region that follows from the user's settings.
//
// It takes effect when allowUserGoodRegion is set, which only section "General" does, and so not in the program as main
// starts it (see config/GeneralSettings.cpp).
#include <algorithm>
#include <optional>

#include "config/RunSettings.h"
#include "run/Plate.h"

namespace {

// A run of bases under way. `start` is its first good base, -1 until there is one.
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

// Of regions with as many good bases the first stays.
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
        // The window that brought too much junk does not count, and the walk resumes behind the stretch's first base.
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
