// SPDX-License-Identifier: MIT
#include "export/TraceExportFixture.h"

class TextDump : public TraceExportTest {
  protected:
    std::string Dump(CTraceFile& holder) {
        CSampleInfo& info = sample->info;
        info.sampleName = std::string("s1\0cut", 6);
        info.comment = "two\nlines";
        info.laserMode = 'B';
        float value = -0.5f;
        for (float* field : {&info.runVoltage, &info.runTime, &info.injectionTime, &info.injectionVoltage,
                             &info.temperature, &info.pmtVoltage1, &info.pmtVoltage2})
            *field = value += 1.0f;
        info.runVoltage = 1234567.0f;
        for (std::size_t k = 0; k < channelCount; ++k)
            info.channelBase[k] = {"TGCA"[k]};
        info.runStop = -1;
        info.laserIndex = -7;
        info.scanCount = 4000000000u;
        info.scanRate = 2;
        info.capillaries = 96;
        info.saturated = true;
        CAnalysisInfo& analysis = info.analysis;
        if (isFull) {
            for (const auto& [field, text] : {std::pair(&info.plateId, "P"),
                                              {&info.chemistryName, "C"},
                                              {&info.chemistryApplication, "D"},
                                              {&info.beamSplitterA, "E"},
                                              {&info.beamSplitterB, "F"},
                                              {&analysis.baseCaller, "G"}})
                *field = text;
            info.instrumentId[0] = 'I', info.runId[0] = 'R', info.operatorName[0] = 'O';
        }
        std::int32_t number = -8;
        for (std::int32_t* field :
             {&analysis.endGood, &analysis.endSequence, &analysis.endTrace, &analysis.endSignal, &analysis.startGood,
              &analysis.startSequence, &analysis.startTrace, &analysis.startSignal})
            *field = number++;
        EXPECT_EQ(sample->ExportText(holder), 1);
        return temp.Read("s1A01.txt");
    }
    std::string Description(const std::string& path) const {
        const auto known = [&](const char* text, const char* otherwise) {
            return std::string(isFull ? text : otherwise) + "\r\n";
        };
        return "Run Info for the file : " + path + "\r\nSample name : s1\r\nPlate name : " + known("P", "N/A") +
               "Instrument ID : " + known("I", "") + "Run ID : " + known("R", "") + "Comment : two\r\nlines\r\n" +
               "Chemistry name : " + known("C", "N/A") + "Chemistry application : " + known("D", "N/A") +
               "Beam Splitter1 : " + known("E", "N/A") + "Beam Splitter2 : " + known("F", "N/A") +
               "laserMode : B\r\nBase Caller : " + known("G", "N/A") + "Operator : " + known("O", "") +
               "Run Voltage : 1.23457e+06\r\nRun time : 1.5\r\n"
               "Injection time : 2.5\r\nInjection voltage : 3.5\r\nTemperature : 4.5\r\nLazer Index : -7\r\n"
               "PMT Voltage1: 5.5\r\nPMT Voltage2: 6.5\r\nBase order : TGCA\r\nIs processed file : 0\r\n"
               "Is saturated : 1\r\nVersion : 1.2\r\nRun start time : Tue Feb 29 13:30:58 2000\r\n\r\n"
               "Run stop time : N/A\r\n\r\nNumber of lines : 4000000000\r\nScan Rate : 2\r\n"
               "Number of capillaries : 96\r\n";
    }
    bool isFull = false;  // whether the texts of the description are known
    const std::string heading = "Scan\t  Channel1\t  Channel2\t  Channel3\tChannel4\t Current\r\n\r\n";
};

TEST_F(TextDump, ARawSampleIsItsDescriptionAndItsScans) {
    GiveRaw(2);
    CTraceFile& raw = *sample->rawTrace;
    raw.trace->channels[2][1] = 4294967295.0;
    EXPECT_EQ(Dump(raw), Description(raw.path) + heading +
                             "0\t\t500\t\t800\t\t1100\t\t1400\t\t0\r\n1\t\t510\t\t810\t\t4294967295\t\t1410\t\t7\r\n");
    // A file that cannot be made is entered all the same.
    raw.path = folder + "/gone/s1A01.rsd";
    EXPECT_EQ(sample->ExportText(raw), 1);
    EXPECT_NE(temp.Read("log.xml").find("\t\t\r\n" + folder + "/gone/s1A01.txt\t\t\r\n</txt>"), std::string::npos);
}

TEST_F(TextDump, AProcessedSampleHasResultsAndSequenceInBetween) {
    isFull = true;
    CProcessedTrace& trace = GiveProcessed(40, 42);
    trace.channels = {{{0.5, 0.0049}, {0.29, -0.019}, {1e30, 0.0}, {0.01, 12.0}}};
    trace.current = {12.9, 3.0};
    const std::string begin =
        Description(folder + "/s1A01.esd") +
        "Bases Called : 0\r\nEnd Good Sequence : 4294967288\r\nEnd Sequence : 4294967289\r\n"
        "End Trace Processing : 4294967290\r\nEnd Signal : 4294967291\r\nStart Good Sequence : 4294967292\r\n"
        "Start Sequence : 4294967293\r\nStart Trace Processing : 4294967294\r\nStart Signal : 4294967295\r\n\r\n"
        "Sequence :\r\n";
    const std::string end =
        heading + "0\t\t50\t\t28\t\t9200000000000000000\t\t1\t\t12\r\n1\t\t0\t\t-1\t\t0\t\t1200\t\t3\r\n";
    AddBase(trace, 'x', 1, 0, 2);
    EXPECT_EQ(Dump(*sample->processedTrace), begin + "\r\n\r\n" + end);
    driver.baseCallers->goodRegionOnly = 1;  // is for other exports
    for (int i = 0; i < 51; ++i)
        AddBase(trace, i < 50 ? 'A' : 'c', 1, 0);
    EXPECT_EQ(Dump(*sample->processedTrace), begin + std::string(50, 'A') + "\r\nc\r\n\r\n" + end);
}
