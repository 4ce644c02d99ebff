// SPDX-License-Identifier: MIT
#include "run/ProgramFixture.h"
#include "run/Switches.h"

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

    std::filesystem::remove_all(Path("out/plate_T10_QX1"));
    Run("-IP plate -OD out -SCF -ABD -NOEMPTY -PILE -USER_EXT");
    EXPECT_TRUE(temp.Has("out/plate_T10_QX1/good"));
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
    EXPECT_EQ(Run("-IP plate -OD out").exitCode, 0);
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
