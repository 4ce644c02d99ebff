// SPDX-License-Identifier: MIT
// CConversation: the called bases and the matrix.
#include <lanewright/basecaller.h>
#include <algorithm>
#include <span>

#include "plugins/Conversation.h"

namespace {

constexpr double percent = 100.0;
constexpr std::int32_t maxPeaks = 256;  // of one base

// The peaks to copy. With a count that no base can have, only the first peak is trusted to exist; it gives the
// position.
std::span<const PeakRecord> UsablePeaks(const BaseRecord& record) {
    if (!record.peaks || record.peakCount < 1) return {};
    return {record.peaks, record.peakCount > maxPeaks ? 1 : static_cast<std::size_t>(record.peakCount)};
}

// Keeps the region inside the list of bases, as its users expect. Without bases it stays as reported.
void SetGoodRegion(CCalledBases& bases, std::int32_t first, std::int32_t last) {
    if (bases.Count() == 0) {
        bases.goodStart = first;
        bases.goodLength =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(last) - static_cast<std::uint32_t>(first));
        return;
    }
    bases.goodStart = std::clamp(first, 0, bases.Count());
    const std::int64_t length = std::int64_t{last} - first;
    bases.goodLength = static_cast<std::int32_t>(std::clamp<std::int64_t>(length, 0, bases.Count() - bases.goodStart));
}

}  // namespace

bool CConversation::TakeBases(CCalledBases& bases) {
    std::int32_t count = 0, firstGood = 0, lastGood = 0;
    float overall = 0;
    const BaseRecord* records = library.reportSequence(0, &count, &firstGood, &lastGood, &overall);
    if (count > 0 && !records) return Fail("The library reports " + std::to_string(count) + " bases and shows none");
    count = std::max(count, 0);
    if (firstGood < 0) {
        firstGood = 0;
        lastGood = count - 1;
    }
    bases.RemoveAll();
    for (std::int32_t i = 0; i < count; ++i) {
        BaseRecord record = records[i];
        const auto peaks = UsablePeaks(record);
        // Bases after the end of the trace are dropped.
        if (!peaks.empty() && static_cast<double>(peaks.front().position) > end) {
            lastGood = std::min(lastGood, i - 1);
            break;
        }
        if (i == maxBases)
            return Fail("The library reports " + std::to_string(count) + " bases; a sample has " +
                        std::to_string(maxBases) + " at the most");
        record.quality = static_cast<float>(record.quality * percent);
        bases.Append(CCalledBase(record, peaks));
    }
    SetGoodRegion(bases, firstGood, lastGood);
    bases.qualityIndex = static_cast<float>(overall * percent);
    return true;
}

void CConversation::TakeMatrix(std::optional<Matrix4>& matrix) {
    const float* const* rows = library.reportMatrixUsed(0);
    matrix.reset();
    // A matrix that lacks a row is of no use.
    if (!rows || std::any_of(rows, rows + 4, [](const float* row) { return !row; })) return;
    matrix.emplace();
    for (std::size_t r = 0; r < matrix->size(); ++r)
        std::copy_n(rows[r], (*matrix)[r].size(), (*matrix)[r].begin());
}
