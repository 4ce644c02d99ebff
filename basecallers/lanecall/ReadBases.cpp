// SPDX-License-Identifier: MIT
#include "lanecall/ReadBases.h"

#include <string>
#include <utility>

#include "lanecall/Spacing.h"
#include "lanecall/Unreadable.h"

namespace lanecall {

namespace {

constexpr int minBases = 10;  // in the good region
// Of the calls. Measured: reads of random peaks have good regions of 1.4 to 2.4 % by chance.
constexpr double minShare = 0.024;

// Removes calls before and after the read, where there was nothing to call.
void CutEnds(std::vector<Call>& calls, std::vector<double>& qualities) {
    constexpr double guess = 0.35;  // quality a little above chance; a random letter is right with 0.25
    const BaseRange kept = BestStretch(qualities, guess);
    if (kept.Count() == 0) return;
    calls.erase(calls.begin() + kept.end, calls.end());
    calls.erase(calls.begin(), calls.begin() + kept.first);
    qualities.erase(qualities.begin() + kept.end, qualities.end());
    qualities.erase(qualities.begin(), qualities.begin() + kept.first);
}

}  // namespace

MeasuredCalls CallAndMeasure(const Aligned& aligned) {
    MeasuredCalls measured;
    measured.calls = CallBases(aligned.sharp, aligned.range, aligned.spacing.scans);
    CentreCalls(measured.calls, aligned.sharp, aligned.range);
    measured.features = MeasureCalls(measured.calls, {aligned.curves, aligned.sharp, aligned.widths, aligned.noise});
    return measured;
}

CalledRead ReadBases(Aligned aligned) {
    MeasuredCalls measured = CallAndMeasure(aligned);
    std::vector<double> qualities = JudgeCalls(measured.features);
    CutEnds(measured.calls, qualities);
    const GoodRegion good = FindGoodRegion(qualities);
    const int trusted = good.last - good.first + 1;
    if (trusted < minBases)
        throw CUnreadable("No readable sequence: nowhere can " + std::to_string(minBases) +
                          " bases in a row be trusted");
    if (trusted < minShare * static_cast<double>(qualities.size()))
        throw CUnreadable("No readable sequence: of " + std::to_string(qualities.size()) + " bases only " +
                          std::to_string(trusted) + " in a row can be trusted");
    return {std::move(aligned.curves),
            aligned.range,
            std::move(measured.calls),
            std::move(qualities),
            good,
            std::move(aligned.widths),
            std::move(aligned.spacing.scans)};
}

}  // namespace lanecall
