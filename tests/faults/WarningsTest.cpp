// SPDX-License-Identifier: MIT
// What is odd about a run and is in no log is reported in warnings, and nothing else changes because of it.
#include <sys/stat.h>

#include "run/ProgramFixture.h"

using programtest::CountOf;
using programtest::RunResult;

namespace {

class Warnings : public programtest::ProgramTest {
  protected:
    // The warnings of a run, which must be all that stands on standard error.
    std::string Of(const std::string& words) {
        const RunResult run = Run(words);
        EXPECT_EQ(run.exitCode, 0) << words;
        const std::string head = "lanewright: warning: ";
        EXPECT_EQ(CountOf(head, run.errors), CountOf("\n", run.errors)) << run.errors;
        return std::regex_replace(run.errors, std::regex(head), "");
    }
};

}  // namespace

TEST_F(Warnings, AreNotGivenForUsualRuns) {
    MakeSample("plate/a.rsd");
    MakeSample("plate/bad.rsd", 13);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(Of("-IP plate -OD out -BC -ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT"), "");
    EXPECT_EQ(Of("-E -IF 'plate/b*.rsd' plate/a.rsd -OD out -BC tenth.so"), "");
}

TEST_F(Warnings, ReportInputThatIsNotThere) {
    MakeSample("plate/a.rsd");
    temp.MakeFolder("empty");
    temp.Write("file", "");
    const std::string output = " -OD out -BC";
    EXPECT_EQ(Of("-IP none file empty" + output),
              "the plate none cannot be listed: No such file or directory\n"
              "the plate file cannot be listed: Not a directory\n"
              "the plate empty contains no samples\n");
    EXPECT_EQ(Of("-IP '*ate' './no*' -ID empty 'no*' missing -IF '*.rsd' 'plate/*.esd'" + output),
              "*ate begins with a wildcard and is ignored\n"
              "./no* matches nothing\n"
              "empty contains no folders\n"
              "no* contains no folders\n"
              "missing cannot be listed: No such file or directory\n"
              "*.rsd begins with a wildcard and is ignored\n"
              "plate/*.esd matches nothing\n");
}

TEST_F(Warnings, ReportWordsThatMayBeMistakes) {
    MakeSample("plate/a.rsd");
    EXPECT_EQ(Of("plate -e -IP plate -scff -OD out -BC tenth.so"),
              "plate comes before the first switch and is ignored\n"
              "-scff is not a known switch and is taken as a parameter of -IP\n"
              "the plate -scff cannot be listed: No such file or directory\n");
}

TEST_F(Warnings, ReportPlatesThatShareAnOutputFolder) {
    temp.MakeFolder("other/plate");
    for (const char* name : {"plate/a.rsd", "other/plate/b.rsd", "other/plate/c.rsd"})
        MakeSample(name);
    const std::string output = " -OD out -BC";
    const std::string shares = " shares its output folder with another plate named plate\n";
    EXPECT_EQ(Of("-IP plate other/plate ./plate" + output),
              "the plate other/plate" + shares + "the plate ./plate is given twice\n");
    // Files of one folder are one input.
    EXPECT_EQ(Of("-IP plate -IF plate/a.rsd other/plate/b.rsd other/plate/c.rsd" + output),
              "the plate other/plate" + shares);
    EXPECT_EQ(Of("-IP plate/" + output), "the plate plate/ has no name, because its path ends with a separator\n");
}

TEST_F(Warnings, SayNothingThatIsNotSo) {
    MakeSample("plate/a.rsd");
    temp.Write("file", "");
    // Nothing is written to a file, so nothing can be missing on its disk.
    const std::string text = Of("-IP plate -OD file -BC");
    EXPECT_TRUE(text.starts_with("the output folder file is not a folder\n")) << text;
    EXPECT_EQ(CountOf("may not be on the disk", text), 0u) << text;
    temp.Write("out/plate_T10_QX1", "");
    EXPECT_TRUE(Of("-IP plate -OD out -BC").starts_with("the output folder out/plate_T10_QX1 is not a folder\n"));
    std::filesystem::remove(Path("out/plate_T10_QX1"));

    std::filesystem::remove(Path("plate/log.xml"));
    temp.MakeFolder("plate/log.xml");
    EXPECT_EQ(Of("-IP plate -OD out -BC"),
              "out/plate_T10_QX1/a.esd cannot be entered in plate\\log.xml: Is a directory\n");
    // Once per plate, however often the run comes back to it.
    temp.MakeFolder("other");
    MakeSample("other/b.rsd");
    MakeSample("plate/c.rsd");
    EXPECT_EQ(CountOf("Is a directory", Of("-IF plate/a.rsd other/b.rsd plate/c.rsd -OD out -BC -SCF")), 1u);
    EXPECT_NE(Run("-IF file/a.rsd -OD out -BC").errors.find("file/a.rsd cannot be examined: Not a directory\n"),
              std::string::npos);
}

TEST_F(Warnings, ReportWhatCannotBeStored) {
    MakeSample("plate/a.rsd");
    std::filesystem::create_directories(Path("out/plate_T10_QX1/Text/a.txt"));
    // The matrix is there and is none.
    temp.Write("bin/dyeMethod1.ini", "ACGT\n1 2 3\n");
    const std::string text = Of("-IP plate -OD out -BC -PROC_TXT");
    EXPECT_EQ(CountOf("dyeMethod1.ini is damaged", text), 1u) << text;
    EXPECT_EQ(CountOf("out/plate_T10_QX1/Text/a.txt cannot be written: Is a directory\n", text), 1u) << text;
    // A file that is not there has no copy either.
    const RunResult run = Run("-IF none.rsd -OD out -BC");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(CountOf("the file none.rsd does not exist\n", run.errors), 1u) << run.errors;
    EXPECT_EQ(CountOf("none.fsd cannot be stored: No such file or directory\n", run.errors), 1u) << run.errors;
}
