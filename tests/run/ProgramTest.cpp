// SPDX-License-Identifier: MIT
#include <poll.h>

#include <thread>

#include "run/ProgramFixture.h"
#include "run/Switches.h"
#include "tracewriter/TraceReaders.h"

using programtest::CountOf;
using programtest::ProgramTest;
using programtest::RunResult;
using sampletest::ReadBack;
using sampletest::ReadBytes;

TEST_F(ProgramTest, PlateIsCalledStoredExportedAndRecorded) {
    MakeSample("plate/b.rsd");
    MakeSample("plate/a.esd");
    const auto raw = ReadBytes(Path("plate/b.rsd"));
    const RunResult first = Run("-IP plate -OD out -BC -FA");
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.errors, "");
    EXPECT_EQ(first.output, temp.Read("plate/basecall.log"));
    EXPECT_EQ(Steady(first.output),
              "\tLoading a.esd  plate  TIME\r\nUsing base order TGCA. \r\n"
              "successfully basecalled a.esd (proc. file name: out/plate_T10_QX1/a.esd) with tenth.so\r\n"
              "exported to FASTA file format \r\n"
              "\tLoading b.rsd  plate  TIME\r\nUsing base order TGCA. \r\n"
              "successfully basecalled b.rsd (proc. file name: out/plate_T10_QX1/b.esd) with tenth.so\r\n"
              "exported to FASTA file format \r\n");
    EXPECT_EQ(StartUpLog(), "Starting Lanewright.exe\nbin/lanewright\n-IP\nplate\n-OD\nout\n-BC\n-FA\n");
    EXPECT_EQ(ReadBytes(Path("plate/b.rsd")), raw);
    const std::string record = temp.Read("out/plate_T10_QX1/FASTA/b.seq");
    EXPECT_TRUE(record.starts_with(">out/plate_T10_QX1/b.esd\t100\tQuillion\r\nACGTACGTACGT")) << record;

    CSampleInfo info;
    std::vector<ScanRecord> scans;
    ReadBack(Path("out/plate_T10_QX1/b.esd"), info, scans);
    EXPECT_TRUE(info.processed);
    EXPECT_EQ(info.analysis.basesCalled, 100);
    EXPECT_EQ(info.analysis.baseCaller, "Tenth");
    EXPECT_EQ(info.analysis.qualityIndex, 75.0f);
    EXPECT_EQ(info.plateId, "plate");

    const RunResult again = Run("-IP plate -OD out -BC -FA");
    EXPECT_EQ(
        CountOf("The processed file out/plate_T10_QX1/a.esd already exists.\r\nskipped out/plate_T10_QX1/a.esd\r\n"
                "exported to FASTA file format \r\n",
                again.output),
        1u);
    EXPECT_EQ(CountOf("basecalled", again.output), 0u);
    EXPECT_EQ(temp.Read("out/plate_T10_QX1/FASTA/b.seq"), record);
    EXPECT_EQ(CountOf("a.esd\t\t\r\n", temp.Read("plate/log.xml")), 1u);
    EXPECT_EQ(CountOf("a.seq\t\t\r\n", temp.Read("plate/log.xml")), 2u);
}

TEST_F(ProgramTest, FailedSamplesLeaveTheirFailedFormsAndTheRunGoesOn) {
    MakeSample("plate/bad.rsd", 13);
    MakeSample("plate/good.rsd");
    temp.MakeFolder("plate/folder.esd");
    temp.Write("plate/empty.rsd", "");
    temp.Write("plate/foreign.esd", std::string(5000, 'x'));
    const RunResult run = Run("-IP plate -OD out -SCF -ABD -FA all.seq -FAP -FAG -RAW_TXT -PROC_TXT");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(CountOf("cannot read the file\n", run.errors), 1u);
    EXPECT_EQ(CountOf("failed to basecall  bad.rsd   with  tenth.so\r\n", run.output), 1u);
    EXPECT_EQ(CountOf("failed to basecall", run.output), 4u);
    EXPECT_EQ(CountOf("successfully", run.output), 1u);
    for (const char* file : {"bad.fsd", "SCF/bad.scf", "ABD/bad.abd", "good.esd", "SCF/good.scf", "ABD/good.abd",
                             "Text/good.txt", "FASTA/plate_T10_QX1.seq"})
        EXPECT_TRUE(temp.Has(std::string("out/plate_T10_QX1/") + file)) << file;
    for (const char* file : {"bad.esd", "Text/bad.txt", "empty.esd", "folder.esd"})
        EXPECT_FALSE(temp.Has(std::string("out/plate_T10_QX1/") + file)) << file;
    for (const char* file : {"all.seq", "out/out.seq", "out/plate_T10_QX1/FASTA/plate_T10_QX1.seq"})
        EXPECT_EQ(CountOf(">", temp.Read(file)), 1u) << file;
    EXPECT_TRUE(temp.Has("plate/Text/bad.txt"));

    CSampleInfo info;
    std::vector<ScanRecord> scans;
    ReadBack(Path("out/plate_T10_QX1/bad.fsd"), info, scans);
    EXPECT_EQ(info.analysis.basecallError, "thirteen brings bad luck");
    EXPECT_EQ(scans.size(), 1u);
    EXPECT_EQ(info.scanCount, 1u);
    EXPECT_EQ(CountOf("bad.fsd\t\t\r\n", temp.Read("plate/log.xml")), 1u);

    std::filesystem::remove_all(Path("out/plate_T10_QX1"));
    Run("-IP plate -OD out -SCF -ABD -FAP -NOEMPTY -PILE -USER_EXT");
    EXPECT_TRUE(temp.Has("out/plate_T10_QX1/good"));
    EXPECT_TRUE(temp.Has("out/plate_T10_QX1/plate_T10_QX1.seq"));
    EXPECT_FALSE(temp.Has("out/plate_T10_QX1/bad"));
}

TEST_F(ProgramTest, OrderOfTheSwitchesIsTheOrderOfTheWork) {
    MakeSample("plate/a.rsd");
    Run("-fa first.seq -bc -ip plate -od out -FA_ first.seq");
    const std::string fasta = temp.Read("first.seq");
    EXPECT_TRUE(fasta.starts_with(">out/plate_T10_QX1/a.esd\t0\tQuillion\r\n\r\n>out")) << fasta;
    EXPECT_EQ(CountOf("\t100\tQuillion\r\n", fasta), 1u);
}

TEST_F(ProgramTest, SeveralLibrariesRunOneAfterTheOther) {
    temp.Write("bin/basecall.ini", "[Base Callers]\nTenth\ttenth.so\nOther\tother.so\n[Default]\nTenth\n");
    MakeSample("plate/a.rsd");
    temp.MakeFolder("single");
    MakeSample("single/b.rsd");
    const RunResult run = Run("-IP plate -IF single/b.rsd -OD out -BC OTHER.so tenth.so none.so -FAG");
    EXPECT_EQ(CountOf("\tLoading a.rsd", run.output), 3u);
    EXPECT_EQ(CountOf("\tLoading b.rsd", run.output), 1u);
    EXPECT_EQ(CountOf("with other.so", run.output), 2u);
    // Both libraries have one code, so the second finds the calls of the first.
    EXPECT_EQ(CountOf("already exists", run.output), 4u);
    EXPECT_EQ(CountOf("none.so  is not listed in ", run.output), 2u);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(CountOf(">", temp.Read("out/out.seq")), 6u);
    EXPECT_LT(run.output.find("a.rsd (proc. file name"), run.output.find("\tLoading b.rsd"));
}

TEST_F(ProgramTest, ExitCodeFollowsTheLastSingleFile) {
    MakeSample("plate/a.rsd");
    MakeSample("plate/bad.rsd", 13);
    temp.Write("plate/strange.abd", std::string("ABIF\0etdir\0", 11));
    EXPECT_EQ(Run("-IF plate/bad.rsd plate/strange.abd plate/a.rsd -OD out -BC").exitCode, 0);
    EXPECT_EQ(Run("-IF plate/a.rsd plate/bad.rsd -OD out -BC").exitCode, 1);
    const RunResult strange = Run("-IF plate/a.rsd plate/strange.abd -OD out -BC");
    EXPECT_EQ(strange.exitCode, 1);
    EXPECT_TRUE(strange.output.ends_with("skipped plate/strange.abd\r\n"));
    EXPECT_EQ(Run("-IF plate/a.rsd -OD out").exitCode, 1);
    MakeSample("here.rsd");
    EXPECT_EQ(Run("-IF here.rsd -OD out -BC").exitCode, 0);
    EXPECT_EQ(CountOf("successfully basecalled here.rsd", temp.Read("basecall.log")), 1u);
    EXPECT_TRUE(temp.Has("out/" + temp.Path().substr(temp.Path().rfind('/') + 1) + "_T10_QX1/here.esd"));
    EXPECT_EQ(Run("-IP plate -OD out").exitCode, 0);
    EXPECT_EQ(Run("-IF plate/a.rsd -OD out -ABD").exitCode, 0);
    std::filesystem::remove_all(Path("out/plate_T10_QX1/ABD"));
    temp.Write("out/plate_T10_QX1/ABD", "in the way of the folder");
    EXPECT_EQ(Run("-IF plate/a.rsd -OD out -ABD").exitCode, 1);
}

TEST_F(ProgramTest, UnattendedRunsReportToTheStartUpLog) {
    MakeSample("plate/a.rsd");
    const RunResult nameless = Run("-E -IP plate -OD out -BC");
    EXPECT_EQ(nameless.exitCode, 1);
    EXPECT_EQ(nameless.output, "You have to pass basecaller DLL when using switch '-e'  \r\n");
    EXPECT_EQ(nameless.errors, "");
    EXPECT_TRUE(StartUpLog().ends_with("-BC\n" + nameless.output));
    const RunResult missing = Run("-E -IP plate -OD out -BC '%s.so'");
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(StartUpLog().ends_with("Cannot load %s.so \r\n"));

    const RunResult second = Run("-e -IP plate -OD out -BC other.so tenth.so -BO GATCX");
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_EQ(CountOf("tenth.so  is not listed in ", StartUpLog()), 1u);
    EXPECT_EQ(CountOf("Using base order ACTG. \r\n", second.output), 2u);
    CSampleInfo info;
    std::vector<ScanRecord> scans;
    ReadBack(Path("out/plate_T10_QX1/a.esd"), info, scans);
    EXPECT_EQ(info.analysis.baseCaller, "");
}

TEST_F(ProgramTest, RunsThatCannotStartSayWhy) {
    MakeSample("plate/a.rsd");
    const RunResult folder = Run("-IP plate -OD no/such/folder -BC");
    EXPECT_EQ(folder.exitCode, 1);
    EXPECT_EQ(folder.output, "Specified path doesn't exist: no/such/folder\r\n");
    EXPECT_EQ(folder.errors, folder.output);
    EXPECT_EQ(Run("-IP plate -OD no/such/folder -BC -OD out").exitCode, 0);

    EXPECT_EQ(Run("-IP plate -BC").exitCode, 0);
    EXPECT_TRUE(temp.Has("analyzed/plate_T10_QX1/a.esd"));
    const RunResult store = Run("-IP plate -BC", "QUILLION_REGISTRY=nowhere");
    EXPECT_EQ(store.exitCode, 1);
    EXPECT_EQ(store.errors, "Cannot locate    file \r\n");
    EXPECT_EQ(store.output, "");
    temp.Write("bin/registry.ini", "[Quillion\\Base Calling]\nPath = .\n");
    EXPECT_EQ(Run("-IP plate -BC").output, "Cannot read registry key AnalyzedDataPath  \r\n");
    // The store is named relative to the working folder, which moves while a library loads.
    temp.Write("bin/registry.ini",
               "[Quillion\\Base Calling]\nPath = D:\\bin\nAnalyzedDataPath = d:/new\n[Drives]\nD = ../\n");
    EXPECT_EQ(CountOf("successfully", Run("-IP plate -BC").output), 1u);
    temp.Write("bin/basecall.ini", "[Base Callers]\nTenth tenth.so\n");
    EXPECT_EQ(CountOf(" in Base Callers section. The program will be terminated \r\n.", Run("-IP plate").output), 1u);
}

TEST_F(ProgramTest, HelpStandsOnStandardOutputAndTheRunGoesOn) {
    MakeSample("plate/a.rsd");
    const RunResult help = Run("-h -IP plate -OD out -BC");
    EXPECT_TRUE(help.output.starts_with("LANEWRIGHT SWITCHES \r\nAll the switches"));
    EXPECT_EQ(CountOf("\r\n-", help.output), AllSwitches().size());
    EXPECT_LT(help.output.find("press any key\tLoading a.rsd"), help.output.find("successfully"));
}

TEST_F(ProgramTest, ExportsCallFirstUnlessTheyNeedNot) {
    MakeSample("plate/a.rsd");
    for (const std::string word : {"-ABD", "-SCF", "-PROC_TXT", "-FAP", "-FAG", "-FA", "-FA_", "-RAW_TXT"}) {
        std::filesystem::remove_all(Path("out/plate_T10_QX1"));
        const bool calls = word != "-FA" && word != "-FA_" && word != "-RAW_TXT";
        EXPECT_EQ(CountOf("successfully", Run("-IP plate -OD out " + word).output), calls ? 1u : 0u) << word;
    }
}

TEST_F(ProgramTest, SwitchesThatAreRepeatedEmptyOrTogether) {
    temp.Write("bin/basecall.ini", "[Base Callers]\nTenth\ttenth.so\nOther\tother.so\n[Default]\nTenth\n");
    MakeSample("plate/a.rsd");
    const auto run = [&](const std::string& words) { return Run("-IP plate -OD out " + words); };
    run("-BC -FA own.seq -FA_ own.seq -FAP -FAG -ABD -SCF -GOOD_SEQ");
    for (const char* file : {"own.seq", "out/out.seq", "out/plate_T10_QX1/FASTA/plate_T10_QX1.seq"})
        EXPECT_EQ(CountOf("a.esd\t98\tQuillion\r\nCGTA", temp.Read(file)), file[1] == 'w' ? 2u : 1u) << file;
    EXPECT_EQ(ReadAbif(Path("out/plate_T10_QX1/ABD/a.abd"))["PBAS1"].count, 98u);
    EXPECT_EQ(ReadScf(Path("out/plate_T10_QX1/SCF/a.scf")).letters.size(), 98u);
    // One deletes the file of an earlier run, the other adds to it.
    for (const auto& [words, records] : {std::pair("-FA own.seq -FA own.seq", 2u), {"-FA_ own.seq", 3u}}) {
        run(words);
        EXPECT_EQ(CountOf(">", temp.Read("own.seq")), records) << words;
    }
    EXPECT_EQ(CountOf("\tLoading", run("-BC tenth.so -ABD -BC other.so").output), 2u);
    EXPECT_EQ(CountOf("exported to ABD", run("-ABD -SCF -ABD").output), 2u);
    EXPECT_EQ(Run("-IP plate -OD '' -BC '' -FA ''").errors, "");
    EXPECT_TRUE(temp.Has("analyzed/plate_T10_QX1/FASTA/a.seq"));
    for (const auto& [words, order] :
         {std::pair("", "TGCA"), {"-BO", "ACTG"}, {"-BO GAT", "ACTG"}, {"-BO GATC", "GATC"}})
        EXPECT_EQ(CountOf(std::string("order ") + order, run("-BC " + std::string(words)).output), 1u) << words;
    // A default that does not load does not matter to a run with another library.
    temp.Write("bin/basecall.ini", "[Base Callers]\nGone\tgone.so\nOther\tother.so\n[Default]\nGone\n");
    EXPECT_EQ(run("-BC other.so").exitCode, 0);
    EXPECT_EQ(run("-BC").exitCode, 1);
}

TEST_F(ProgramTest, SkippedSamplesOfAPlateAreReported) {
    CSampleInfo info = sampletest::RawInfo(3);
    info.processed = true;
    ASSERT_EQ(WriteSample(Path("plate/a.esd"), info, sampletest::NumberedScans(3)), 0);
    const std::string skipped = "skipped plate\\a.esd\r\n";
    const RunResult plate = Run("-IP plate -OD out -BC"), file = Run("-IF 'plate\\a.esd' -OD out -BC");
    EXPECT_EQ(plate.errors, skipped);
    EXPECT_EQ(CountOf(skipped, plate.output), 2u);  // of the log, and of the report
    EXPECT_EQ(CountOf(skipped, file.output + file.errors), 1u);
    Run("-E -IP plate -OD out -BC tenth.so");
    EXPECT_TRUE(StartUpLog().ends_with(skipped));
}

// With as much room as a run may need nobody is asked, with one byte less it is a question whether to go on.
TEST_F(ProgramTest, DiskSpaceIsAskedForByTheNumberOfResults) {
    temp.Write("bin/basecall.ini", "[Base Callers]\nTenth\ttenth.so\nOther\tother.so\n[Default]\nTenth\n");
    temp.MakeFolder("single");
    for (const char* name : {"plate/a.rsd", "plate/b.rsd", "single/c.rsd"})
        MakeSample(name);
    const auto run = [&](const std::string& words, int units, int missing, const std::string& answer) {
        const std::string free = std::to_string(50000000 + 20000 * units - missing);
        return Run("-OD out " + words, "env ASAN_OPTIONS=verify_asan_link_order=0 FREE_AT=out FREE_BYTES=" + free +
                                           answer + " LD_PRELOAD=" LANEWRIGHT_TEST_LIBRARIES "/space.so");
    };
    for (const auto& [words, units] : {std::pair("-IP plate -BC -ABD -FA", 6),
                                       {"-IP plate -BC tenth.so other.so -FA", 8},
                                       {"-IP plate", 0},
                                       {"-IF plate/a.rsd plate/b.rsd single/c.rsd -BC -FA", 6},
                                       {"-E -BC tenth.so other.so -IF single/c.rsd", 2}}) {
        SCOPED_TRACE(words);
        const RunResult enough = run(words, units, 0, ""), refused = run(words, units, 1, ""),
                        granted = run(words, units, 1, " LANEWRIGHT_ANSWER=yes");
        EXPECT_EQ(CountOf("not enough disk space", refused.errors + granted.errors), 2u);
        EXPECT_EQ(CountOf("not enough disk space", enough.errors), 0u);
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_EQ(CountOf("\tLoading", refused.output), 0u);
        EXPECT_EQ(granted.exitCode, 0);
        EXPECT_EQ(CountOf("\tLoading", granted.output), CountOf("\tLoading", enough.output));
    }
    EXPECT_EQ(run("-IP plate -IF single/c.rsd -BC", 2, 1, "").output, "");
}

// A file that is a running program cannot be opened for writing.
TEST_F(ProgramTest, MarkupLogThatIsHeldForAWhileGetsItsEntries) {
    MakeSample("plate/a.rsd");
    std::filesystem::copy_file("/bin/sleep", Path("plate/log.xml"));
    std::thread holder([&] { EXPECT_EQ(std::system((Path("plate/log.xml") + " 1").c_str()), 0); });
    ::poll(nullptr, 0, 200);
    EXPECT_EQ(Run("-IP plate -OD out -BC -FA").errors, "");
    holder.join();
    for (const char* name : {"a.esd\t\t\r\n", "a.seq\t\t\r\n"})
        EXPECT_EQ(CountOf(name, temp.Read("plate/log.xml")), 1u);
}
