// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "TraceExportFixture.h"

namespace {

class ScfExportTest : public TraceExportTest {};

TEST_F(ScfExportTest, WholeTrace) {
    CProcessedTrace& trace = GiveProcessed(5, 15);
    AddBase(trace, 'A', 6.0f, 50.0f);
    AddBase(trace, 'n', 8.9f, 99.0f);
    AddBase(trace, 'G', 10.0f, 99.0f, 2);
    AddBase(trace, 'T', 15.0f, 10.0f);
    sample->info.chemistryName = "dyes";
    sample->info.comment = "remark";
    EXPECT_EQ(ExportScf(), 1);

    const ScfContent scf = ReadScf(ScfPath());
    EXPECT_EQ(scf.curves[0], (std::vector<int>{1, 6, 11, 16, 21, 26, 31, 36, 41, 46}));  // channel 2
    EXPECT_EQ(scf.peaks, (std::vector<std::uint32_t>{1, 3, 10}));
    EXPECT_EQ(scf.letters, "AnT");
    EXPECT_EQ(
        scf.comments,
        "DYEP=dyes\nMACH=Quillion # N/A\nNAME=B11\nSampleRemark=remark\nBCSW=\nDATE=Tue Feb 29 13:30:58 2000\n\n");
    EXPECT_EQ(Log(), "exported to SCF file format " + ScfPath() + "\r\n");
}

TEST_F(ScfExportTest, GoodRegionWindowIsCutAtTheTrace) {
    CProcessedTrace& trace = GiveProcessed(100, 200);
    for (const float position : {102.0f, 150.0f, 198.0f})
        AddBase(trace, 'C', position, 99.0f);
    driver.baseCallers->goodRegionOnly = 1;
    const auto shape = [&](std::int32_t start, std::int32_t length) {
        SetGoodRegion(trace, start, length);
        EXPECT_EQ(ExportScf(), 1);
        const ScfContent scf = ReadScf(ScfPath());
        return std::pair(scf.curves[1].size(), scf.peaks);
    };
    using Shape = std::pair<std::size_t, std::vector<std::uint32_t>>;
    EXPECT_EQ(shape(0, 2), Shape(54, {2, 50}));  // 100 to 154
    EXPECT_EQ(shape(1, 1), Shape(8, {4}));       // 146 to 154
    EXPECT_EQ(shape(2, 1), Shape(6, {4}));       // 194 to 200
    EXPECT_EQ(shape(0, 0), Shape(6, {}));        // 100 to 106: scans and no bases
    // The scale is still that of the whole trace.
    SetGoodRegion(trace, 1, 1);
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_EQ(ReadScf(ScfPath()).curves[1][0], 230);
    // Without any base the window closes before it opens.
    trace.calledBases.RemoveAll();
    EXPECT_EQ(shape(0, 0), Shape(0, {}));
}

TEST_F(ScfExportTest, StrangeValues) {
    CProcessedTrace& trace = GiveProcessed(0, 4);
    double offset = 0.0;
    for (auto& channel : trace.channels)
        channel = {5000.0, 6000.0, 7000.0, 7000.0};
    EXPECT_EQ(trace.ScaleFor(offset, 2000.0), 3.0);
    EXPECT_EQ(offset, 1000.0);  // not 5000
    for (auto& channel : trace.channels)
        channel.assign(4, 0.0);
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_EQ(ReadScf(ScfPath()).curves[0], std::vector<int>(4, 0));  // no height at all
    trace.channels[2] = {std::nan(""), std::numeric_limits<double>::infinity(), 1e300, 1.0};
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_EQ(ReadScf(ScfPath()).curves[0], std::vector<int>(4, 0));
    trace.channels[2] = {4000.0, 0.0, 0.0, 2000.0};
    trace.traceEnd = 6;  // two scans more than there are
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_EQ(ReadScf(ScfPath()).curves[0], (std::vector<int>{2000, 0, 0, 1000, 1000, 1000}));
    trace.channels.fill({});  // and none at all
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_EQ(ReadScf(ScfPath()).curves[3], std::vector<int>(6, 0));
    trace.traceEnd = 2147483647.0;
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_TRUE(Log().ends_with("File too large")) << Log();
}

TEST_F(ScfExportTest, FailedForm) {
    GiveProcessed(5, 15);
    sample->info.analysis.basecallError = "no signal";
    sample->info.sampleName = "named";
    EXPECT_EQ(ExportScf(), 1);
    const ScfContent scf = ReadScf(ScfPath());
    EXPECT_EQ(scf.curves[0].size() + scf.letters.size(), 0u);
    EXPECT_EQ(scf.comments, "DYEP=\nMACH=Quillion # N/A\nNAME=named\nSampleRemark=\nDATE=Tue Feb 29 13:30:58 2000\n\n");
    std::filesystem::remove_all(folder + "/basecall.log");
    std::filesystem::remove(ScfPath());
    driver.baseCallers->skipFailedExports = 1;
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_FALSE(std::filesystem::exists(ScfPath()));
    EXPECT_EQ(Log(), "");
}

TEST_F(ScfExportTest, FailureOfTheWriterIsLoggedAndCountsAsDone) {
    AddBase(GiveProcessed(5, 15), 'A', 6.0f, 50.0f);
    std::string expected;
    for (const char* operation :
         {"SetSampleSize", "SetSampleCount", "SetBaseCount", "SetSample", "AddBase", "AddComment", "SaveFile"}) {
        CFailingWriter::Install(S_OK, operation);
        EXPECT_EQ(ExportScf(), 1);
        EXPECT_EQ(Log(), expected += "IDispatch error #7") << operation;
    }
    CFailingWriter::Install(S_OK, "QueryInterface");
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_EQ(Log(), expected += "Invalid pointer");
    CFailingWriter::Install(REGDB_E_CLASSNOTREG, "");
    EXPECT_EQ(ExportScf(), 1);
    EXPECT_EQ(Log(), expected += "Class not registered");
    EXPECT_FALSE(std::filesystem::exists(folder + "/log.xml"));
}

}  // namespace
