// SPDX-License-Identifier: MIT
#include "export/ExportBases.h"

#include <algorithm>
#include <cstddef>

#include "samplestore/SampleFile.h"

namespace {

constexpr std::int32_t hiddenDescriptor = 2;
constexpr std::size_t lettersPerLine = 50;

}  // namespace

std::vector<std::int32_t> ExportBases(const CProcessedTrace& trace, bool goodRegionOnly) {
    const CCalledBases& bases = trace.calledBases;
    const std::int64_t start = goodRegionOnly ? bases.goodStart : 0;
    const std::int64_t length = goodRegionOnly ? bases.goodLength : bases.Count();
    // A damaged sample's good region may lie outside the list.
    const std::int64_t end = std::min<std::int64_t>(start + length, bases.Count());
    std::vector<std::int32_t> list;
    for (auto index = static_cast<std::int32_t>(std::max<std::int64_t>(start, 0)); index < end; ++index)
        if (bases.GetDescriptor(index) != hiddenDescriptor) list.push_back(index);
    return list;
}

std::string SequenceLines(const CSampleFile& sample, const CProcessedTrace& trace,
                          const std::vector<std::int32_t>& bases, std::string_view lineEnd) {
    std::string lines;
    lines.reserve(bases.size() + (bases.size() / lettersPerLine + 1) * lineEnd.size());
    std::size_t letters = 0;
    for (const std::int32_t index : bases) {
        lines += sample.ExportLetter(trace, index);
        if (++letters % lettersPerLine == 0) lines += lineEnd;
    }
    return lines += lineEnd;
}

char CSampleFile::ExportLetter(const CProcessedTrace& trace, std::int32_t index) const {
    return trace.calledBases.GetLetter(index);
}
