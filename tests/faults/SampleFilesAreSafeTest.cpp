// SPDX-License-Identifier: MIT
// Whatever name leads to a sample file, no part of a run changes it.
#include <unistd.h>

#include "run/ProgramFixture.h"

using programtest::CountOf;
using programtest::RunResult;

namespace {

// What a run writes, and what becomes of a link to a sample file in its place.
enum class LinkIs { Kept, Replaced, AStoredSample };
struct Written {
    const char* name;
    LinkIs link;
};
// For the good sample "a" and the failed one "bad".
constexpr Written written[] = {{"plate/basecall.log", LinkIs::Kept},
                               {"plate/log.xml", LinkIs::Kept},
                               {"plate/log.xml.temp", LinkIs::Kept},
                               {"out/out.seq", LinkIs::Kept},
                               {"out/plate_T10_QX1/FASTA/plate_T10_QX1.seq", LinkIs::Kept},
                               {"out/plate_T10_QX1/a.esd", LinkIs::AStoredSample},
                               {"out/plate_T10_QX1/bad.fsd", LinkIs::AStoredSample},
                               {"plate/Text/a.txt", LinkIs::Replaced},
                               {"out/plate_T10_QX1/ABD/a.abd", LinkIs::Replaced},
                               {"out/plate_T10_QX1/SCF/a.scf", LinkIs::Replaced},
                               {"out/plate_T10_QX1/Text/a.txt", LinkIs::Replaced},
                               {"out/plate_T10_QX1/FASTA/a.seq", LinkIs::Replaced}};

class SampleFilesAreSafe : public programtest::ProgramTest {
  protected:
    // Runs over a plate of a good and a failed sample, with two sample files that lie elsewhere, one of them under
    // another name. `sample`, which `link` leads to, must stay as it was.
    RunResult RunWith(const std::string& sample, const std::string& link, bool isSymbolic, const std::string& words) {
        for (const char* folder : {"plate", "out", "elsewhere"})
            std::filesystem::remove_all(Path(folder));
        for (const char* folder : {"plate/Text", "elsewhere", "out/plate_T10_QX1/ABD", "out/plate_T10_QX1/SCF",
                                   "out/plate_T10_QX1/Text", "out/plate_T10_QX1/FASTA"})
            temp.MakeFolder(folder);
        for (const char* name : {"plate/a.rsd", "plate/b.esd", "elsewhere/c.rsd", "elsewhere/d.data"})
            MakeSample(name);
        MakeSample("plate/bad.rsd", 13);
        if (!link.empty()) {
            EXPECT_EQ((isSymbolic ? ::symlink : ::link)(Path(sample).c_str(), Path(link).c_str()), 0);
        }
        const std::string before = temp.Has(sample) ? temp.Read(sample) : "";
        const RunResult run = Run("-IP plate -OD out -BC " + words, "timeout 60");
        EXPECT_EQ(run.exitCode, 0);
        if (before.empty()) return run;
        if (!temp.Has(sample))
            ADD_FAILURE() << sample << " is gone";
        else
            EXPECT_TRUE(temp.Read(sample) == before) << sample << " has changed";
        return run;
    }
};

}  // namespace

TEST_F(SampleFilesAreSafe, WhereverALinkToThemLies) {
    for (const auto& [name, becomes] : written)
        for (const std::string sample : {"plate/a.rsd", "plate/b.esd", "elsewhere/c.rsd", "elsewhere/d.data"})
            for (const bool isSymbolic : {true, false}) {
                // Only the samples of the input are known by a second name.
                if (!isSymbolic && sample.starts_with("elsewhere")) continue;
                SCOPED_TRACE(name + (" leads to " + sample));
                const RunResult run = RunWith(sample, name, isSymbolic, "-ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT");
                if (!isSymbolic) continue;
                const bool isKept = std::filesystem::is_symlink(Path(name));
                if (becomes == LinkIs::Replaced) {
                    EXPECT_FALSE(isKept);
                }
                // What a kept link prevents from being written is missed by somebody.
                if (isKept && becomes == LinkIs::Kept) {
                    EXPECT_NE(run.errors.find("lanewright: warning: "), std::string::npos) << run.errors;
                }
            }
}

// Nor does a link make a file that looks like a sample.
TEST_F(SampleFilesAreSafe, NoneIsMadeThroughALink) {
    for (const auto& [name, becomes] : written) {
        SCOPED_TRACE(name);
        const RunResult run = RunWith("elsewhere/none.rsd", name, true, "-ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT");
        EXPECT_FALSE(temp.Has("elsewhere/none.rsd"));
        // The former state of the log is renamed, which needs no look at what has the name.
        if (becomes == LinkIs::Kept && std::string(name) != "plate/log.xml.temp") {
            EXPECT_GE(CountOf("place of a sample file", run.errors), 1u) << run.errors;
        }
    }
    for (const char* fasta : {"-FA out/all.seq", "-FA_ out/all.seq"}) {
        const RunResult run = RunWith("elsewhere/none.rsd", "out/all.seq", true, fasta);
        EXPECT_FALSE(temp.Has("elsewhere/none.rsd"));
        EXPECT_TRUE(std::filesystem::is_symlink(Path("out/all.seq")));
        EXPECT_EQ(CountOf("cannot open file out/all.seq for writing \r\n", run.output), 2u) << run.output;
    }
}

TEST_F(SampleFilesAreSafe, StartUpLogIsNone) {
    for (const char* sample : {"elsewhere/c.rsd", "elsewhere/d.data"})
        for (const bool isSymbolic : {true, false}) {
            std::filesystem::remove(Path("bin/BaseCallStartUp.log"));
            const RunResult run = RunWith(sample, "bin/BaseCallStartUp.log", isSymbolic, "");
            EXPECT_EQ(CountOf("BaseCallStartUp.log is or leads to the place of a sample file", run.errors), 1u);
        }
}

// The 25th byte from the end of a sequence is often that of a version.
TEST_F(SampleFilesAreSafe, TextIsNotTakenForOne) {
    constexpr std::uint32_t scans = 10990;  // 1,099 bases, longer than a trailer
    for (const char* name : {"plate/a.rsd", "plate/b.rsd", "plate/c.rsd"})
        MakeSample(name, 500, scans);
    const std::string plateFile = "out/plate_T10_QX1/FASTA/plate_T10_QX1.seq";
    temp.MakeFolder("out/plate_T10_QX1/FASTA");
    temp.MakeFolder("far");
    const std::vector<std::string> files{"all.seq", "out/out.seq", plateFile};
    for (const std::string& file : files)
        std::filesystem::create_symlink(Path("far/" + std::filesystem::path(file).filename().string()), Path(file));
    EXPECT_EQ(Run("-IP plate -OD out -BC -FA_ all.seq -FAG -FAP").errors, "");
    for (const std::string& file : files) {
        EXPECT_TRUE(std::filesystem::is_symlink(Path(file))) << file;
        EXPECT_EQ(CountOf("\t1099\tQuillion", temp.Read(file)), 3u) << file;
    }
}

TEST_F(SampleFilesAreSafe, FastaFileMayNotBeOne) {
    for (const std::string sample : {"plate/a.rsd", "./plate/../plate/bad.rsd", "elsewhere/e.rsd"})
        for (const std::string fasta : {"-FA ", "-FA_ "}) {
            SCOPED_TRACE(fasta + sample);
            const bool isLink = sample == "elsewhere/e.rsd";
            const RunResult run =
                RunWith(isLink ? "elsewhere/c.rsd" : sample, isLink ? sample : "", true, fasta + sample);
            // Of the two good samples.
            EXPECT_EQ(CountOf("cannot open file " + sample + " for writing \r\n", run.output), 2u) << run.output;
            EXPECT_GE(CountOf("lanewright: warning: ", run.errors), 1u) << run.errors;
            EXPECT_EQ(CountOf("exported to FASTA", run.output), 0u);
        }
}

TEST_F(SampleFilesAreSafe, OutputBesideTheInput) {
    // The plate's name and the library's suffix lead back to the input, where "a.esd" is both sample and target.
    temp.MakeFolder("plate_T10_QX1");
    std::filesystem::remove_all(Path("plate"));
    std::filesystem::create_symlink(Path("plate_T10_QX1"), Path("plate"));
    MakeSample("plate/a.esd");
    const std::string before = temp.Read("plate/a.esd");
    const RunResult run = Run("-IP plate -OD . -BC -FA");
    EXPECT_TRUE(temp.Read("plate/a.esd") == before);
    EXPECT_EQ(CountOf("successfully", run.output), 0u);
}
