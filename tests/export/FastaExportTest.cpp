// SPDX-License-Identifier: MIT
#include "export/TraceExportFixture.h"

using FastaExport = TraceExportTest;

TEST_F(FastaExport, RecordsOfACommonFileFollowOneAnother) {
    CProcessedTrace& trace = GiveProcessed(0, 0);
    const std::string common = temp.Write("all.seq", "before\n");
    for (const int more : {0, 50, 1, 49}) {
        for (int i = 0; i < more; ++i)
            AddBase(trace, 'A', 1, 0);
        EXPECT_EQ(sample->ExportFasta(sample->processedTrace, common, 0), 1);
    }
    const auto header = [&](const char* count) { return ">" + folder + "/s1A01.esd\t" + count + "\tQuillion\r\n"; };
    const std::string line = std::string(50, 'A') + "\r\n";
    EXPECT_EQ(temp.Read("all.seq"), "before\n" + header("0") + "\r\n" + header("50") + line + "\r\n" + header("51") +
                                        line + "A\r\n" + header("100") + line + line + "\r\n");
    EXPECT_NE(temp.Read("log.xml").find("<fasta>\r\n" + common + "\t\t\r\n"), std::string::npos);
}

TEST_F(FastaExport, ASamplesOwnFileIsWrittenAnewWithTheBasesToShow) {
    CProcessedTrace& trace = GiveProcessed(0, 0);
    temp.Write("s1A01.seq", std::string(500, 'o'));
    for (const char letter : {'A', 'c', '-', 'G', 'T'})
        AddBase(trace, letter, 1, 0, letter == '-' ? 2 : 0);
    SetGoodRegion(trace, 1, 3);
    EXPECT_EQ(sample->ExportFasta(sample->processedTrace, "", 1), 1);
    EXPECT_EQ(temp.Read("s1A01.seq"), ">" + folder + "/s1A01.esd\t2\tQuillion\r\ncG\r\n");
    SetGoodRegion(trace, -1, 2147483647);  // of a damaged file
    sample->ExportFasta(sample->processedTrace, "", 1);
    EXPECT_EQ(temp.Read("s1A01.seq"), ">" + folder + "/s1A01.esd\t4\tQuillion\r\nAcGT\r\n");
    EXPECT_EQ(Log(), "exported to FASTA file format \r\nexported to FASTA file format \r\n");
}

TEST_F(FastaExport, FailuresLeaveNoRecord) {
    GiveProcessed(0, 0);
    const auto result = [&](const std::string& path) { return sample->ExportFasta(sample->processedTrace, path, 0); };
    EXPECT_EQ(result(folder + "/gone/all.seq") + result("/dev/full"), 0);
    driver.baseCallers->exportToSubfolders = 1;
    plate->outputFolder = folder + "/gone";
    EXPECT_EQ(result(""), 0);
    sample->info.analysis.basecallError = "no signal";
    EXPECT_EQ(result(folder + "/all.seq") + sample->ExportFasta(nullptr, folder + "/all.seq", 0), 0);
    EXPECT_EQ(Log(),
              "cannot open file " + folder + "/gone/all.seq for writing \r\nfailed to write file /dev/full \r\n");
    EXPECT_FALSE(temp.Has("all.seq"));
    EXPECT_FALSE(temp.Has("log.xml"));
}

TEST_F(FastaExport, EveryFormatHasItsPath) {
    std::string paths;
    for (const std::int32_t flags : {0, 1, 2, 3}) {
        EXPECT_EQ(temp.Has("ABD"), flags == 3);
        driver.baseCallers->exportToSubfolders = flags / 2;
        driver.baseCallers->noExtensions = flags % 2;
        for (const char* extension : {"abd", "scf", "seq", "txt", "fsd"})
            paths += sample->ExportPath(folder + "\\a.b.rsd", extension).substr(folder.size()) + " ";
    }
    EXPECT_EQ(paths,
              "/a.b.abd /a.b.scf /a.b.seq /a.b.txt /a.b.fsd /a.b /a.b /a.b.seq /a.b.txt /a.b.fsd "
              "/ABD/a.b.abd /SCF/a.b.scf /FASTA/a.b.seq /Text/a.b.txt /a.b.fsd "
              "/ABD/a.b /SCF/a.b /FASTA/a.b.seq /Text/a.b.txt /a.b.fsd ");
    for (const char* made : {"ABD", "SCF", "FASTA", "Text"})
        EXPECT_TRUE(temp.Has(made)) << made;
    EXPECT_EQ(sample->ExportPath("x\\y/z\\a.rsd", "fsd"), "x\\y/z/a.fsd");
    EXPECT_EQ(sample->ExportPath("a.rsd", "fsd"), platform::CurrentFolder().value() + "/a.fsd");
}
