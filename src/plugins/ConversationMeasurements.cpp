// SPDX-License-Identifier: MIT
// CConversation: the signal range and the annotation.
#include <utility>
#include <vector>

#include "plugins/Conversation.h"

namespace {

// The number of entries to copy: 0 if an array is missing or no run can have that many. A count below 1 is kept as
// reported.
std::int32_t UsableCount(std::int32_t count, bool hasArrays) {
    return count > 0 && (!hasArrays || count > maxBases) ? 0 : count;
}

template <class T>
void CopyEntries(std::vector<T>& to, const T* from, std::int32_t count) {
    to.clear();
    if (count > 0) to.assign(from, from + count);
}

// Every `stride`-th value from `first` on, one per zone.
void CopyColumn(std::vector<std::int32_t>& to, const std::int32_t* from, std::int32_t zones, std::int32_t first,
                std::int32_t stride) {
    to.clear();
    for (std::int32_t zone = 0; zone < zones; ++zone)
        to.push_back(from[zone * stride + first]);
}

}  // namespace

void CConversation::TakeMeasurements(CAnalysisInfo& analysis) {
    if (library.reportSignalRange) {
        std::int32_t first = 0, last = 0;
        library.reportSignalRange(0, &first, &last);
        analysis.startSignal = first;
        analysis.endSignal = last;
    }
    if (!annotation) return;
    if (library.reportSignalToNoise) TakeSignalToNoise(analysis);
    if (library.reportSpacing) TakeSpacing(analysis);
    if (library.reportCurrentFixes) analysis.currentFixAreas = library.reportCurrentFixes(0);
    TakeSeparation(analysis);
    if (library.reportTrueRange) {
        std::int32_t first = 0, last = 0;  // a library may leave them unset
        library.reportTrueRange(0, &first, &last);
        analysis.startRawData = first;
        analysis.endRawData = last;
    }
}

void CConversation::TakeSignalToNoise(CAnalysisInfo& analysis) {
    std::int32_t* zones = nullptr;   // start and end of each
    std::int32_t* values = nullptr;  // signal and noise of channels 1 to 4 in each
    const std::int32_t reported = library.reportSignalToNoise(0, &zones, &values);
    const std::int32_t count = UsableCount(reported, zones && values);
    analysis.snZoneCount = count;
    CopyColumn(analysis.snZoneStarts, zones, count, 0, 2);
    CopyColumn(analysis.snZoneEnds, zones, count, 1, 2);
    for (std::int32_t k = 0; k < channelCount; ++k) {
        const auto channel = static_cast<std::size_t>(k);
        CopyColumn(analysis.snSignal[channel], values, count, 2 * k, 2 * channelCount);
        CopyColumn(analysis.snNoise[channel], values, count, 2 * k + 1, 2 * channelCount);
    }
}

void CConversation::TakeSpacing(CAnalysisInfo& analysis) {
    float* fwhm = nullptr;
    std::int32_t* gaps = nullptr;
    std::int32_t* positions = nullptr;
    const std::int32_t reported = library.reportSpacing(0, &fwhm, &gaps, &positions);
    const std::int32_t count = UsableCount(reported, fwhm && gaps && positions);
    analysis.spacingCount = count;
    CopyEntries(analysis.spacingFwhm, fwhm, count);
    CopyEntries(analysis.spacingGaps, gaps, count);
    CopyEntries(analysis.spacingPositions, positions, count);
}

void CConversation::TakeSeparation(CAnalysisInfo& analysis) {
    if (library.reportSeparationDepth) analysis.separationDepth = library.reportSeparationDepth(0);
    if (!library.reportSeparationQuality) return;
    float overall = 0;
    std::vector<float> channels(channelCount);
    library.reportSeparationQuality(0, &overall, channels.data());
    analysis.separationQuality = overall;
    analysis.separationQualities = std::move(channels);
}
