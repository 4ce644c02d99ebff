#include "lanecall/Caller.h"

#include <algorithm>
#include <utility>

#include "lanecall/Baseline.h"
#include "lanecall/Levels.h"
#include "lanecall/PeakWidth.h"
#include "lanecall/RawTrace.h"
#include "lanecall/Separation.h"
#include "lanecall/SeparationEstimate.h"
#include "lanecall/Sharpen.h"
#include "lanecall/SignalRange.h"

namespace lanecall {

namespace {

constexpr int fewestScans = 200;
constexpr std::size_t fewestBases = 10;
constexpr int baselineWindow = 300;
constexpr double bendSmoothing = 1.5;
constexpr double shortestShare = 0.5, longestShare = 1.8;  // of a first estimate of the spacing

}  // namespace

void CCaller::TakeTrace(const double* const* arrays, int channels, int scans, const char* baseOrder) {
    for (std::size_t c = 0; c < channelCount && baseOrder && baseOrder[c] != '\0'; ++c)
        letters[c] = baseOrder[c];
    if (!arrays || channels < channelCount || scans <= 0) return;
    for (int c = 0; c < channelCount; ++c)
        if (!arrays[c]) return;
    curves = TakeCurves(arrays, scans);
}

void CCaller::TakeRange(int first, int last) {
    wanted = ScanRange{first, last == INT32_MAX ? last : last + 1};
}

void CCaller::TakeMatrix(const float* const* rows) {
    given = Identity();
    if (!rows) return;
    for (std::size_t r = 0; r < 4; ++r) {
        if (!rows[r]) {
            given = Identity();
            return;
        }
        std::copy_n(rows[r], 4, given[r].begin());
    }
}

bool CCaller::Fail(std::string text) {
    problem = std::move(text);
    return false;
}

bool CCaller::Run(int procedure) {
    if (procedure != done)
        return Fail("Procedure " + std::to_string(procedure) + " was asked for when " + std::to_string(done) +
                    " was due");
    using Step = bool (CCaller::*)();
    static constexpr std::array<Step, procedureCount> steps = {&CCaller::Prepare, &CCaller::SeparateDyes,
                                                               &CCaller::Measure, &CCaller::SharpenPeaks,
                                                               &CCaller::Align,   &CCaller::CallRead};
    if (procedure >= procedureCount) return Fail("There is no procedure " + std::to_string(procedure));
    const Step step = steps[static_cast<std::size_t>(procedure)];
    const bool ok = (this->*step)();
    if (ok) ++done;
    return ok;
}

bool CCaller::Prepare() {
    constexpr double mostSaturated = 0.25;
    const int scans = ScanCount(curves);
    if (scans < fewestScans)
        return Fail("The trace is too short: " + std::to_string(scans) + " scans, " + std::to_string(fewestScans) +
                    " are needed");
    const Curves raw = curves;
    for (Curve& curve : curves)
        RemoveBaseline(curve, baselineWindow);
    range = FindSignal(curves);
    if (wanted) {
        const ScanRange cut{std::max(range.first, wanted->first), std::min(range.end, wanted->end)};
        if (cut.Length() >= fewestScans) range = cut;
    }
    if (range.Length() == 0) return Fail("No signal: no peaks stand out from the noise in any channel");
    if (range.Length() < fewestScans)
        return Fail("The signal is too short: " + std::to_string(range.Length()) + " scans");
    const double saturated = SaturatedShare(raw, range);
    if (saturated > mostSaturated)
        return Fail("The detector is saturated in " + std::to_string(static_cast<int>(100 * saturated)) +
                    " percent of the signal");
    return true;
}

std::optional<std::array<std::size_t, channelCount>> CCaller::BaseIndices() const {
    const std::string order = "ACTG";
    std::array<std::size_t, channelCount> indices{};
    std::array<bool, channelCount> seen{};
    for (std::size_t c = 0; c < channelCount; ++c) {
        const std::size_t index = order.find(letters[c]);
        if (index == std::string::npos || seen[index]) return std::nullopt;
        seen[index] = true;
        indices[c] = index;
    }
    return indices;
}

bool CCaller::SeparateDyes() {
    const auto indices = BaseIndices();
    Curves bends = Bend(curves, range, bendSmoothing);
    impulses = FindImpulses(bends, range);
    Matrix matrix = Identity();
    if (indices && !IsIdentity(given)) {
        for (std::size_t r = 0; r < channelCount; ++r)
            for (std::size_t c = 0; c < channelCount; ++c)
                matrix[r][c] = given[(*indices)[r]][(*indices)[c]];
    } else {
        matrix = EstimateSeparation(bends, impulses);
    }
    const auto inverse = Invert(matrix);
    if (!inverse) return Fail("The spectral separation matrix cannot be inverted");
    Separate(curves, *inverse);
    Separate(bends, *inverse);
    impulses = FindImpulses(bends, range);
    if (indices) {
        matrixUsed = Identity();
        for (std::size_t r = 0; r < channelCount; ++r)
            for (std::size_t c = 0; c < channelCount; ++c)
                (*matrixUsed)[(*indices)[r]][(*indices)[c]] = matrix[r][c];
    }
    for (std::size_t c = 0; c < channelCount; ++c)
        rawNoise[c] = NoiseOf(curves[c], range);
    MeasureZones(notes, curves, range, 10);
    return true;
}

bool CCaller::Measure() {
    constexpr double smoothingShare = 0.2;  // of the spacing: less leaves noise, more joins neighbours
    const Spacing rough = EstimateSpacing(impulses, range);
    if (!rough.found) return Fail("No bases: the signal shows too few peaks to find their spacing");
    const double usual = rough.scans.At(0.5 * (range.first + range.end));
    impulses = FindImpulses(Bend(curves, range, std::max(bendSmoothing, smoothingShare * usual)), range);
    spacing = EstimateSpacing(impulses, range, shortestShare * usual, longestShare * usual);
    if (!spacing.found) spacing = rough;
    const LevelTracks levels = EstimateLevels(curves, impulses, range);
    for (std::size_t c = 0; c < channelCount; ++c) {
        noise[c] = levels[c];
        for (std::size_t k = 0; k < noise[c].Size(); ++k)
            noise[c][k] = rawNoise[c] / levels[c][k];
    }
    DivideByLevels(curves, levels);
    widths = EstimateWidth(curves, impulses, spacing);
    return true;
}

bool CCaller::SharpenPeaks() {
    for (std::size_t c = 0; c < channelCount; ++c)
        sharp[c] = Sharpen(curves[c], range, widths, spacing.scans, noise[c]);
    return true;
}

bool CCaller::Align() {
    impulses = FindImpulses(sharp, range);
    const double usual = spacing.scans.At(0.5 * (range.first + range.end));
    const Spacing fine = EstimateSpacing(impulses, range, shortestShare * usual, longestShare * usual);
    if (fine.found) spacing = fine;
    const ShiftTracks shifts = EstimateMobility(impulses, spacing);
    ShiftCurves(curves, range, shifts);
    ShiftCurves(sharp, range, shifts);
    return true;
}

bool CCaller::CallRead() {
    constexpr int measureStep = 200;
    calls = CallBases(sharp, range, spacing.scans);
    if (calls.size() < fewestBases) return Fail("The read is too short: " + std::to_string(calls.size()) + " bases");
    CentreCalls(calls, sharp);
    qualities = JudgeCalls(calls, sharp);
    good = FindGoodRegion(qualities);
    if (good.last - good.first + 1 < static_cast<int>(fewestBases))
        return Fail("No readable sequence: nowhere do " + std::to_string(fewestBases) +
                    " bases in a row stand out clearly and evenly");
    MeasureSpacing(notes, range, widths, spacing.scans, measureStep);
    MeasureSeparation(notes, calls, curves);
    return true;
}

}  // namespace lanecall
