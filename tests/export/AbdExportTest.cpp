// SPDX-License-Identifier: MIT
#include <cmath>

#include "TraceExportFixture.h"
#include "export/AbdChannels.h"
#include "export/AbdDescription.h"
#include "plugins/BaseCaller.h"

namespace {

class AbdExportTest : public TraceExportTest {
  protected:
    std::map<std::string, AbifEntry> Tags() const { return ReadAbif(AbdPath()); }
};

TEST_F(AbdExportTest, WholeTrace) {
    GiveRaw(20);
    CProcessedTrace& trace = GiveProcessed(5, 15);
    AddBase(trace, 'A', 6.0f, 50.0f);
    AddBase(trace, 'n', 8.9f, 99.9f);
    AddBase(trace, 'G', 10.0f, 99.0f, 2);
    AddBase(trace, 'T', 14.0f, 10.0f);
    sample->info.pmtVoltage1 = 70000.9f;
    sample->info.temperature = -3.5f;
    sample->info.runStop = -1;
    sample->info.comment = "remark";
    sample->info.chemistryName = "dyes";
    sample->info.machineId = "7";
    sample->info.scanRate = 4;
    CBaseCaller caller;
    caller.name = "caller";
    trace.SetCallerInfo(&caller);
    plate->outputFolder += "/.";
    EXPECT_EQ(ExportAbd(), 1);
    auto tags = Tags();
    std::string texts;
    for (const char* name : {"CMBF1", "CMNT1", "CTTL1", "EVNT1", "EVNT2", "GELN1", "GELP1", "MCHN1", "PDMF1", "PDMF2",
                             "SMPL1", "SVER1", "SVER2"})
        texts += tags[name].Text() + "|";
    EXPECT_EQ(texts, "96-well capillary|remark|Comment:|Run started at:|Run stopped at:|s1A01.rsd|" + folder +
                         "|Quillion # 7|dyes|dyes|B11|1.2|caller|");
    for (const auto& [name, number] : {std::pair("LANE1", 15), {"NChn1", 4}, {"NLNE1", 96}, {"SMPR1", 2}, {"DATA7", 0}})
        EXPECT_EQ(tags[name].Shorts(), std::vector<int>{number}) << name;
    EXPECT_EQ(tags["FWO_1"].data + tags["MODL1"].data, "CAGT1000");
    EXPECT_EQ(tags["RUNT1"].data + tags["RUNT2"].data, std::string("\x0D\x1E\x3A\0\0\0\0\0", 8));
    EXPECT_EQ(tags["ASPt1"].Shorts(), std::vector<int>{5});
    EXPECT_EQ(tags["AEPt2"].Shorts(), std::vector<int>{10});
    EXPECT_EQ(tags["B1Pt1"].Shorts(), std::vector<int>{6});
    EXPECT_EQ(tags["DATA1"].Shorts().back(), 180);  // spans 1070: moved and not stretched; the last scan is left out
    EXPECT_EQ(tags["DATA5"].Shorts(), std::vector<int>{70000 - 65536});
    EXPECT_EQ(tags["DATA6"].Shorts()[18], 126);
    EXPECT_EQ(tags["DATA8"].Shorts(), std::vector<int>{-3});
    EXPECT_EQ(tags["PBAS1"].data, "AnT");
    EXPECT_EQ(tags["PLOC2"].Shorts(), (std::vector<int>{1, 3, 9}));
    EXPECT_EQ(tags["QVAL1"].Shorts(), (std::vector<int>{50, 99, 10}));
    EXPECT_EQ(tags["PCON2"].data, (std::string{3, 30, 0}));
    EXPECT_EQ(tags["RUND2"].data, (std::string{7, '\xB2', 1, 1}));
    EXPECT_EQ(Log(), "exported to ABD file format \r\n");
    GiveRaw(13);  // spans exactly 1000
    EXPECT_EQ(ExportAbd(), 1);
    EXPECT_EQ(Tags()["DATA1"].Shorts().back(), 110);
}

TEST_F(AbdExportTest, TagsGoOutInTheirOrder) {
    GiveRaw(20);
    GiveProcessed(5, 15).separationMatrix = Matrix4{};
    CFailingWriter::Install(S_OK, "");
    EXPECT_EQ(ExportAbd(), 1);
    const std::vector<std::string> all = CFailingWriter::tags;
    EXPECT_EQ(all.size(), 51u);
    EXPECT_EQ(all[30], "MTRX101");
    EXPECT_EQ(all[48], "SVER2");
    EXPECT_EQ(all[50], "QVAL2");
    sample->info.analysis.basecallError = "no signal";
    CFailingWriter::Install(S_OK, "");
    EXPECT_EQ(ExportAbd(), 1);
    EXPECT_EQ(CFailingWriter::tags.size(), 32u);
    // The failed form is the rest of the whole one, in the same order.
    auto next = all.begin();
    for (const std::string& tag : CFailingWriter::tags) {
        next = std::find(next, all.end(), tag);
        ASSERT_NE(next, all.end()) << tag;
    }
}

TEST_F(AbdExportTest, LongTracesAreThinnedOut) {
    struct Case {
        std::uint32_t scans;
        std::size_t elements;
        int secondBase, b1pt, aept;
    };
    for (const Case& c : {Case{32766, 32765, 30000, 20000, 32766}, Case{32767, 16383, 15000, 10000, 16383},
                          Case{40000, 19999, 15000, 10000, 20000}}) {
        sample = std::make_unique<CSampleFile>("s1A01.rsd", plate.get());
        GiveRaw(c.scans);
        CProcessedTrace& trace = GiveProcessed(0, c.scans);
        AddBase(trace, 'A', 20000.0f, 50.0f);
        AddBase(trace, 'C', 30000.0f, 50.0f);
        EXPECT_EQ(ExportAbd(), 1);
        auto tags = Tags();
        EXPECT_EQ(tags["DATA1"].count, c.elements) << c.scans;
        EXPECT_EQ(tags["PLOC1"].Shorts()[1], c.secondBase) << c.scans;
        EXPECT_EQ(tags["B1Pt1"].Shorts()[0], c.b1pt) << c.scans;
        EXPECT_EQ(tags["AEPt1"].Shorts()[0], c.aept) << c.scans;
    }
}

TEST_F(AbdExportTest, GoodRegionAtTheEdges) {
    GiveRaw(200);
    CProcessedTrace& trace = GiveProcessed(100, 200);
    for (const float position : {102.0f, 150.0f, 198.0f})
        AddBase(trace, 'C', position, 99.0f);
    SetGoodRegion(trace, 0, 1);
    EXPECT_EQ(ExportAbd(1), 1);
    auto tags = Tags();
    EXPECT_EQ(tags["ASPt1"].Shorts()[0], 97);
    EXPECT_EQ(tags["B1Pt1"].Shorts()[0], 102);
    EXPECT_EQ(tags["DATA9"].count, 10u);  // 97 to 107, three before the trace repeat its first scan
    // C in channel 0; the spread is 4000 less 0.
    EXPECT_EQ(tags["DATA9"].Shorts(), (std::vector<int>{0, 0, 0, 0, 5, 10, 15, 20, 25, 30}));
    SetGoodRegion(trace, 2, 1);
    EXPECT_EQ(ExportAbd(1), 1);
    tags = Tags();
    EXPECT_EQ(tags["PLOC1"].Shorts(), std::vector<int>{5});
    // 193 to 203: four channels within 930 to 993, so low is 930 and high 993, stretched to 2000.
    EXPECT_EQ(tags["DATA9"].Shorts().front(), 0);
    EXPECT_EQ(tags["DATA12"].Shorts().back(), static_cast<int>(61.0 / (63.0 * 0.0005)));
    SetGoodRegion(trace, 2, 0);
    EXPECT_EQ(ExportAbd(1), 1);
    EXPECT_EQ(Tags().count("PBAS1"), 0u);
    std::filesystem::remove(AbdPath());
    driver.baseCallers->skipFailedExports = 1;
    EXPECT_EQ(ExportAbd(1), 1);
    EXPECT_FALSE(std::filesystem::exists(AbdPath()));
    driver.baseCallers->allowUserGoodRegion = 1;  // found anew: all bases but the last
    EXPECT_EQ(ExportAbd(1), 1);
    EXPECT_EQ(Tags()["PBAS1"].data, "CC");
}

TEST_F(AbdExportTest, MatrixIsReorderedAndScaled) {
    GiveRaw(20);
    Matrix4 rows{};
    for (std::size_t r = 0; r < 4; ++r)
        for (std::size_t c = 0; c < 4; ++c)
            rows[r][c] = r == c ? -2.0f : 0.125f * static_cast<float>(4 * r + c);
    sample->info.separationMatrix = rows;
    sample->info.analysis.basecallError = "no signal";
    CBaseCaller caller;
    caller.fileName = "vhtk.DLL";
    sample->CreateProcessedTrace(folder + "/s1A01.esd", 1, nullptr);
    EXPECT_EQ(ExportAbd(), 1);
    // Rows and columns 0, 2, 3, 1.
    EXPECT_EQ(Tags()["MTRX101"].Shorts(), (std::vector<int>{-1000, 125, 187, 62, 500, -1000, 687, 562, 750, 875, -1000,
                                                            812, 250, 375, 437, -1000}));
    sample->processedTrace->Processed()->SetCallerInfo(&caller);
    EXPECT_EQ(ExportAbd(), 1);
    EXPECT_EQ(Tags()["MTRX1"].Shorts()[0], -2000);
    sample->processedTrace->Processed()->SetCallerInfo(nullptr);
    sample->info.separationMatrix = {};
    EXPECT_EQ(ExportAbd(), 1);
    EXPECT_EQ(Tags()["MTRX1"].Shorts(), std::vector<int>(16, 0));
}

TEST_F(AbdExportTest, FailuresOfTheWriter) {
    GiveRaw(20);
    GiveProcessed(5, 15);
    const std::string failed = "failed to export to ABD file format \r\n";
    std::string expected;
    for (const char* operation : {"OpenFile", "QVAL2", "CloseFile"}) {
        CFailingWriter::Install(S_OK, operation);
        EXPECT_EQ(ExportAbd(), 0);
        EXPECT_EQ(Log(), expected += failed + "IDispatch error #7\r\n") << operation;
    }
    CFailingWriter::Install(E_OUTOFMEMORY, "");
    EXPECT_EQ(ExportAbd(), 0);
    EXPECT_EQ(Log(), expected += failed + "Not enough storage is available to complete this operation.\r\n");
    CFailingWriter::Install(S_OK, "");
    CFailingWriter::opens = 0;
    EXPECT_EQ(ExportAbd(), 0);
    EXPECT_EQ(Log(), expected += failed);
    CFailingWriter::Install(E_NOINTERFACE, "");
    EXPECT_EQ(ExportAbd(), 0);
    EXPECT_EQ(Log(), expected += failed);
    EXPECT_EQ(sample->ExportFailedAbd(0), 0);
    EXPECT_EQ(Log(), expected);
}

TEST_F(AbdExportTest, ArraysThatCannotBeHad) {
    CProcessedTrace& trace = GiveProcessed(5, 15);
    for (int i = 0; i < 32768; ++i)
        AddBase(trace, 'A', 6.0f, 50.0f);
    testing::internal::CaptureStdout();
    EXPECT_EQ(ExportAbd(), 1);  // one base more than a signed 16-bit count can hold
    std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(printed.find("The SafeArray Allocation Failed"), 0u);
    EXPECT_EQ(Tags().count("PBAS1") + Tags().count("PLOC1"), 0u);
    EXPECT_EQ(Tags()["SMPL1"].Text(), "B11");

    GiveRaw(20);
    CFailingWriter::Install(S_OK, "");
    CClassTable::Active().grantArray = [](std::int32_t length) { return static_cast<std::size_t>(length - 1); };
    testing::internal::CaptureStdout();
    EXPECT_EQ(sample->ExportFailedAbd(0), 1);
    printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(printed.find("Failed to store Intensity ValueFailed to store Intensity Value"), 0u);
    EXPECT_EQ(CFailingWriter::tags[3], "DATA1 empty");
}

TEST_F(AbdExportTest, NumbersThatWrap) {
    const auto lane = [](const char* well, int columns, int rows) {
        CSampleInfo info;
        info.wellId = well;
        info.plateColumns = columns;
        info.plateRows = rows;
        return LaneOf(info);
    };
    EXPECT_EQ(lane("H12", 12, 8), 1);
    EXPECT_EQ(lane("h11", 12, 8), 9);
    EXPECT_EQ(lane("A01", 24, 16), 128);  // 384 modulo 256
    EXPECT_EQ(lane("", 12, 8), (13 * 8 + 65 - 1) % 256 + 1);
    // Ranges far outside the arrays cost nothing, and a count that is negative in 16 bits makes no array.
    CFailingWriter::Install(S_OK, "");
    CFailingWriter writer;
    ChannelCurves curves;
    curves.fill({1.0, 2.0});
    WriteChannels(writer, curves, 0, 1, 2, 1);
    WriteChannels(writer, curves, -2147483647, 2147483647, 1, 1);
    WriteChannels(writer, curves, -2000000, -1000000, 3, 1);
    EXPECT_EQ(CFailingWriter::tags.size(), 8u);
    for (const std::size_t length : {31, 32}) {
        GiveRaw(2);
        sample->rawTrace->path = folder + "\\" + std::string(length, 'x');
        CClassTable::Replace(savedClasses);
        EXPECT_EQ(sample->ExportFailedAbd(0), 1);
        EXPECT_EQ(Tags()["GELN1"].Text().size(), length == 31 ? 31u : 30u);
    }
}

}  // namespace
