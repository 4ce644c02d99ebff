// What a base-caller library does to the process must not reach the run: the program with a library that behaves badly
// leaves and prints what it does with one that behaves.
#include <sys/stat.h>

#include <map>

#include "run/ProgramFixture.h"

using programtest::RunResult;

namespace {

// Mode and bytes of a file.
using FileState = std::pair<mode_t, std::string>;
using State = std::map<std::string, FileState>;

class HostileLibrary : public programtest::ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        std::filesystem::remove(Path("bin/tenth.so"));
        Copy(LANEWRIGHT_TEST_LIBRARIES "/hostile.so", "bin/tenth.so");
    }

    // A run over two samples and a failed one; what it left is in `state`, which the next run begins without.
    RunResult RunOverPlate(const std::string& mischief, const std::string& at) {
        for (const char* folder : {"plate", "out"}) {
            std::filesystem::remove_all(Path(folder));
            temp.MakeFolder(folder);
        }
        // A value that a 32-bit float does not hold: how it is stored depends on the rounding.
        MakeSample("plate/a.rsd", 16777217);
        MakeSample("plate/b.rsd", 16777217);
        MakeSample("plate/bad.rsd", 13);
        const RunResult run = Run("-IP plate -OD out -BC -ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT",
                                  "MISCHIEF='" + mischief + "' MISCHIEF_AT=" + at +
                                      " timeout 60 env --default-signal=INT --default-signal=TERM");
        state.clear();
        for (const char* folder : {"plate", "out"})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(Path(folder)))
                if (entry.is_regular_file()) Look(std::filesystem::relative(entry, temp.Path()).string());
        return run;
    }

    void Look(const std::string& name) {
        struct stat status {};
        ::stat(Path(name).c_str(), &status);
        // A file that cannot be read any more differs in its mode already.
        const bool isReadable = (status.st_mode & S_IRUSR) != 0;
        state[name] = {status.st_mode, isReadable ? Steady(temp.Read(name)) : ""};
    }

    // Run and state must be as with a library that behaves.
    void ExpectNothingChanged(const std::string& mischief, const std::string& at, const std::string& errors = "") {
        SCOPED_TRACE(mischief + " at " + at);
        const RunResult good = RunOverPlate("", "nowhere");
        const State before = state;
        ASSERT_EQ(good.exitCode, 0);
        const RunResult run = RunOverPlate(mischief, at);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(Steady(run.output), Steady(good.output));
        EXPECT_EQ(run.errors, errors);
        EXPECT_EQ(DifferencesFrom(before), "");
    }

    std::string DifferencesFrom(const State& before) {
        std::string text;
        for (const auto& [name, file] : before)
            if (!state.contains(name))
                text += name + " is missing; ";
            else if (state[name] != file)
                text += name + (state[name].first == file.first ? " differs; " : " has another mode; ");
        for (const auto& [name, file] : state)
            if (!before.contains(name)) text += name + " is new; ";
        return text.size() < 500 ? text : text.substr(0, 500) + "...";
    }

    State state;
};

const char* const entryPoints[] = {"load", "GetBaseCallerCod", "ExecuteProcedure", "CleanUp"};

}  // namespace

TEST_F(HostileLibrary, WorkingFolderComesBack) {
    for (const char* at : entryPoints)
        ExpectNothingChanged("moves", at);
}

TEST_F(HostileLibrary, MaskOfNewFilesComesBack) {
    for (const char* at : entryPoints)
        ExpectNothingChanged("masks", at);
}

TEST_F(HostileLibrary, RoundingComesBack) {
    for (const char* at : entryPoints)
        ExpectNothingChanged("rounds", at);
}

TEST_F(HostileLibrary, LimitsComeBack) {
    for (const char* at : entryPoints) {
        ExpectNothingChanged("limits files", at);
        ExpectNothingChanged("limits descriptors", at);
    }
}

TEST_F(HostileLibrary, StandardOutputIsTheProgramsOwn) {
    for (const char* at : entryPoints)
        ExpectNothingChanged("closes", at);
}

TEST_F(HostileLibrary, WhatItPrintsGoesToStandardError) {
    const RunResult good = RunOverPlate("", "nowhere");
    for (const char* at : entryPoints) {
        SCOPED_TRACE(at);
        const RunResult run = RunOverPlate("prints", at);
        EXPECT_EQ(Steady(run.output), Steady(good.output));
        EXPECT_NE(run.errors.find("of a library\n"), std::string::npos) << run.errors;
        EXPECT_NE(run.errors.find("a word "), std::string::npos) << run.errors;
        EXPECT_EQ(run.exitCode, 0);
    }
}

TEST_F(HostileLibrary, ThreadMayGoOn) {
    for (const char* at : entryPoints)
        ExpectNothingChanged("leaves a thread", at);
    // Of a library that is only listed, and so loaded and released.
    Copy(LANEWRIGHT_TEST_LIBRARIES "/every_tenth.so", "bin/well.so");
    temp.Write("bin/basecall.ini", "[Base Callers]\nTenth\ttenth.so\nWell\twell.so\n[Default]\nWell\n");
    EXPECT_EQ(RunOverPlate("leaves a thread", "load").exitCode, 0);
}

TEST_F(HostileLibrary, SignalsDoWhatTheyDidBefore) {
    ExpectNothingChanged("lets pipes kill", "ExecuteProcedure");
    for (const char* mischief : {"cannot be ended", "cannot be stopped"})
        for (const char* at : {"ExecuteProcedure", "CleanUp"})
            EXPECT_GT(RunOverPlate(mischief, at).exitCode, 127) << mischief << " at " << at;
}

TEST_F(HostileLibrary, RunThatEndsInsideItHasFailed) {
    for (const char* at : entryPoints) {
        SCOPED_TRACE(at);
        const RunResult run = RunOverPlate("exits", at);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.errors.find("lanewright: warning: "), 0u) << run.errors;
        EXPECT_NE(run.errors.find("tenth.so"), std::string::npos) << run.errors;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    }
    for (const char* mischief : {"exits", "exits at once"}) {
        SCOPED_TRACE(mischief);
        const RunResult run = RunOverPlate(mischief, "ExecuteProcedure");
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_NE(run.errors.find("a.rsd"), std::string::npos) << run.errors;
    }
    EXPECT_TRUE(temp.Has("plate/a.rsd"));
}
