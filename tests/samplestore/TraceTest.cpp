// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "SampleFixture.h"
#include "plugins/BaseCaller.h"
#include "samplestore/CapTrace.h"

namespace {

CCalledBase MakeBase(char letter, std::initializer_list<float> positions) {
    std::vector<PeakRecord> peaks;
    for (const float position : positions) {
        peaks.emplace_back();
        peaks.back().position = position;
    }
    BaseRecord record{};
    record.letter = letter;
    record.quality = 12.5f;
    record.descriptor = 2;
    record.strengths[1] = 0.25f;
    return CCalledBase(record, peaks);
}

TEST(Trace, RawWordsAreUnsignedBothWays) {
    CRawTrace trace;
    CAnalysisInfo analysis;
    trace.scanCount = 3;
    trace.BuildFromScans(sampletest::NumberedScans(3), analysis);
    EXPECT_EQ(trace.channels[3][1], 4294967041.0);
    EXPECT_EQ(trace.current[2], 2.0);
    std::vector<ScanRecord> back(3);
    trace.ToScans(back, analysis);
    EXPECT_EQ(back[2].words, sampletest::NumberedScans(3)[2].words);
}

TEST(Trace, AccessorsOutsideTheList) {
    CCalledBases bases;
    EXPECT_EQ(bases.GoodEndScan(), 0);
    bases.Append(MakeBase('A', {10.6f, 99.0f}));
    bases.Append(MakeBase('C', {}));
    bases.Append(MakeBase('G', {30.4f}));
    EXPECT_EQ(bases.GetLetter(3), 'N');
    EXPECT_EQ(bases.GetStrengths(3), (BaseStrengths{1, 1, 1, 1}));
    EXPECT_EQ(bases.GetPosition(1), 0.0f);
    EXPECT_EQ(bases.GoodStartScan(), 11);
    EXPECT_EQ(bases.GoodEndScan(), 11);  // nothing good: base 0
    bases.goodLength = 3;
    EXPECT_EQ(bases.GoodEndScan(), 30);
    bases.goodStart = bases.goodLength = 0x7FFFFFFF;
    EXPECT_EQ(bases.GoodEndScan(), 0);
}

TEST(Trace, ProcessedTraceThereAndBack) {
    CBaseCaller caller;
    caller.name = "caller";
    CProcessedTrace trace;
    trace.SetCallerInfo(&caller);
    trace.SetArrays({{{1.5, 0}, {2.5, 0}, {3.5, 0}, {4.5, 1e6}}}, {7.9, 4e9});
    trace.traceStart = 100.9;
    trace.traceEnd = 102;
    CAnalysisInfo analysis;
    analysis.sequence = "KEPT";
    std::vector<ScanRecord> scans;
    trace.ToScans(scans, analysis);
    EXPECT_EQ(analysis.sequence, "KEPT");
    EXPECT_EQ(analysis.startTrace, 100);
    ASSERT_EQ(scans.size(), 2u);
    EXPECT_EQ(scans[1].Word(0), 4000000000u);
    EXPECT_EQ(scans[0].Float(4), 4.5f);

    trace.calledBases.Append(MakeBase('A', {100.7f, 105.0f}));
    trace.calledBases.Append(MakeBase('T', {}));
    trace.calledBases.goodStart = 1;
    trace.calledBases.goodLength = 1;
    scans.clear();
    trace.ToScans(scans, analysis);
    EXPECT_EQ(analysis.sequence, "AT");
    EXPECT_EQ(analysis.peakPositions, (std::vector<std::int32_t>{100, 0}));
    EXPECT_EQ(analysis.endGood, 1);
    EXPECT_EQ(analysis.startSequence - analysis.endSequence, 100);  // the last base has no position

    CProcessedTrace back;
    back.scanCount = 2;
    back.BuildFromScans(scans, analysis);
    EXPECT_EQ(back.CallerInfo()->name, "caller");
    EXPECT_EQ(back.current[1], 4e9);
    EXPECT_EQ(back.calledBases.goodLength, 1);
    ASSERT_EQ(back.calledBases.GetPeaks(0).size(), 1u);
    const PeakRecord& peak = back.calledBases.GetPeaks(0)[0];
    EXPECT_EQ(peak.position, 100.0f);
    EXPECT_EQ(peak.words0to3[1], 0x3F800000u);
    EXPECT_EQ(peak.words5to9[1], 100u);
}

// More bases than any array holds values for.
TEST(Trace, ShortAnalysisArrays) {
    CAnalysisInfo analysis;
    analysis.basesCalled = 3;
    analysis.sequence = "A";
    analysis.startGood = -0x7FFFFFFF - 1;
    analysis.endGood = 0x7FFFFFFF;
    CProcessedTrace trace;
    trace.BuildFromScans({}, analysis);
    EXPECT_EQ(trace.calledBases.Count(), 3);
    EXPECT_EQ(trace.calledBases.GetLetter(0), 'A');
    EXPECT_EQ(trace.calledBases.GetLetter(2), '\0');
    EXPECT_EQ(trace.calledBases.GetPosition(2), 0.0f);
}

}  // namespace
