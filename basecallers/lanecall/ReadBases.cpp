// SPDX-License-Identifier: MIT
#include "lanecall/ReadBases.h"

#include <utility>

#include "lanecall/PeakFit.h"
#include "lanecall/Readable.h"
#include "lanecall/Spacing.h"

namespace lanecall {

namespace {

// Removes calls before and after the read, where there was nothing to call.
void CutEnds(MeasuredCalls& measured, std::vector<double>& qualities) {
    constexpr double guess = 0.35;  // quality a little above chance; a random letter is right with 0.25
    const BaseRange kept = BestStretch(qualities, guess);
    if (kept.Count() == 0) return;
    const auto cut = [kept](auto& list) {
        list.erase(list.begin() + kept.end, list.end());
        list.erase(list.begin(), list.begin() + kept.first);
    };
    cut(measured.calls);
    cut(measured.heights);
    cut(measured.features);
    cut(qualities);
}

}  // namespace

MeasuredCalls CallAndMeasure(const Aligned& aligned) {
    MeasuredCalls measured;
    measured.calls = CallBases(aligned.sharp, aligned.range, aligned.spacing.scans);
    CentreCalls(measured.calls, aligned.sharp, aligned.range);
    measured.heights = FitPeaks(aligned.flat, measured.calls, aligned.widths, aligned.filter);
    CorrectLetters(measured.calls, measured.heights);
    measured.features =
        MeasureCalls(measured.calls, {aligned.curves, aligned.sharp, aligned.widths, aligned.noise, measured.heights});
    return measured;
}

CalledRead ReadBases(Aligned aligned) {
    MeasuredCalls measured = CallAndMeasure(aligned);
    std::vector<double> qualities = JudgeCalls(measured.features);
    CutEnds(measured, qualities);
    const GoodRegion good = FindGoodRegion(qualities);
    RequireRead(measured, qualities, good);
    return {std::move(aligned.curves), aligned.range, std::move(measured.calls), std::move(measured.heights),
            std::move(qualities),      good,          std::move(aligned.widths), std::move(aligned.spacing.scans)};
}

}  // namespace lanecall
