// SPDX-License-Identifier: MIT
// CProcessedTrace: a sample after base calling.
#include <lanewright/basecaller.h>
#include <algorithm>
#include <bit>
#include <utility>

#include "plugins/BaseCaller.h"
#include "samplestore/CapTrace.h"
#include "samplestore/Truncate.h"

const CRuntimeClass CProcessedTrace::runtimeClass{
    "CProcessedTrace", schemaNone, []() -> std::unique_ptr<CObject> { return std::make_unique<CProcessedTrace>(); },
    &CCapTrace::runtimeClass};

CProcessedTrace::CProcessedTrace() = default;

CProcessedTrace::~CProcessedTrace() = default;

const CRuntimeClass& CProcessedTrace::GetRuntimeClass() const {
    return runtimeClass;
}

void CProcessedTrace::FreeArrays() {
    ReleaseArrays();
    separationMatrix.reset();
    if (ownCaller) SetCallerInfo(nullptr);
    calledBases.RemoveAll();
}

void CProcessedTrace::SetCallerInfo(CBaseCaller* caller) {
    callerInfo = caller;
    ownCaller.reset();
}

void CProcessedTrace::SetArrays(std::array<std::vector<double>, channelCount> newChannels,
                                std::vector<double> newCurrent) {
    kept.reset();
    channels = std::move(newChannels);
    current = std::move(newCurrent);
    scanCount = static_cast<std::uint32_t>(current.size());
    hasChannels = true;
}

namespace {

template <class T>
T ElementOr(const std::vector<T>& values, std::size_t i, const T& missing) {
    return i < values.size() ? values[i] : missing;
}

// The one peak of a stored base. Words 0, 7, 8 and 9 are unused and stay 0.
PeakRecord StoredPeak(std::uint32_t position) {
    const auto asFloat = static_cast<float>(position);
    const auto floatWord = std::bit_cast<std::uint32_t>(asFloat);
    PeakRecord peak{};
    peak.words0to3[1] = std::bit_cast<std::uint32_t>(1.0f);
    peak.words0to3[2] = position;
    peak.words0to3[3] = floatWord;
    peak.position = asFloat;
    peak.words5to9[0] = floatWord;  // word 5
    peak.words5to9[1] = position;   // word 6
    return peak;
}

// A damaged file may hold fewer values than bases.
CCalledBase StoredBase(const CAnalysisInfo& analysis, std::size_t i) {
    const BaseStrengths strengths = ElementOr(analysis.strengths, i, {1.0f, 1.0f, 1.0f, 1.0f});
    PeakRecord peak = StoredPeak(static_cast<std::uint32_t>(ElementOr(analysis.peakPositions, i, 0)));
    BaseRecord record{};
    record.letter = i < analysis.sequence.size() ? analysis.sequence[i] : '\0';
    record.peakCount = 1;
    record.quality = ElementOr(analysis.qualityScores, i, 0.0f);
    record.peaks = &peak;
    std::copy(strengths.begin(), strengths.end(), record.strengths);
    record.descriptor = ElementOr(analysis.descriptors, i, 0);
    return CCalledBase(record, {&peak, 1});
}

std::int32_t Minus(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

}  // namespace

void CProcessedTrace::BuildFromScans(std::span<const ScanRecord> scans, const CAnalysisInfo& analysis) {
    kept.reset();
    Decode(scans);
    TakeAnalysis(analysis);
}

void CProcessedTrace::TakeScans(std::unique_ptr<ScanRecord[]> scans, const CAnalysisInfo& analysis) {
    CCapTrace::TakeScans(std::move(scans), analysis);
    TakeAnalysis(analysis);
}

void CProcessedTrace::Decode(std::span<const ScanRecord> scans) {
    FillFrom(scans, [](std::uint32_t word) { return static_cast<double>(std::bit_cast<float>(word)); });
}

void CProcessedTrace::TakeAnalysis(const CAnalysisInfo& analysis) {
    traceStart = analysis.startTrace;
    traceEnd = analysis.endTrace;

    calledBases.Reserve(analysis.basesCalled);
    for (std::int32_t i = 0; i < analysis.basesCalled; ++i)
        calledBases.Append(StoredBase(analysis, static_cast<std::size_t>(i)));
    calledBases.goodStart = analysis.startGood;
    // endGood - startGood + 1, without overflow for any values in the file
    calledBases.goodLength = Minus(analysis.endGood, Minus(analysis.startGood, 1));
    calledBases.qualityIndex = analysis.qualityIndex;

    if (!callerInfo) {
        ownCaller = std::make_unique<CBaseCaller>();
        callerInfo = ownCaller.get();
    }
    callerInfo->name = analysis.baseCaller;
}

void CProcessedTrace::ToScans(std::vector<ScanRecord>& scans, CAnalysisInfo& analysis) const {
    const std::size_t first = scans.size();
    scans.resize(first + scanCount);
    if (kept) std::copy_n(kept.get(), scanCount, scans.data() + first);
    for (std::size_t i = 0; i < std::min<std::size_t>(scanCount, current.size()); ++i)
        scans[first + i].words[0] = static_cast<std::uint32_t>(TruncateTo32(current[i]));
    for (std::size_t k = 0; k < channelCount; ++k)
        for (std::size_t i = 0; i < std::min<std::size_t>(scanCount, channels[k].size()); ++i)
            scans[first + i].SetFloat(static_cast<int>(k) + 1, static_cast<float>(channels[k][i]));

    if (callerInfo) analysis.baseCaller = callerInfo->name;
    analysis.startTrace = TruncateTo32(traceStart);
    analysis.endTrace = TruncateTo32(traceEnd);
    if (calledBases.Count() == 0) return;

    analysis.basesCalled = static_cast<std::int16_t>(calledBases.Count());
    analysis.startSequence = TruncateTo32(calledBases.All().front().Position());
    analysis.endSequence = TruncateTo32(calledBases.All().back().Position());
    analysis.startGood = calledBases.goodStart;
    analysis.endGood = Minus(calledBases.goodStart, Minus(1, calledBases.goodLength));
    analysis.qualityIndex = calledBases.qualityIndex;
    analysis.sequence.clear();
    analysis.peakPositions.clear();
    analysis.qualityScores.clear();
    analysis.descriptors.clear();
    analysis.strengths.clear();
    for (const CCalledBase& base : calledBases.All()) {
        analysis.sequence += base.Letter();
        analysis.peakPositions.push_back(TruncateTo32(base.Position()));
        analysis.qualityScores.push_back(base.Quality());
        analysis.descriptors.push_back(base.Descriptor());
        analysis.strengths.push_back(base.Strengths());
    }
}
