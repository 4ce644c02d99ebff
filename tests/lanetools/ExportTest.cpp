// SPDX-License-Identifier: MIT
// lanetools export as a user runs it.
#include <limits>

#include "tools/ToolsFixture.h"

namespace {

// A called sample of these letters, each 10 scans from the next and with a quality of 99 %.
CSampleInfo Called(const std::string& well, const std::string& letters) {
    CSampleInfo info = sampletest::RawInfo(0);
    info.processed = true;
    info.plateId = "P1";
    info.wellId = well;
    info.sampleName = "my sample";
    info.runStart = 1714558830;
    CAnalysisInfo& analysis = info.analysis;
    analysis.baseCaller = "Caller";
    analysis.basesCalled = static_cast<std::int16_t>(letters.size());
    analysis.sequence = letters;
    analysis.startGood = 2;
    analysis.endGood = 5;
    for (std::int32_t i = 0; i < analysis.basesCalled; ++i) {
        analysis.qualityScores.push_back(99);
        analysis.peakPositions.push_back(100 + 10 * i);
        analysis.descriptors.push_back(0);
        analysis.strengths.push_back({1, 1, 1, 1});
    }
    return info;
}

class Export : public toolstest::ToolsTest {
  protected:
    void Store(const std::string& name, const CSampleInfo& info) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        ASSERT_EQ(WriteSample(Path(name), info, {}), 0);
    }

    // Two plates of two and one samples.
    void StorePlates() const {
        Store("out/p1_LC1_QX1/a.esd", Called("A01", "ACGTRyxAA"));
        Store("out/p1_LC1_QX1/b.esd", Called("A02", "TTTTTTTT"));
        CSampleInfo other = Called("A01", "GGGGGG");
        other.plateId = "P2";
        Store("out/p2_LC1_QX1/c.esd", other);
    }

    // Runs the subcommand on "out", into "reads"; what it prints is in "printed".
    int RunExport(const std::string& switches) const {
        return Run(std::string(LANETOOLS_PROGRAM) + " export out -o reads " + switches);
    }

    // The file after an export that is to end with 0.
    std::string Exported(const std::string& switches, const std::string& file) const {
        EXPECT_EQ(RunExport(switches), 0) << temp.Read("printed");
        return temp.Read("reads/" + file);
    }

    bool HasPrinted(const std::string& text) const { return temp.Read("printed").find(text) != std::string::npos; }
};

TEST_F(Export, WritesOneFilePerSamplePlateOrRun) {
    StorePlates();
    EXPECT_EQ(Exported("--format fastq", "p1_LC1_QX1/a.fastq"), "@a\nACGTRYNAA\n+\n555555555\n");
    EXPECT_EQ(temp.Read("reads/p2_LC1_QX1/c.fastq"), "@c\nGGGGGG\n+\n555555\n");
    EXPECT_EQ(Exported("--format fasta --per plate", "p1_LC1_QX1.fasta"), ">a\nACGTRYNAA\n>b\nTTTTTTTT\n");
    EXPECT_EQ(Exported("--format qual --per run --cap 7", "all.qual"),
              ">a\n7 7 7 7 7 7 7 7 7\n>b\n7 7 7 7 7 7 7 7\n>c\n7 7 7 7 7 7\n");
}

TEST_F(Export, PhdHasALinePerBase) {
    CSampleInfo info = Called("A01", "ACG");
    info.analysis.startTrace = 90;
    info.analysis.endTrace = 115;
    info.analysis.peakPositions[0] = 80;  // outside of the trace
    Store("out/a.esd", info);
    const std::string text = Exported("--format phd", "out/a.phd");
    EXPECT_NE(text.find("\nBEGIN_DNA\nA 20 0\nC 20 20\nG 20 24\nEND_DNA\n"), std::string::npos) << text;
    EXPECT_NE(text.find("CHROMAT_FILE: a.scf\n"), std::string::npos) << text;
    EXPECT_NE(text.find("MAX_INDEX: 24\n"), std::string::npos) << text;
    EXPECT_NE(text.find("TIME: Wed May  1 10:20:30 2024\n"), std::string::npos) << text;
}

TEST_F(Export, SamHasAReadGroupPerRead) {
    Store("out/p_X_QX1/a.esd", Called("A01", "ACG"));
    EXPECT_EQ(Exported("--format sam --name '{sample}@{well}\xC3\xA9'", "p_X_QX1/a.sam"),
              "@HD\tVN:1.6\tSO:unsorted\n"
              "@RG\tID:my_sample_A01_\tSM:my sample\tLB:P1\tPU:P1.A01\tDS:Caller\tDT:2024-05-01T10:20:30Z\n"
              "@PG\tID:lanetools\tPN:lanetools\tVN:1.1.0\n"
              "my_sample_A01_\t4\t*\t0\t0\t*\t*\t0\t0\tACG\t555\tRG:Z:my_sample_A01_\n");
    EXPECT_EQ(Exported("--format fasta --name '{sample}@{well}\xC3\xA9'", "p_X_QX1/a.fasta"),
              ">my_sample@A01\xC3\xA9\nACG\n");
    const std::string longest(254, 'x');
    const std::string text = Exported("--format sam --name " + longest + "y", "p_X_QX1/a.sam");
    EXPECT_NE(text.find("\n" + longest + "\t4"), std::string::npos) << "titles are cut at 254";
}

TEST_F(Export, CutsOrMasksWhatIsNotKept) {
    CSampleInfo info = Called("A01", "ACGTTTCATG");
    info.analysis.descriptors[3] = 2;  // is not shown: ACGTTCATG, of which GTT are the good region
    Store("out/p/a.esd", info);
    EXPECT_EQ(Exported("--format fasta --trim good", "p/a.fasta"), ">a\nGTT\n");
    EXPECT_EQ(Exported("--format fasta --trim good --mask", "p/a.fasta"), ">a\nacGTTcatg\n");
    EXPECT_EQ(Exported("--format fasta --adapter CATG", "p/a.fasta"), ">a\nACGTT\n");
    EXPECT_EQ(Exported("--format fasta --adapter TCAT --trim good --mask", "p/a.fasta"), ">a\nacGTtcatg\n");
    std::filesystem::remove_all(Path("reads"));
    EXPECT_EQ(RunExport("--format fasta --trim good --min-length 4"), 0);
    EXPECT_TRUE(HasPrinted("reads written: 0, too short: 1, not exported: 0")) << temp.Read("printed");
    EXPECT_EQ(RunExport("--format fasta --trim window:2,40"), 0) << "nothing is kept";
    EXPECT_FALSE(temp.Has("reads"));
}

TEST_F(Export, QualitiesOfEveryHeightAreRoundedOnce) {
    CSampleInfo info = Called("A01", "AAAAAAA");
    info.analysis.qualityScores = {0, -5, 68.4f, std::numeric_limits<float>::quiet_NaN(), 99.9f, 100, 250};
    Store("out/p/a.esd", info);
    EXPECT_EQ(Exported("--format qual", "p/a.qual"), ">a\n0 0 5 0 30 93 93\n");
}

TEST_F(Export, ReportsSamplesThatFailedOrAreDamaged) {
    StorePlates();
    CSampleInfo failed = Called("A03", "");
    failed.analysis.basecallError = "No\nsignal";
    Store("out/p1_LC1_QX1/d.fsd", failed);
    std::filesystem::resize_file(Path("out/p1_LC1_QX1/b.esd"), 100);
    temp.Write("sheet.csv", "plate,well,name\nP1,a3,failed\nP9,A1,nobody\n");
    EXPECT_EQ(RunExport("--format fasta --per run --sheet sheet.csv"), 3);
    EXPECT_EQ(temp.Read("reads/all.fasta"), ">a\nACGTRYNAA\n>c\nGGGGGG\n");
    EXPECT_TRUE(HasPrinted("p1_LC1_QX1/b.esd: not exported: damaged: ")) << temp.Read("printed");
    EXPECT_TRUE(HasPrinted("p1_LC1_QX1/d.fsd: not exported: failed: No signal\n"));
    EXPECT_TRUE(HasPrinted("sheet.csv: no sample for P9 A1 (line 3)\n"));
    EXPECT_FALSE(HasPrinted("no sample for P1"));
}

TEST_F(Export, ARunNamesThePlateWhereStemsRepeat) {
    StorePlates();
    CSampleInfo other = Called("C01", "CC");
    other.plateId = "P\t2 ";
    Store("out/p2_LC1_QX1/a.esd", other);
    EXPECT_EQ(Exported("--format fasta --per run", "all.fasta"),
              ">P1_a\nACGTRYNAA\n>P1_b\nTTTTTTTT\n>P_2__a\nCC\n>P2_c\nGGGGGG\n");
}

TEST_F(Export, TheSheetRenamesWells) {
    StorePlates();
    temp.Write("sheet.tsv", "\xEF\xBB\xBFname\tnote\tplate\twell\r\nfirst one\t\tP1\ta1\r\n\r\nother\tx\tP2\tA001\r\n");
    EXPECT_EQ(Exported("--format fasta --per run --sheet sheet.tsv", "all.fasta"),
              ">first_one\nACGTRYNAA\n>b\nTTTTTTTT\n>other\nGGGGGG\n");
    temp.Write("sheet.csv", "plate,well,name,note\n\"P1\",A1, \"one, \"\"two\"\"\",\n,,,\r\nP1,A2,5\" x,2\n");
    EXPECT_EQ(
        Exported("--format fasta --per run --name '{plate}:{bases}:{trace_score}' --sheet sheet.csv", "all.fasta"),
        ">one,_\"two\"\nACGTRYNAA\n>5\"_x\nTTTTTTTT\n>P2:6:20.0\nGGGGGG\n");
}

TEST_F(Export, FilesAreNamedByPatternAndSheet) {
    StorePlates();
    CSampleInfo imported = Called("A03", "CC");
    imported.sourceFile = "run/7.ab1";
    Store("out/p1_LC1_QX1/d.esd", imported);
    temp.Write("sheet.csv", "Name; WELL;\"Pl\"ate;note\n first one;a1;P1;\"a;b\"\n");
    EXPECT_EQ(Exported("--format fasta --files '{well}{source}' --name '{source}_' --sheet sheet.csv",
                       "p1_LC1_QX1/first one.fasta"),
              ">first_one\nACGTRYNAA\n");
    EXPECT_TRUE(HasPrinted("sheet.csv: no row for P1 A02 (")) << temp.Read("printed");
    EXPECT_TRUE(HasPrinted("sheet.csv: no row for P2 A01 ("));
    EXPECT_FALSE(HasPrinted("no row for P1 A01"));
    EXPECT_EQ(temp.Read("reads/p1_LC1_QX1/A03run_7.ab1.fasta"), ">run/7.ab1_\nCC\n");
    EXPECT_EQ(temp.Read("reads/p2_LC1_QX1/A01.fasta"), ">_\nGGGGGG\n");
}

TEST_F(Export, RefusesBeforeAnythingIsWritten) {
    StorePlates();
    temp.Write("wells.csv", "plate,well,name\nP1,A1,x\nP1,a01,y\n");
    temp.Write("names.csv", "plate,well,name\nP1,A1,x\nP1,A2,x\n");
    temp.Write("columns.csv", "plate,name\nP1,x\n");
    temp.Write("large.csv", "");
    std::filesystem::resize_file(Path("large.csv"), (16 << 20) + 1);
    temp.Write("row.csv", "plate,well,name\nP1,A1\n");
    const std::vector<std::pair<std::string, std::string>> cases{
        {"--format fasta --trim mott", "--trim: 'mott' is none of"},
        {"--format fasta --adapter ACX", "'X' in 'ACX' is not an IUPAC letter"},
        {"--format fasta --adapter ''", "the sequence is empty"},
        {"--format fasta --adapter A --adapter-mismatch nan", "--adapter-mismatch: "},
        {"--format fasta --name '{wel}'", "'wel' is not a column"},
        {"--format fasta --name '{well'", "a '{' has no '}' after it"},
        {"--format fasta --name 'well}'", "a '}' has no '{' before it"},
        {"--format fasta --name ''", "the pattern is empty"},
        {"--format fasta --name '{raw_peak}'", "a.esd: its title is empty"},
        {"--format fasta --per plate --name x", "b.esd: its title in "},
        {"--format fasta --per run --name '{well}'", "c.esd: its title in "},
        {"--format fasta --cap 94", "--cap: "},
        {"--format fasta --per well", "'well' is none of sample, plate and run"},
        {"--format embl", "'embl' is none of"},
        {"--format bam --gzip", "bam is always compressed"},
        {"--format sam --mask", "sam has no lower case"},
        {"--format fasta --sheet wells.csv", "line 3: well a01 of plate P1 occurs twice"},
        {"--format fasta --sheet names.csv", "line 3: the name x occurs twice"},
        {"--format fasta --sheet columns.csv", "no column 'well'; it has: plate, name"},
        {"--format fasta --sheet large.csv", "large.csv: it has more than 16 MiB"},
        {"--format fasta --files '{sample}'", "b.esd: its file would be 'my sample', as that of "},
        {"--format fasta --files '{raw_peak}'", "a.esd: the name of its file is empty"},
        {"--format fasta --files '{wel}'", "--files: 'wel' is not a column"},
        {"--format fasta --files x --per run", "--files: only --per sample"},
        {"--format fasta --sheet row.csv", "line 2: plate, well or name is empty"},
        {"--format fasta --sheet nowhere.csv", "nowhere.csv: No such file"},
        {"--format fasta --sheet out", "out: Is a directory"},
        {"--format fasta --min-length -1", "--min-length"},
        {"", "lanetools: --format is required"},
        {"--format fasta -o ''", "--output: the path is empty"},
        {"--format fasta -o 'a\\b'", "--output: a\\b: a path must not contain"},
        {"--format fasta --sheet ''", "--sheet: the path is empty"},
    };
    for (const auto& [switches, message] : cases) {
        EXPECT_EQ(RunExport(switches), 2) << switches;
        EXPECT_TRUE(HasPrinted(message)) << switches << ": " << temp.Read("printed");
        EXPECT_FALSE(temp.Has("reads")) << switches;
    }
    temp.Write("reads", "mine");
    EXPECT_EQ(RunExport("--format fasta"), 2) << "a file has the name of the folder";
    EXPECT_EQ(temp.Read("reads"), "mine");
}

TEST_F(Export, NamesOfFilesAreSafeAndKeptApart) {
    Store("out/p*_X_QX1/a.esd", Called("A01", "AC"));
    Store("out/p*_X_QX1/-b:.esd", Called("A02", "GG"));
    Store("out/p?_X_QX1/a.esd", Called("A01", "TT"));
    EXPECT_EQ(Exported("--format fasta", "p__X_QX1/a.fasta"), ">a\nAC\n");
    EXPECT_TRUE(HasPrinted("exported as p__X_QX1_2, since another one is called p__X_QX1")) << temp.Read("printed");
    EXPECT_EQ(temp.Read("reads/p__X_QX1_2/a.fasta"), ">a\nTT\n");
    EXPECT_EQ(temp.Read("reads/p__X_QX1/_b_.fasta"), ">-b:\nGG\n");
}

TEST_F(Export, AFileThatCannotBeWrittenStaysAsItWas) {
    StorePlates();
    temp.Write("reads/p1_LC1_QX1/b.fasta/file", "");
    EXPECT_EQ(RunExport("--format fasta"), 1);
    EXPECT_TRUE(HasPrinted("b.fasta: Is a directory")) << temp.Read("printed");
    EXPECT_EQ(temp.Read("reads/p1_LC1_QX1/a.fasta"), ">a\nACGTRYNAA\n");
    for (const std::string format : {"fastq", "fasta --gzip", "phd", "sam", "sam --gzip", "bam"}) {
        const std::string command = LANETOOLS_PROGRAM " export out -o full --format " + format;
        EXPECT_EQ(Run("trap '' XFSZ; ulimit -f 0; " + command + " 2>/dev/null"), 1) << format;
        EXPECT_TRUE(std::filesystem::is_empty(Path("full/p1_LC1_QX1"))) << format << ": half a file is left";
    }
}

}  // namespace
