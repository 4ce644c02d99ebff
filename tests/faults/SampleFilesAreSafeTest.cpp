// Whatever name leads to a sample file, no part of a run changes it.
#include <unistd.h>

#include "run/ProgramFixture.h"

using programtest::CountOf;
using programtest::RunResult;

namespace {

// Everything that a run writes for the sample "a" of the plate; "bad" is its failed one.
const char* const written[] = {"plate/basecall.log",
                               "plate/log.xml",
                               "plate/log.xml.temp",
                               "plate/Text/a.txt",
                               "out/out.seq",
                               "out/plate_T10_QX1/a.esd",
                               "out/plate_T10_QX1/bad.fsd",
                               "out/plate_T10_QX1/ABD/a.abd",
                               "out/plate_T10_QX1/SCF/a.scf",
                               "out/plate_T10_QX1/Text/a.txt",
                               "out/plate_T10_QX1/FASTA/a.seq",
                               "out/plate_T10_QX1/FASTA/plate_T10_QX1.seq"};

// Of these, the ones that are made anew each time, so that a link in their place is replaced.
bool IsMadeAnew(const std::string& name) {
    return name.ends_with("/a.txt") || name.ends_with(".abd") || name.ends_with(".scf") || name.ends_with("/a.seq");
}

// Stored samples: a link at their place is a stored sample too.
bool IsStored(const std::string& name) {
    return name.ends_with(".esd") || name.ends_with(".fsd");
}

class SampleFilesAreSafe : public programtest::ProgramTest {
  protected:
    RunResult RunAll(const std::string& switches = "") {
        return Run("-IP plate -OD out -BC -ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT " + switches, "timeout 60");
    }

    // A plate of a good and a failed sample, and two sample files that lie elsewhere, one of them under another name.
    void Begin() {
        for (const char* folder : {"plate", "out", "elsewhere"})
            std::filesystem::remove_all(Path(folder));
        for (const char* folder : {"plate/Text", "elsewhere", "out/plate_T10_QX1/ABD", "out/plate_T10_QX1/SCF",
                                   "out/plate_T10_QX1/Text", "out/plate_T10_QX1/FASTA"})
            temp.MakeFolder(folder);
        for (const char* name : {"plate/a.rsd", "plate/b.esd", "elsewhere/c.rsd", "elsewhere/d.data"})
            MakeSample(name);
        MakeSample("plate/bad.rsd", 13);
    }
};

}  // namespace

TEST_F(SampleFilesAreSafe, LinksAreNotFollowed) {
    for (const std::string name : written)
        for (const std::string sample : {"plate/a.rsd", "plate/b.esd", "elsewhere/c.rsd", "elsewhere/d.data"}) {
            SCOPED_TRACE(name + " leads to " + sample);
            Begin();
            const std::string before = temp.Read(sample);
            std::filesystem::create_symlink(Path(sample), Path(name));
            const RunResult run = RunAll();
            EXPECT_EQ(run.exitCode, 0);
            EXPECT_TRUE(temp.Has(sample) && temp.Read(sample) == before);
            const bool isLink = std::filesystem::is_symlink(Path(name));
            EXPECT_FALSE(isLink && IsMadeAnew(name));
            // What a link keeps from being written is missed by somebody.
            EXPECT_TRUE(!isLink || IsStored(name) || CountOf("lanewright: warning: ", run.errors) > 0) << run.errors;
        }
}

TEST_F(SampleFilesAreSafe, SecondNamesAreKnown) {
    for (const std::string name : written)
        for (const std::string sample : {"plate/a.rsd", "plate/b.esd"}) {
            SCOPED_TRACE(name + " is " + sample);
            Begin();
            const std::string before = temp.Read(sample);
            ASSERT_EQ(::link(Path(sample).c_str(), Path(name).c_str()), 0);
            EXPECT_EQ(RunAll().exitCode, 0);
            EXPECT_TRUE(temp.Has(sample) && temp.Read(sample) == before);
        }
}

TEST_F(SampleFilesAreSafe, FastaFileMayNotBeOne) {
    for (const std::string sample : {"plate/a.rsd", "./plate/../plate/bad.rsd", "elsewhere/e.rsd"})
        for (const std::string fasta : {"-FA ", "-FA_ "}) {
            SCOPED_TRACE(fasta + sample);
            Begin();
            // Also through a link.
            std::filesystem::create_symlink(Path("elsewhere/c.rsd"), Path("elsewhere/e.rsd"));
            const std::string before = temp.Read(sample);
            const RunResult run = Run("-IP plate -OD out -BC " + fasta + sample);
            EXPECT_TRUE(temp.Has(sample) && temp.Read(sample) == before);
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
    EXPECT_EQ(temp.Read("plate/a.esd"), before);
    EXPECT_EQ(CountOf("successfully", run.output), 0u);
}
