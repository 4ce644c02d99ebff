// SPDX-License-Identifier: MIT
#include "lanetools/export/MakeRead.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "lanetools/export/Adapter.h"
#include "lanetools/export/Iupac.h"
#include "lanetools/export/Trimming.h"
#include "lanetools/samples/CallFigures.h"
#include "lanetools/samples/HiddenBase.h"
#include "lanetools/samples/MixedPlaces.h"
#include "lanetools/samples/Phred.h"
#include "lanetools/samples/Stretch.h"
#include "samplestore/SampleInfo.h"

namespace lanetools {

namespace {

// The bases that are shown, and the part of them that is the good region.
struct CShownBases {
    std::string letters;
    std::vector<std::size_t> numbers;  // of each among all bases, from 0, ascending
    std::vector<float> percents;
    std::vector<std::int32_t> positions;
    CStretch good;
};

CShownBases ShownBases(const CAnalysisInfo& analysis) {
    CShownBases shown;
    const CStretch good = GoodRegion(analysis);
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(analysis.basesCalled, 0));
    for (std::size_t i = 0; i < count; ++i) {
        if (IsHidden(analysis, i)) continue;
        shown.good.start += i < good.start;
        shown.good.length += i >= good.start && i < good.End();
        shown.letters += IupacLetter(analysis.sequence[i]);
        shown.numbers.push_back(i);
        shown.percents.push_back(analysis.qualityScores[i]);
        shown.positions.push_back(analysis.peakPositions[i]);
    }
    return shown;
}

// The raw scans of the processed trace, which are also those of the program's SCF files.
struct CTraceRange {
    std::int64_t start, length;
};

CTraceRange TraceRange(const CAnalysisInfo& analysis) {
    return {analysis.startTrace, std::max(std::int64_t{analysis.endTrace} - analysis.startTrace, std::int64_t{0})};
}

// A raw scan as a scan of the trace, counted from 0; the nearest one if it is outside of the trace.
std::int32_t PlaceIn(const CTraceRange& trace, std::int32_t rawScan) {
    const std::int64_t last = std::max(trace.length - 1, std::int64_t{0});
    return static_cast<std::int32_t>(
        std::min(std::clamp(rawScan - trace.start, std::int64_t{0}, last), std::int64_t{INT32_MAX}));
}

CStretch Kept(const CShownBases& bases, const CReadRules& rules) {
    const CStretch whole = rules.adapter ? rules.adapter->Cut(bases.letters) : CStretch{0, bases.letters.size()};
    CStretch good = Shared(bases.good, whole);
    good.start -= whole.start;
    CStretch kept = rules.trim(std::span(bases.percents).subspan(whole.start, whole.length), good);
    kept.start += whole.start;
    return kept;
}

void WriteMixed(CShownBases& bases, const CSampleInfo& info, double ratio) {
    const CStretch all{0, static_cast<std::size_t>(std::max<std::int16_t>(info.analysis.basesCalled, 0))};
    for (const CMixedPlace& place : MixedPlaces(info, all, ratio)) {
        const auto at = std::lower_bound(bases.numbers.begin(), bases.numbers.end(), place.base);
        bases.letters[static_cast<std::size_t>(at - bases.numbers.begin())] = place.code;
    }
}

void MaskOutside(std::string& letters, CStretch kept) {
    for (std::size_t i = 0; i < letters.size(); ++i)
        if (i < kept.start || i >= kept.End()) letters[i] = static_cast<char>(letters[i] - 'A' + 'a');
}

}  // namespace

bool MakeRead(const CStoredSample& sample, const CReadRules& rules, CRead& read) {
    CShownBases bases = ShownBases(sample.info.analysis);
    const CTraceRange trace = TraceRange(sample.info.analysis);
    const CStretch kept = Kept(bases, rules);
    if (rules.mixed) WriteMixed(bases, sample.info, *rules.mixed);
    if (rules.mask) MaskOutside(bases.letters, kept);
    const CStretch written = rules.mask ? CStretch{0, bases.letters.size()} : kept;
    read.letters = bases.letters.substr(written.start, written.length);
    for (std::size_t i = written.start; i < written.End(); ++i) {
        const auto rounded = static_cast<unsigned>(std::floor(Phred(bases.percents[i]) + 0.5));
        read.phreds.push_back(static_cast<std::uint8_t>(std::min(rounded, rules.cap)));
        read.positions.push_back(PlaceIn(trace, bases.positions[i]));
    }
    read.runStart = sample.info.runStart;
    read.scans = trace.length;
    return !read.letters.empty() && kept.length >= rules.minLength;
}

}  // namespace lanetools
