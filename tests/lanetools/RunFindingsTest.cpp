// SPDX-License-Identifier: MIT
// Each finding of "lanetools run", provoked once: its line appears, the exit code is 2, and nothing was written.
#include <sys/stat.h>
#include <unistd.h>

#include "lanetools/RunFixture.h"
#include "lanetools/run/Checks.h"

using lanetest::RunResult;

namespace {

class RunFindings : public lanetest::RunTest {
  protected:
    void SetUp() override {
        RunTest::SetUp();
        MakeSample("plate/a.rsd");
        MakeSample("plate/b.rsd");
    }

    std::string Names(const std::string& folder) const {
        std::string names;
        for (const auto& [name, bytes] : Files(folder))
            names += name + ' ';
        return names;
    }

    void ExpectRefused(const std::string& words, const std::string& line, const std::string& before = "") const {
        SCOPED_TRACE(words);
        for (const char* name : {"stdout.txt", "stderr.txt", "bin/BaseCallStartUp.log"})
            std::filesystem::remove(Path(name));
        const auto state = Files("");
        const RunResult run = RunTool(words, before);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_NE(("\n" + run.errors).find("\nlanetools: " + line), std::string::npos) << run.errors;
        EXPECT_EQ(run.output, "");
        for (const char* name : {"stdout.txt", "stderr.txt"})
            std::filesystem::remove(Path(name));
        EXPECT_TRUE(Files("") == state) << "something was written";
    }
};

}  // namespace

TEST_F(RunFindings, Plates) {
    temp.MakeFolder("empty");
    temp.MakeFolder("strange");
    MakeSample("strange/a*.rsd");
    temp.MakeFolder("twins");
    MakeSample("twins/x.rsd");
    MakeSample("twins/x.esd");
    temp.MakeFolder("logless/basecall.log");
    MakeSample("logless/a.rsd");
    ExpectRefused("nowhere -o out", "nowhere: the plate cannot be read: No such file or directory\n");
    ExpectRefused("plate/a.rsd -o out", "plate/a.rsd: the plate cannot be read: it is not a folder\n");
    ExpectRefused("empty -o out", "empty: the plate holds no samples");
    ExpectRefused("strange -o out", Path("strange/a*.rsd") + ": the program does not take a name with ");
    ExpectRefused("twins -o out", Path("twins/x.rsd") + ": it shares its result with x.esd");
    temp.MakeFolder("nameless");
    MakeSample("nameless/.rsd");
    temp.Write("nameless/a\\b.rsd", temp.Read("plate/a.rsd"));
    ExpectRefused("nameless -o out", Path("nameless/.rsd") + ": a sample needs a name before its extension\n");
    ExpectRefused("nameless -o out", Path("nameless/a\\b.rsd") + ": the program does not take a name with ");
    ExpectRefused("logless -o out", Path("logless/basecall.log") + ": the log cannot be written: Is a directory\n");
}

TEST_F(RunFindings, FoldersThatAreNoPlates) {
    MakeSample("plate/c.rsd", lanetest::failing);
    ASSERT_EQ(RunTool("plate -o out").exitCode, 3);
    const std::string results = "out/plate_FRA_QX1";
    ExpectRefused(results + " -o out2", results + ": it holds results of the program, and a plate is a folder of raw ");
    temp.Write("run 1/a.ab1", "ABIF");
    ExpectRefused(
        "'run 1' -o out",
        "run 1: it holds files of an instrument (.ab1, .abi): import them first, with lanetools import 'run 1'");
    temp.MakeFolder("plates/one");
    MakeSample("plates/one/a.rsd");
    ExpectRefused("plates -o out", "plates: it holds plates: name its subfolders, as in plates/*\n");
}

TEST_F(RunFindings, PlateThatOthersOwn) {
    const bool isRoot = geteuid() == 0;
    ASSERT_EQ(std::system(("chmod 755 '" + temp.Path() + "' && chmod 555 '" + Path("plate") + "'").c_str()), 0);
    ExpectRefused("plate -o out", Path("plate") + ": no log can be written there: Permission denied\n",
                  isRoot ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "");
    ASSERT_EQ(std::system(("chmod 755 '" + Path("plate") + "'").c_str()), 0);
}

TEST_F(RunFindings, Switches) {
    for (const std::string word : {"-IP", "-ID", "-IF", "-OD"})
        ExpectRefused("plate -o out -- -BC " + word + " x",
                      word + ": input and output are given to lanetools itself\n");
    ExpectRefused("plate -o out -- -BC -ABDD", "-ABDD: it is not a switch, and the program would take it as ");
    ExpectRefused("plate -o out -- BC -ABD", "BC: it is not a switch, and the program would ignore it\n");
    ExpectRefused("plate -o out -- -ABD -SCF tenth.so", "tenth.so: -SCF does not take it");
    ExpectRefused("plate -o out -- -BO ACG", "ACG: -BO takes four letters");
    ExpectRefused("plate -o out -- -FA nowhere/all.seq", "nowhere/all.seq: the file cannot be written: No such file");
    temp.MakeFolder("second");
    MakeSample("second/a.rsd");
    ExpectRefused("plate second -o out -- -FA all.seq", "all.seq: -FA creates its file again for each plate");
}

TEST_F(RunFindings, Libraries) {
    ExpectRefused("plate -o out -- -BC other.so", "other.so: the library is not listed in ");
    ExpectRefused("plate -o out -- -E", "-E: -BC must name a library with it\n");
    ExpectRefused("plate -o out -- -E -BC tenth.so fragile.so", "fragile.so: with -E the program loads the first ");
    temp.Write("bin/not.so", "no library");
    Copy(LANEWRIGHT_TEST_LIBRARIES "/lacking.so", "bin/lacking.so");
    Copy(LANEWRIGHT_TEST_LIBRARIES "/hostile.so", "bin/hostile.so");
    temp.Write("bin/basecall.ini",
               "[Base Callers]\nNot\tnot.so\nLacking\tlacking.so\nTenth\ttenth.so\nHostile\thostile.so\n"
               "[Default]\nNobody\n");
    ExpectRefused("plate -o out -- -BC not.so", "not.so: the library does not load\n");
    ExpectRefused("plate -o out -- -BC lacking.so", "lacking.so: the library lacks the entry point ReportSequence\n");
    ExpectRefused("plate -o out", Path("bin/basecall.ini") + ": the default library \"Nobody\" is not listed");
    // All that are listed are loaded, whichever is to run.
    for (const std::string at : {"load", "CleanUp"}) {
        ExpectRefused("plate -o out -- -BC tenth.so", "hostile.so: the library crashes (SIGABRT) ",
                      "MISCHIEF=crashes MISCHIEF_AT=" + at);
        ExpectRefused("plate -o out -- -BC tenth.so", "hostile.so: the library ends the process ",
                      "MISCHIEF=exits MISCHIEF_AT=" + at);
    }
    temp.Write("bin/basecall.ini", "[Base Callers]\nTenth = tenth.so\n");
    ExpectRefused("plate -o out", Path("bin/basecall.ini") + ": the line \"Tenth = tenth.so\" of its base callers");
    std::filesystem::remove(Path("bin/basecall.ini"));
    ExpectRefused("plate -o out", "basecall.ini: the registry's Path");
}

TEST_F(RunFindings, SharedOutputs) {
    temp.MakeFolder("more/plate");
    MakeSample("more/plate/a.rsd");
    ASSERT_EQ(symlink("plate", Path("link").c_str()), 0);
    ExpectRefused("plate more/plate/ -o out", "more/plate/: it shares its output folder with plate, ");
    ExpectRefused("plate ./link/. -o out", "./link/.: the plate is given twice\n");
    ExpectRefused("plate -o out -- -BC tenth.so fragile.so", Path("out/plate_T10_QX1") + ": the results of plate by ",
                  "FRAGILE_CODE=T10");
    temp.MakeFolder("plate_X");
    MakeSample("plate_X/a.rsd");
    ExpectRefused("plate plate_X -o out -- -BC fragile.so tenth.so", Path("out/plate_X_T10_QX1") + ": the results of ",
                  "FRAGILE_CODE=X_T10");
}

TEST_F(RunFindings, Output) {
    ExpectRefused("plate -o plate/out", Path("plate/out") + ": the output is inside the plate " + Path("plate") + "\n");
    ExpectRefused("plate -o plate/", Path("plate") + ": the output is inside the plate " + Path("plate") + "\n");
    temp.MakeFolder("out/plate_FRA_QX1/raw");
    MakeSample("out/plate_FRA_QX1/raw/a.rsd");
    ExpectRefused("plate out/plate_FRA_QX1/raw -o out",
                  "out/plate_FRA_QX1/raw: the plate is inside a folder of results");
    ExpectRefused("plate -o no/where", Path("no/where") + ": no results can be written there: No such file");
    temp.Write("file", "");
    ExpectRefused("plate -o file", Path("file") + ": no results can be written there: Not a directory\n");
    temp.Write("out2/plate_FRA_QX1", "");
    ExpectRefused("plate -o out2", Path("out2/plate_FRA_QX1") + ": no results can be written there: Not a directory\n");
}

// Two samples by two libraries with a base call and an export each: 8 results of 20,000 bytes on top of the reserve.
TEST_F(RunFindings, Room) {
    lanetools::CRunPlan plan = {.options = {},
                                .program = {},
                                .switches = lanetools::CSwitchWords({"-BC", "a", "b", "-ABD"}),
                                .plates = {{"plate", Path("plate"), "plate", "", {"a.rsd", "b.rsd"}}},
                                .output = Path("out"),
                                .room = 50'160'000,
                                .libraries = {},
                                .outputs = {},
                                .damaged = {},
                                .foreign = {}};
    plan.libraries.chosen = {{"a", {}}, {"b", {}}};
    lanetools::CFindings enough, tooLittle;
    lanetools::CheckRoom(plan, enough);
    EXPECT_TRUE(enough.Lines().empty());
    --*plan.room;
    lanetools::CheckRoom(plan, tooLittle);
    ASSERT_EQ(tooLittle.Lines().size(), 1u);
    EXPECT_EQ(tooLittle.Lines()[0], Path("out") + ": too little free space: 50 MB of 51 MB");
}

TEST_F(RunFindings, StoredResults) {
    ASSERT_EQ(RunTool("plate -o out").exitCode, 0);
    const std::string raw = temp.Read("plate/b.rsd");
    const std::string finding = Path("out/plate_FRA_QX1/b.esd") + ": it is not the result of " + Path("plate/b.rsd");
    CSampleInfo info = sampletest::RawInfo(1000);
    info.runStart = 1;
    std::filesystem::remove(Path("plate/b.rsd"));
    ASSERT_EQ(WriteSample(Path("plate/b.rsd"), info, sampletest::NumberedScans(1000)), 0);
    ExpectRefused("plate -o out", finding + ": its run started at another time\n");
    info.runStart = 0;
    info.sampleName = "another";
    std::filesystem::remove(Path("plate/b.rsd"));
    ASSERT_EQ(WriteSample(Path("plate/b.rsd"), info, sampletest::NumberedScans(1000)), 0);
    ExpectRefused("plate -o out", finding + ": it is named \"sample\" and not \"another\"\n");
    temp.Write("plate/b.rsd", raw);

    const std::string good = temp.Read("out/plate_FRA_QX1/a.esd");
    std::string damaged = good;
    damaged[100] = static_cast<char>(damaged[100] ^ 1);  // in the scans: only the checksum shows it
    temp.Write("out/plate_FRA_QX1/a.esd", damaged);
    ExpectRefused("plate -o out", Path("out/plate_FRA_QX1/a.esd") + ": the stored result is damaged: ");
    const RunResult dry = RunTool("plate -o out --redo-damaged --dry-run");
    EXPECT_EQ(dry.output.find("mv -- " + Path("out/plate_FRA_QX1/a.esd") + " "), 0u) << dry.output;
    EXPECT_EQ(temp.Read("out/plate_FRA_QX1/a.esd"), damaged);
    EXPECT_EQ(RunTool("plate -o out --redo-damaged").exitCode, 0);
    EXPECT_EQ(temp.Read("out/plate_FRA_QX1/a.esd"), good);
}

// Not when no other is stored, when the system does not give it, nor when the run that wanted to replace it was killed.
TEST_F(RunFindings, ADamagedResultIsGivenUpForItsSuccessorOnly) {
    const std::string result = "out/plate_FRA_QX1/a.esd", all = "plate -o out --redo-damaged";
    ASSERT_EQ(RunTool("plate -o out").exitCode, 0);
    const std::string good = temp.Read(result), damaged = good.substr(0, 500) + '?' + good.substr(501);
    const std::string files = Names("out");
    temp.Write(result, damaged);
    const auto replaceRaw = [&](std::uint32_t first) {
        std::filesystem::remove(Path("plate/a.rsd"));
        MakeSample("plate/a.rsd", first);
    };
    replaceRaw(lanetest::vanishing);
    EXPECT_EQ(RunTool(all).exitCode, 3);
    EXPECT_EQ(temp.Read(result), damaged);
    EXPECT_EQ(Names("out"), files);

    replaceRaw(500);
    ASSERT_EQ(chmod(Path(result).c_str(), 0), 0);
    ASSERT_EQ(std::system(("chmod 777 '" + temp.Path() + "' '" + temp.Path() + "'/*/ '" + temp.Path() + "'/out/*/ '" +
                           temp.Path() + "'/plate/*.*")
                              .c_str()),
              0);
    const RunResult locked = RunTool(all, geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "");
    EXPECT_EQ(locked.exitCode, 2);
    EXPECT_EQ(locked.errors, "lanetools: " + Path(result) + ": the stored result cannot be read: Permission denied\n");
    ASSERT_EQ(chmod(Path(result).c_str(), 0644), 0);
    EXPECT_EQ(temp.Read(result), damaged);

    std::filesystem::rename(Path(result), Path("out/plate_FRA_QX1/.a.esd.set-aside"));
    ExpectRefused("plate -o out", Path(result) + ": the stored result is damaged: it was set aside ");
    replaceRaw(lanetest::failing);
    EXPECT_EQ(RunTool(all).exitCode, 3);
    EXPECT_EQ(Names("out"), std::regex_replace(files, std::regex("a.esd"), "a.fsd"));
}

TEST_F(RunFindings, AllAtOnce) {
    const RunResult run = RunTool("nowhere plate plate -o no/where -- -ABDD -BC other.so");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(lanetest::CountOf("lanetools: ", run.errors), 5u) << run.errors;
    EXPECT_EQ(lanetest::CountOf("\n", run.errors), 5u) << run.errors;
    for (const char* words : {"", "-o out", "plate", "plate -o out -j 0", "plate -o out --timeout x", "plate -o out -x",
                              "plate -o out --min-pass nan", "plate -o ''", "'' -o out"})
        EXPECT_EQ(RunTool(words).exitCode, 2) << words;
    EXPECT_TRUE(std::filesystem::is_empty(Path("out")));
}
