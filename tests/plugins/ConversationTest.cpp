// SPDX-License-Identifier: MIT
// The conversation with a library: which calls come in which order, and what becomes of good, odd and hostile answers.
#include <cmath>
#include <limits>

#include "PluginFixture.h"

using Values = std::vector<std::int32_t>;
static constexpr std::int32_t huge = std::numeric_limits<std::int32_t>::max();

TEST_F(PluginTest, OrderArgumentsAndResults) {
    driver.baseCallers->annotationOn = 1;
    analysis.basecallError = "of an earlier library";
    sample.baseOrder = "TGCAN";
    Report({12, 60, 60.5f, 13});
    float row[] = {1, 2, 3, 4}, *rows[] = {row, row, row, row};
    script->rows = rows;
    ASSERT_EQ(Call(), 1);
    EXPECT_EQ(script->calls,
              "GetNumOfProcedures; SetIfAnnotate 1; SetNumSamples 1; SetRawData 4 100 1.76 TGCAN 1000 3099 99; "
              "GetProgramName; SetApproxiamtePeakWidth 0 -1; SetSpecSepMatrix 1 0; ExecuteProcedure 0 0 0; "
              "ExecuteProcedure 0 1 0; ExecuteProcedure 0 2 0; ExecuteProcedure 0 3 0; ExecuteProcedure 0 4 0; "
              "ExecuteProcedure 0 5 0; PeekProcessedTrace; ReportSequence; ReportSpecSeparatnMatrixUsed; "
              "ReportSignalRangeForRawData; ReportSignalToNoise; ReportFWHMSpacing; ReportNumCurrFix; "
              "ReportSpecSepDepth; ReportSpecSepQual; ReportTrueStartStopPoints; CleanUp; ");
    EXPECT_EQ(trace->traceStart, 10);
    EXPECT_EQ(trace->traceEnd, 60);
    ASSERT_EQ(trace->scanCount, 50u);
    EXPECT_EQ(trace->channels[2].back(), 3059);
    EXPECT_EQ(trace->current.front(), 10);
    const CCalledBases& bases = trace->calledBases;
    EXPECT_EQ(bases.Count(), 2);
    EXPECT_EQ(bases.GetPosition(1), 60);
    EXPECT_EQ(bases.GetQuality(1), 25);
    EXPECT_EQ(bases.GetStrengths(1)[3], 4);
    EXPECT_EQ(bases.GetDescriptor(1), 7);
    EXPECT_EQ(bases.qualityIndex, 87.5f);
    EXPECT_EQ(Region(), std::pair(0, 1));
    ASSERT_TRUE(trace->separationMatrix);
    EXPECT_EQ((*trace->separationMatrix)[3][2], 3);
    EXPECT_EQ((Values{analysis.startSignal, analysis.endSignal, analysis.startRawData, analysis.endRawData,
                      analysis.snZoneCount, analysis.spacingCount, analysis.currentFixAreas, analysis.separationDepth}),
              (Values{11, 12, 13, 14, 2, 2, 5, 6}));
    EXPECT_EQ(analysis.snZoneStarts, Values({1, 3}));
    EXPECT_EQ(analysis.snZoneEnds, Values({2, 4}));
    EXPECT_EQ(analysis.snSignal[1], Values({3, 11}));
    EXPECT_EQ(analysis.snNoise[3], Values({8, 16}));
    EXPECT_EQ(analysis.spacingGaps, Values({1, 2}));
    EXPECT_EQ(analysis.spacingPositions, Values({3, 4}));
    EXPECT_EQ(analysis.spacingFwhm, std::vector({1.5f, 2.5f}));
    EXPECT_EQ(analysis.separationQuality, 0.25f);
    EXPECT_EQ(analysis.separationQualities, std::vector(4, 0.25f));
    *script = Script();  // the same sample again, with less to report: nothing is left of the conversation before
    script->measured = -2;
    Report({12, 60, 60});
    EXPECT_EQ(Call(), 1);
    EXPECT_EQ(Region(), std::pair(0, 2));  // none is reported: all bases but the last
    EXPECT_FALSE(trace->separationMatrix);
    EXPECT_TRUE(analysis.basecallError.empty());
    EXPECT_EQ(analysis.snZoneCount, -2);
    EXPECT_TRUE(analysis.snNoise[0].empty());
    EXPECT_TRUE(analysis.spacingFwhm.empty());
    driver.baseCallers->annotationOn = 0;
    EXPECT_EQ(Call(), 1);
    EXPECT_FALSE(Said("SetIfAnnotate"));
    EXPECT_TRUE(Said("ReportSignalRangeForRawData; CleanUp"));
}

TEST_F(PluginTest, SignalRange) {
    script->program = "qxbasecaller";
    for (const char* start : {"1407", "2312", "1407", "2815", "2304"}) {
        EXPECT_TRUE(Call());
        EXPECT_TRUE(Said("GetProgramName; SetSignalRange " + std::string(start) + " 99; "));
        ++sample.info.scanRate;
    }
    EXPECT_TRUE(Call(0, 500));
    EXPECT_TRUE(Said("SetSignalRange 0 99;"));
    script->program = nullptr;
    EXPECT_TRUE(Call(50, 20));
    EXPECT_TRUE(Said("SetSignalRange 20 20;"));
    EXPECT_TRUE(Call(0, 5));
    EXPECT_FALSE(Said("SetSignalRange"));
}

TEST_F(PluginTest, FailuresAndMissingEntryPoints) {
    driver.baseCallers->annotationOn = 1;
    script->failing = 3;
    EXPECT_EQ(Call(), 0);
    EXPECT_TRUE(Said("ExecuteProcedure 0 3 0; ReportProblem 0; CleanUp; "));
    EXPECT_EQ(analysis.basecallError, "no signal");
    Use("bare");
    EXPECT_TRUE(Call());
    EXPECT_TRUE(Said(" 0 0 0; PeekProcessedTrace"));
    EXPECT_TRUE(Said("MatrixUsed; CleanUp"));
    EXPECT_EQ(Call(1), 0);
    EXPECT_TRUE(script->calls.empty());
    script->program = "QXBaseCaller";
    EXPECT_EQ(Call(), 0);
    EXPECT_TRUE(Said("GetProgramName; CleanUp"));
    EXPECT_EQ(analysis.basecallError, "The library lacks the entry point SetSignalRange");
    script->program = nullptr;
    script->failing = 0;
    EXPECT_EQ(Call(), 0);
    EXPECT_EQ(analysis.basecallError, "Not available");
    Use("lacking");
    EXPECT_EQ(Call(), 0);
    EXPECT_TRUE(script->calls.empty());
    EXPECT_EQ(analysis.basecallError, "The library lacks the entry point ReportSequence");
}

TEST_F(PluginTest, NothingCanBeKept) {
    double* noCurves[4] = {};
    for (const int fault : {0, 1, 2, 3}) {
        analysis.basecallError.clear();
        script->curves = fault == 0 ? noCurves : nullptr;
        script->end = fault == 1 ? huge : 60;
        script->count = fault == 2 ? 3 : fault == 3 ? huge : 0;
        EXPECT_EQ(Call(), 0);
        EXPECT_TRUE(Said(" CleanUp; "));
        EXPECT_EQ(trace->scanCount, 0u);
        EXPECT_FALSE(trace->HasChannels());
        EXPECT_NE(std::exchange(analysis.basecallError, "as it was"), "") << fault;
    }
    script->end = script->start - 1;
    EXPECT_EQ(Call(), 0);
    EXPECT_TRUE(Said("PeekProcessedTrace; CleanUp; "));
    EXPECT_EQ(analysis.basecallError, "as it was");
}

TEST_F(PluginTest, WhatCanBeKept) {
    driver.baseCallers->annotationOn = 1;
    std::vector<double> curve(120, -1.5);
    curve[119] = 3;
    double* curves[] = {curve.data(), nullptr, curve.data(), curve.data()};
    float* rows[4] = {};
    script->curves = curves;
    script->start = -5;
    script->end = 120;
    script->rows = rows;
    script->zones = nullptr;
    script->firstGood = 3;
    for (const auto& [lastGood, length] : {std::pair(4, 1), {huge, 2}, {-huge, 0}}) {
        Report({NAN, -INFINITY, 5, 6, 7});
        script->bases[2].peaks = nullptr;
        script->bases[3].peakCount = 0;
        script->bases[4].peakCount = huge;
        script->lastGood = lastGood;
        ASSERT_EQ(Call(), 1);
        const CCalledBases& bases = trace->calledBases;
        EXPECT_TRUE(bases.GetPeaks(2).empty());
        EXPECT_TRUE(bases.GetPeaks(3).empty());
        EXPECT_EQ(bases.GetPeaks(4).size(), 1u);
        EXPECT_EQ(Region(), std::pair(3, length));
    }
    EXPECT_EQ(trace->traceStart, 0);
    ASSERT_EQ(trace->scanCount, 120u);
    EXPECT_EQ(trace->channels[1][119], 0);
    EXPECT_EQ(trace->channels[0][118], 0);
    EXPECT_EQ(trace->channels[3][119], 3);
    EXPECT_EQ(trace->current[119], 99);
    EXPECT_FALSE(trace->separationMatrix);
    EXPECT_EQ(analysis.snZoneCount, 0);
    EXPECT_EQ(analysis.spacingCount, 0);
    Report({INFINITY, 8});
    script->firstGood = 0;
    script->lastGood = 1;
    EXPECT_EQ(Call(), 1);
    EXPECT_EQ(trace->calledBases.Count(), 0);
    EXPECT_EQ(Region(), std::pair(0, -1));
}

TEST_F(PluginTest, GoodRegionOfTheUser) {
    CBaseCallerSet& settings = *driver.baseCallers;
    settings.allowUserGoodRegion = 1;
    settings.userQualityCutoff = 50;
    const auto region = [&](const std::string& qualities, std::int32_t junk, std::int32_t window) {
        Report(std::vector<float>(qualities.size(), 20));
        for (std::size_t i = 0; i < qualities.size(); ++i)
            script->bases[i].quality = static_cast<float>(qualities[i] - '0') / 10;
        settings.allowedJunkPercent = junk;
        settings.qualityWindow = window;
        return Call() ? Region() : std::pair(-1, -1);
    };
    EXPECT_EQ(region("1999999", 100, 20), std::pair(1, 5));
    EXPECT_EQ(region("9", 100, 20), std::pair(0, 0));
    EXPECT_EQ(region("99991111999999", 30, 2), std::pair(8, 5));
    EXPECT_EQ(region("9999999911199999", 20, 2), std::pair(0, 9));
    EXPECT_EQ(region("9999919", 0, 0), std::pair(0, 4));
}

TEST_F(PluginTest, TheExampleOfTheDocumentsCalls) {
    Use("minimal_caller");
    ASSERT_EQ(Call(), 1);
    std::vector<ScanRecord> stored;
    trace->ToScans(stored, analysis);
    EXPECT_EQ(analysis.sequence, "ACTGACTGAC");
    ASSERT_GT(analysis.peakPositions.size(), 3u);
    EXPECT_EQ(analysis.peakPositions[3], 35);
    EXPECT_GT(analysis.qualityScores[3], 95);
}

TEST_F(PluginTest, WhatCountsIsHowManyBasesAreKept) {
    std::vector<float> positions(40000, 60);
    positions[32767] = 61;
    Report(positions);
    ASSERT_EQ(Call(), 1);
    EXPECT_EQ(trace->calledBases.Count(), 32767);
    positions[32767] = 60;
    Report(positions);
    EXPECT_EQ(Call(), 0);
    EXPECT_NE(analysis.basecallError, "");
}
