// SPDX-License-Identifier: MIT
// lanetools summary as a user runs it.
#include <cmath>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>

#include "lanetools/samples/StoredSample.h"
#include "support/PlainUser.h"
#include "tools/ToolsFixture.h"

namespace {

namespace fs = std::filesystem;

class Summary : public toolstest::ToolsTest {
  protected:
    static constexpr std::int32_t run = 1714558830;  // 2024-05-01T10:20:30Z

    static CSampleInfo Raw(const std::string& well, const std::string& name, std::int32_t start = run) {
        CSampleInfo info = sampletest::RawInfo(10);
        info.wellId = well;
        info.sampleName = name;
        info.runStart = start;
        return info;
    }
    // 40 bases of four qualities.
    static CSampleInfo Called(CSampleInfo info) {
        constexpr std::size_t count = 40;
        info.processed = true;
        CAnalysisInfo& analysis = info.analysis;
        analysis.baseCaller = "Caller";
        analysis.basesCalled = count;
        analysis.sequence.assign(count, 'A');
        analysis.qualityScores.assign(count, 50.0f);
        std::fill_n(analysis.qualityScores.begin() + 10, 25, 99.0f);
        std::fill_n(analysis.qualityScores.begin() + 35, 4, 99.95f);
        analysis.qualityScores.back() = std::nanf("");
        analysis.peakPositions.assign(count, 1);
        analysis.descriptors.assign(count, 0);
        analysis.strengths.assign(count, {});
        analysis.startGood = 10;
        analysis.endGood = 34;
        analysis.snZoneCount = 2;
        analysis.snZoneStarts = analysis.snZoneEnds = {1, 2};
        analysis.snSignal.fill({100, 200});
        analysis.snSignal[3] = {101, 200};
        analysis.snNoise.fill({1, 2});
        return info;
    }
    static CSampleInfo Failed(CSampleInfo info, const std::string& reason) {
        info.processed = true;
        info.analysis.baseCaller = "Caller";
        info.analysis.basecallError = reason;
        return info;
    }
    void Write(const std::string& name, const CSampleInfo& info) const {
        temp.MakeFolder(fs::path(name).parent_path().string());
        ASSERT_EQ(WriteSample(Path(name), info, sampletest::NumberedScans(10)), 0) << name;
    }
    void Write(const std::string& raw, const std::string& stored, const CSampleInfo& info) const {
        Write(raw, info);
        Write(stored, Called(info));
    }

    int Summarize(const std::string& words) const { return Run(LANETOOLS_PROGRAM " summary " + words); }
    // The rows of a table: the columns with these numbers (from 0), with blanks between.
    std::string Columns(const std::string& words, std::vector<std::size_t> wanted, int exitCode) const {
        EXPECT_EQ(Summarize(words + " -o table"), exitCode) << temp.Read("printed");
        std::istringstream lines(temp.Read("table"));
        std::string text;
        for (std::string line; std::getline(lines, line);) {
            std::vector<std::string> columns(1);
            for (const char c : line)
                c == '\t' ? columns.emplace_back() : columns.back() += c;
            EXPECT_EQ(columns.size(), 21u) << line;
            for (const std::size_t i : wanted)
                text += columns.at(i) + (i == wanted.back() ? "\n" : " ");
        }
        return text.substr(text.find('\n') + 1);
    }
    std::string States(const std::string& words, int exitCode = 3) const {
        return Columns(words, {0, 1, 3, 4, 5}, exitCode);
    }
};

TEST_F(Summary, FiguresOfACalledSample) {
    Write("raw/p/a.rsd", "out/p_X_QX1/a.esd", Raw("A01", "one"));
    ASSERT_EQ(Summarize("out --raw raw"), 0);
    EXPECT_EQ(temp.Read("printed"),
              "plate\twell\tsample\tfile\tstate\treason\tcaller\tbases\tgood_start\tgood_length\tq20\tq30\tcrl\t"
              "trace_score\tsignal\tnoise\traw_peak\trun_start\tmixed\tremark\tsource\n"
              "plate\tA01\tone\ta\tcalled\t\tCaller\t40\t11\t25\t29\t4\t20\t20.0\t150.1\t1.5\t4294967049\t"
              "2024-05-01T10:20:30Z\t0\t\t\n");
    CSampleInfo bare = Called(Raw("", "", 0));
    bare.plateId.clear();
    bare.analysis.endGood = 9;
    bare.analysis.snZoneCount = 0;
    Write("out/p_X_QX1/a.esd", bare);
    EXPECT_EQ(Columns("out", {0, 1, 2, 8, 9, 13, 14, 15, 16, 17}, 0), "p    0     \n");
    bare.analysis.endGood = 1000;  // beyond the bases
    Write("out/p_X_QX1/a.esd", bare);
    EXPECT_EQ(Columns("out", {8, 9}, 0), "11 30\n");
}

TEST_F(Summary, EachRawSampleHasARowForEachOutputOfItsPlate) {
    Write("raw/p/a.rsd", "out/p_X_QX1/a.esd", Raw("A01", "a"));
    Write("raw/p/b.ESD", Raw("A02", "b"));
    Write("out/p_X_QX1/b.fsd", Failed(Raw("A02", "b"), "No signal"));
    Write("raw/p/c.rsd", "out/p_X_QX1/c.esd", Raw("A03", "c"));
    Write("out/p_X_QX1/c.esd", Called(Raw("A03", "c", run + 1)));  // of another run
    temp.Write("raw/p/d.rsd", "no sample");
    temp.MakeFolder("out/p_Y_QX1");  // a library that stored nothing
    EXPECT_EQ(States("out --raw raw/p"),
              "p  d missing The raw file cannot be read: Not a well-formed sample file\n"
              "p  d missing The raw file cannot be read: Not a well-formed sample file\n"
              "plate A01 a missing \n"
              "plate A01 a called \n"
              "plate A02 b missing \n"
              "plate A02 b failed No signal\n"
              "plate A03 c missing The result with this name is of another sample\n"
              "plate A03 c missing \n"
              "plate A03 c called \n");
    EXPECT_EQ(States("out/p_X_QX1"), "plate A01 a called \nplate A02 b failed No signal\nplate A03 c called \n");
}

// The names alone would give the folder to both plates.
TEST_F(Summary, PlatesAreDistinguishedByTheirSamples) {
    const CSampleInfo short1 = Raw("A01", "of p"), long1 = Raw("A01", "of p_M", run + 60);
    Write("raw/p/a.rsd", "out/p_M_X_QX1/a.esd", short1);
    Write("raw/p_M/a.rsd", "out/p_M_QX1/a.esd", long1);
    EXPECT_EQ(Columns("out --raw raw", {2, 4, 5}, 3),
              "of p_M missing \nof p_M called \nof p called \n");  // out/p_M_QX1 is named after p, and not of it
    fs::rename(Path("out/p_M_QX1"), Path("out/p_M__QX1"));
    EXPECT_EQ(Columns("out --raw raw", {2, 4}, 0), "of p called\nof p_M called\n");
    // With damaged results alone the names decide: the longer one.
    temp.Write("out/p_M_X_QX1/a.esd", "");
    EXPECT_EQ(Columns("out/p_M_X_QX1 --raw raw/*", {2, 4}, 3), "of p missing\nof p_M damaged\n");
    // A plate that nobody has named has no row, nor is it read.
    ASSERT_EQ(Run("chmod 0 raw/p/a.rsd"), 0);
    EXPECT_EQ(Run(testsupport::WithoutPrivileges() + LANETOOLS_PROGRAM " summary out/p_M_X_QX1 --raw raw -o table"), 3);
    EXPECT_EQ(temp.Read("printed"), "lanetools: 0 of 1 samples are called (0 failed, 0 missing, 1 damaged)\n");
}

TEST_F(Summary, AGoodResultCountsMoreThanABadOne) {
    const CSampleInfo raw = Raw("A01", "a");
    Write("p/a.rsd", raw);
    Write("out/p_X_QX1/a.esd", Called(raw));
    Write("out/p_X_QX1/a.fsd", Failed(raw, "old"));
    EXPECT_EQ(States("out --raw p", 0), "plate A01 a called \n");
    temp.Write("out/p_X_QX1/a.esd", "gone");
    EXPECT_EQ(States("out --raw p"), "plate A01 a failed old\n");
    temp.Write("out/p_X_QX1/a.fsd", "gone");
    EXPECT_EQ(States("out --raw p"), "plate A01 a damaged Not a well-formed sample file\n");
}

TEST_F(Summary, EveryDamageIsFound) {
    Write("whole.esd", Called(Raw("A01", "a")));
    const sampletest::Bytes whole = sampletest::ReadBytes(Path("whole.esd"));
    const auto stateOf = [&](const sampletest::Bytes& bytes) {
        sampletest::WriteBytes(Path("hurt.esd"), bytes);
        return lanetools::ReadStoredFile(Path("hurt.esd")).state;
    };
    ASSERT_EQ(stateOf(whole), lanetools::SampleState::Called);
    for (std::size_t length = 0; length < whole.size(); length += length < 800 ? 37 : 7)
        EXPECT_EQ(stateOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)}),
                  lanetools::SampleState::Damaged)
            << length;
    std::mt19937 random(5);
    for (int i = 0; i < 400; ++i) {
        sampletest::Bytes hurt = whole;
        hurt[random() % hurt.size()] ^= static_cast<std::uint8_t>(1 << random() % 8);
        EXPECT_EQ(stateOf(hurt), lanetools::SampleState::Damaged);
    }
    // What a good checksum does not show.
    CSampleInfo info = Called(Raw("A01", "a"));
    const auto reasonOf = [&](const CSampleInfo& stored) {
        Write("hurt.esd", stored);
        return lanetools::ReadStoredFile(Path("hurt.esd")).reason;
    };
    EXPECT_EQ(reasonOf(Raw("A01", "a")), "A raw sample, not a result");
    info.analysis.qualityScores.pop_back();
    EXPECT_EQ(reasonOf(info), "An array is shorter than the bases");
    info.scanCount = 11;
    EXPECT_EQ(reasonOf(info), "The number of scans is not the recorded one");
}

TEST_F(Summary, FormatsHoldTheSameRows) {
    CSampleInfo odd = Raw("B02", "tab\there \xE9", 0);
    odd.sourceFile = "1e5.ab1";
    odd.plateId = "<plate> & \"one\"";
    Write("p/1e5.rsd", "out/p_X_QX1/1e5.esd", odd);
    Write("p/b.rsd", Raw("H24", "b"));
    EXPECT_EQ(Columns("out --raw p", {0, 2, 3, 16, 20}, 3),
              "<plate> & \"one\" tab here \xC3\xA9 1e5 4294967049 1e5.ab1\nplate b b  \n");

    ASSERT_EQ(Summarize("out --raw p --format json -o a.json"), 3);
    const auto report = nlohmann::json::parse(temp.Read("a.json"));
    EXPECT_EQ(report["plates"].dump(),
              R"([{"called":1,"damaged":0,"failed":0,"missing":0,"plate":"<plate> & \"one\""},)"
              R"({"called":0,"damaged":0,"failed":0,"missing":1,"plate":"plate"}])");
    const auto& called = report["samples"][0];
    EXPECT_EQ(called["sample"], "tab\there \xC3\xA9");
    EXPECT_EQ(called["bases"], 40);
    EXPECT_EQ(called["signal"], 150.1);
    EXPECT_TRUE(called["run_start"].is_null());
    EXPECT_TRUE(report["samples"][1]["bases"].is_null());
    EXPECT_EQ(report["samples"][1].size(), 21u);

    ASSERT_EQ(Summarize("out --raw p --format multiqc -o m"), 3);
    EXPECT_NE(temp.Read("m/lanetools_samples_mqc.tsv").find("\n\"1e5\"\t\"&lt;plate&gt; &amp; &quot;one&quot;\"\t"),
              std::string::npos);
    const std::string wells = temp.Read("m/lanetools_wells_mqc.html");
    EXPECT_NE(wells.find(">29</td>"), std::string::npos);
    EXPECT_NE(wells.find(">missing</td>"), std::string::npos);
    ASSERT_EQ(Summarize("out --raw p --format json -o b.json"), 3);
    EXPECT_EQ(temp.Read("a.json"), temp.Read("b.json"));
}

TEST_F(Summary, ExitCodes) {
    for (const std::string well : {"A01", "A02", "A03"})
        Write("p/" + well + ".rsd", "out/p_X_QX1/" + well + ".esd", Raw(well, well));
    Write("p/A04.rsd", Raw("A04", "A04"));
    EXPECT_EQ(Summarize("out --raw p"), 3);
    EXPECT_NE(temp.Read("printed").find("3 of 4 samples are called (0 failed, 1 missing, 0 damaged)"),
              std::string::npos);
    EXPECT_EQ(Summarize("out --raw p --min-pass 75"), 0);
    EXPECT_EQ(Summarize("out --raw p --min-pass 75.1"), 3);
    EXPECT_EQ(Summarize("out"), 0);
    temp.MakeFolder("empty");
    EXPECT_EQ(Summarize("empty --raw p"), 3);  // nothing has been called yet
    const std::string before = temp.Read("p/A04.rsd");
    for (const std::string wrong :
         {"", "none", "empty", "out --raw none", "out --raw empty", "out --min-pass nan", "out --min-pass 101",
          "out --format xml", "out --format multiqc", "out -o p/A04.rsd", "out -o none/table", "out -o empty",
          "out -o ''", "'a\\b'", "out -o 'a\\b'"})
        EXPECT_EQ(Summarize(wrong), 2) << wrong << temp.Read("printed");
    EXPECT_EQ(temp.Read("p/A04.rsd"), before);
    ASSERT_EQ(Run("mkfifo pipe && ln -s table link"), 0);
    EXPECT_EQ(Summarize("out -o pipe"), 2);
    EXPECT_EQ(Summarize("out -o table") + Summarize("out -o link"), 0);
    EXPECT_TRUE(fs::is_fifo(Path("pipe")));
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_TRUE(temp.Read("link").starts_with("plate\t"));
    EXPECT_EQ(Run(LANETOOLS_PROGRAM " summary out > /dev/full; test $? = 1"), 0);
    EXPECT_TRUE(fs::is_empty(Path("empty")));
}

}  // namespace
