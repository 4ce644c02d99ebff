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
        info.scanCount = 4000000000u;
        CAnalysisInfo& analysis = info.analysis;
        std::int32_t number = -2;
        for (std::int32_t* field :
             {&analysis.endGood, &analysis.endSequence, &analysis.endTrace, &analysis.endSignal, &analysis.startGood,
              &analysis.startSequence, &analysis.startTrace, &analysis.startSignal})
            *field = number++;
        EXPECT_EQ(sample->ExportText(holder), 1);
        return temp.Read("s1A01.txt");
    }
    std::string Description(const std::string& path) const {
        return "Run Info for the file : " + path +
               "\r\nSample name : s1\r\nPlate name : N/A\r\nInstrument ID : \r\nRun ID : \r\nComment : two\r\nlines\r\n"
               "Chemistry name : N/A\r\nChemistry application : N/A\r\nBeam Splitter1 : N/A\r\nBeam Splitter2 : N/A\r\n"
               "laserMode : B\r\nBase Caller : N/A\r\nOperator : \r\nRun Voltage : 1.23457e+06\r\nRun time : 1.5\r\n"
               "Injection time : 2.5\r\nInjection voltage : 3.5\r\nTemperature : 4.5\r\nLazer Index : 0\r\n"
               "PMT Voltage1: 5.5\r\nPMT Voltage2: 6.5\r\nBase order : TGCA\r\nIs processed file : 0\r\n"
               "Is saturated : 0\r\nVersion : 1.2\r\nRun start time : Tue Feb 29 13:30:58 2000\r\n\r\n"
               "Run stop time : N/A\r\n\r\nNumber of lines : 4000000000\r\nScan Rate : 0\r\n"
               "Number of capillaries : 0\r\n";
    }
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
    CProcessedTrace& trace = GiveProcessed(40, 42);
    trace.channels = {{{0.5, 0.0049}, {0.29, -0.019}, {1e30, 0.0}, {0.01, 12.0}}};
    trace.current = {12.9, 3.0};
    const std::string begin =
        Description(folder + "/s1A01.esd") +
        "Bases Called : 0\r\nEnd Good Sequence : 4294967294\r\nEnd Sequence : 4294967295\r\n"
        "End Trace Processing : 0\r\nEnd Signal : 1\r\nStart Good Sequence : 2\r\nStart Sequence : 3\r\n"
        "Start Trace Processing : 4\r\nStart Signal : 5\r\n\r\nSequence :\r\n";
    const std::string end =
        heading + "0\t\t50\t\t28\t\t9200000000000000000\t\t1\t\t12\r\n1\t\t0\t\t-1\t\t0\t\t1200\t\t3\r\n";
    AddBase(trace, 'x', 1, 0, 2);
    EXPECT_EQ(Dump(*sample->processedTrace), begin + "\r\n\r\n" + end);
    driver.baseCallers->goodRegionOnly = 1;  // is for other exports
    for (int i = 0; i < 51; ++i)
        AddBase(trace, i < 50 ? 'A' : 'c', 1, 0);
    EXPECT_EQ(Dump(*sample->processedTrace), begin + std::string(50, 'A') + "\r\nc\r\n\r\n" + end);
}
