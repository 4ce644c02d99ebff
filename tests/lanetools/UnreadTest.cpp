// SPDX-License-Identifier: MIT
// What summary, report and export make of files and folders that exist but cannot be read.
#include <nlohmann/json.hpp>

#include "support/PlainUser.h"
#include "tools/ToolsFixture.h"

namespace {

namespace fs = std::filesystem;

class Unread : public toolstest::ToolsTest {
  protected:
    void SetUp() override {
        for (const std::string name : {"p1/a", "p1/b", "p2/c"}) {
            CSampleInfo info = sampletest::RawInfo(10);
            info.sampleName = name;
            Write("plates/" + name + ".rsd", info);
            info.processed = true;
            Write("out/" + name.substr(0, 2) + "_X_QX1/" + name.substr(3) + ".esd", info);
        }
    }
    void TearDown() override { ASSERT_EQ(Run("chmod -R u+rwX ."), 0); }
    void Write(const std::string& name, const CSampleInfo& info) const {
        temp.MakeFolder(fs::path(name).parent_path().string());
        ASSERT_EQ(WriteSample(Path(name), info, sampletest::NumberedScans(10)), 0) << name;
    }
    int Lanetools(const std::string& words) const {
        return Run(testsupport::WithoutPrivileges() + LANETOOLS_PROGRAM " " + words);
    }
    bool HasPrinted(const std::string& text) const { return temp.Read("printed").find(text) != std::string::npos; }
    nlohmann::json Page(const std::string& name) const {
        const std::string text = temp.Read(name), start = "id=\"plate\">";
        const std::size_t at = text.find(start) + start.size();
        return nlohmann::json::parse(text.substr(at, text.find("</script>", at) - at));
    }
    // All three subcommands; `line` is on standard error and on the page of p1, which has `samples` rows.
    void ExpectNamed(const std::string& line, std::size_t samples, bool isRaw) const {
        EXPECT_EQ(Lanetools("summary out --raw plates --min-pass 0 -o table"), 3) << line;
        EXPECT_TRUE(HasPrinted(line + '\n')) << line << '\n' << temp.Read("printed");
        EXPECT_NE(temp.Read("table").find("p1/b\tb\tcalled"), std::string::npos) << "the rest is done";
        EXPECT_EQ(Lanetools("export out -o reads --format fasta"), isRaw ? 0 : 3) << line;
        const std::string path = line.substr(0, line.find(": ", 11)), reason = line.substr(path.size());
        EXPECT_EQ(HasPrinted(path + reason) || HasPrinted(path + ": not exported" + reason), !isRaw)
            << temp.Read("printed");
#ifdef LANEWRIGHT_REPORT
        temp.MakeFolder("pages");
        EXPECT_EQ(Lanetools("report out --raw plates -o pages"), 3) << line;
        EXPECT_TRUE(HasPrinted(line + '\n')) << line << '\n' << temp.Read("printed");
        const nlohmann::json page = Page("pages/p1_X_QX1.html");
        EXPECT_EQ(page["samples"].size(), samples);
        ASSERT_EQ(page["unread"].size(), 1u) << page["unread"];
        const std::string shown =
            page["unread"][0][0].get<std::string>() + ": " + page["unread"][0][1].get<std::string>();
        EXPECT_EQ("lanetools: " + shown, line);
#endif
    }
    std::string Line(const std::string& name, const std::string& reason = "Permission denied") const {
        return "lanetools: " + fs::canonical(Path("")).string() + '/' + name + ": " + reason;
    }
};

TEST_F(Unread, IsNamedAndTheRestIsDone) {
    const std::pair<std::string, bool> cases[] = {
        {"out/p2_X_QX1", false}, {"out/p1_X_QX1/a.esd", false}, {"plates/p2", true}, {"plates/p1/a.rsd", true}};
    for (const auto& [name, isRaw] : cases) {
        const auto rights = fs::status(Path(name)).permissions();
        fs::permissions(Path(name), fs::perms::none);
        ExpectNamed(Line(name), 2, isRaw);
        fs::permissions(Path(name), rights);
    }
    // The wells of a folder that cannot be listed are not just missing.
    fs::permissions(Path("out/p2_X_QX1"), fs::perms::none);
    EXPECT_EQ(Lanetools("summary out --raw plates"), 3);
    EXPECT_TRUE(HasPrinted("missing\tThe folder of the results cannot be listed: Permission denied\t"));
    // Without anything that can be read nothing is written.
    EXPECT_EQ(Lanetools("summary out/p2_X_QX1 -o none"), 2);
    EXPECT_TRUE(HasPrinted(Line("out/p2_X_QX1") + '\n')) << temp.Read("printed");
    EXPECT_FALSE(temp.Has("none"));
}

TEST_F(Unread, AFileThatIsMostlyAHoleTakesNoMemory) {
    for (const std::string name : {"plates/p1/a.rsd", "out/p1_X_QX1/a.esd"}) {
        const std::string whole = temp.Read(name);
        // Its end is that of a good sample.
        ASSERT_EQ(Run("tail -c 2700 " + name + " > end && truncate -s 3G " + name + " && cat end >> " + name), 0);
        ExpectNamed(Line(name, "too large for a run: more than 64 MiB"), 2, name.starts_with("plates"));
        temp.Write(name, whole);
    }
}

#ifdef LANEWRIGHT_REPORT
TEST_F(Unread, PagesAreThoseThatWereAskedFor) {
    EXPECT_EQ(Lanetools("report out/p1_X_QX1 --raw plates -o page.html"), 0) << temp.Read("printed");
    EXPECT_EQ(Page("page.html")["samples"].size(), 2u);
    EXPECT_EQ(Lanetools("report out/p1_X_QX1 --raw plates/p1 plates/p2 -o pages"), 0) << "a plate that is named";
    EXPECT_TRUE(temp.Has("pages/p2.html"));
    EXPECT_EQ(Lanetools("summary out/p1_X_QX1 --raw plates"), 0);
    EXPECT_FALSE(HasPrinted("p2/c")) << temp.Read("printed");
    // Standard output that takes no name.
    EXPECT_EQ(Run(LANETOOLS_PROGRAM " report out -o pages > /dev/full; test $? = 1"), 0);
}

TEST_F(Unread, ResultsAreOnTheDiskWhenTheCommandEnds) {
    const std::string cut =
        "ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" STORAGE_SHIM " STORAGE_CUT=end " LANETOOLS_PROGRAM;
    EXPECT_EQ(Run(cut + " report out -o pages"), 0);
    EXPECT_EQ(Page("pages/p2_X_QX1.html")["samples"].size(), 1u);
    EXPECT_EQ(Run(cut + " summary out -o table && tail -n 1 table"), 0);
    EXPECT_NE(temp.Read("printed").find("called"), std::string::npos);
    EXPECT_EQ(Run(cut + " summary out --format multiqc -o multiqc"), 0);
    EXPECT_GT(fs::file_size(Path("multiqc/lanetools_wells_mqc.html")), 0u);
    CSampleInfo info = sampletest::RawInfo(10);
    info.processed = true;
    info.analysis.basesCalled = 1;
    info.analysis.sequence = "A";
    info.analysis.qualityScores = {99};
    info.analysis.peakPositions = {5};
    info.analysis.descriptors = {0};
    info.analysis.strengths = {{}};
    Write("out/p1_X_QX1/a.esd", info);
    EXPECT_EQ(Run(cut + " export out --format fasta -o reads"), 0);
    EXPECT_EQ(temp.Read("reads/p1_X_QX1/a.fasta"), ">a\nA\n");
}

TEST_F(Unread, ReportsAtOnceMakeOneFolder) {
    const std::string one = std::string(LANETOOLS_PROGRAM) + " report out -o pages > ";
    for (int round = 0; round < 10; ++round) {
        fs::remove_all(Path("pages"));
        ASSERT_EQ(Run("for i in 1 2 3 4 5 6; do " + one +
                      "said$i & pids=\"$pids $!\"; done; "
                      "for p in $pids; do wait $p || exit 9; done"),
                  0)
            << temp.Read("printed");
        EXPECT_TRUE(temp.Has("pages/p1_X_QX1.html") && temp.Has("pages/p2_X_QX1.html"));
    }
}
#endif

}  // namespace
