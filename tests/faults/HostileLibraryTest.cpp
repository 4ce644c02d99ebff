// SPDX-License-Identifier: MIT
// What a base-caller library does to the process must not reach the run: the program with a library that behaves badly
// leaves and prints what it does with one that behaves well.
#include <sys/stat.h>

#include <map>

#include "run/ProgramFixture.h"

using programtest::RunResult;

namespace {

// Mode and bytes of each file.
using State = std::map<std::string, std::pair<mode_t, std::string>>;

const char* const entryPoints[] = {"load", "GetBaseCallerCod", "ExecuteProcedure", "CleanUp"};

class HostileLibrary : public programtest::ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        std::filesystem::remove(Path("bin/tenth.so"));
        Copy(LANEWRIGHT_TEST_LIBRARIES "/hostile.so", "bin/tenth.so");
    }

    // A run over two samples and a failed one, from the start.
    RunResult RunOverPlate(const std::string& mischief, const std::string& at) {
        for (const char* folder : {"plate", "out"}) {
            std::filesystem::remove_all(Path(folder));
            temp.MakeFolder(folder);
        }
        // A value that a 32-bit float does not hold: how it is stored depends on the rounding.
        MakeSample("plate/a.rsd", 16777217);
        MakeSample("plate/b.rsd", 16777217);
        MakeSample("plate/bad.rsd", 13);
        return Run("-IP plate -OD out -BC -ABD -SCF -FA -FAP -FAG -RAW_TXT -PROC_TXT",
                   "MISCHIEF='" + mischief + "' MISCHIEF_AT=" + at +
                       " timeout 60 env --default-signal=INT --default-signal=TERM");
    }

    State Files() const {
        State state;
        for (const char* folder : {"plate", "out"})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(Path(folder))) {
                if (!entry.is_regular_file()) continue;
                struct stat status {};
                ::stat(entry.path().c_str(), &status);
                const std::string name = std::filesystem::relative(entry, temp.Path()).string();
                // A file that cannot be read any more differs in its mode already.
                state[name] = {status.st_mode, (status.st_mode & S_IRUSR) != 0 ? Steady(temp.Read(name)) : ""};
            }
        return state;
    }

    static std::string Differences(const State& before, const State& after) {
        std::string text;
        for (const auto& [name, file] : before)
            if (const auto found = after.find(name); found == after.end() || found->second != file)
                text += name + (found == after.end() ? " is missing; " : " differs; ");
        for (const auto& [name, file] : after)
            if (!before.contains(name)) text += name + " is new; ";
        return text.substr(0, 500);
    }
};

}  // namespace

TEST_F(HostileLibrary, WhatItDoesToTheProcessDoesNotReachTheRun) {
    const RunResult good = RunOverPlate("", "nowhere");
    const State before = Files();
    ASSERT_EQ(good.exitCode, 0);
    for (const std::string mischief : {"moves", "masks", "rounds", "limits files", "limits descriptors", "closes",
                                       "prints", "leaves a thread", "lets pipes kill"})
        for (const char* at : entryPoints) {
            SCOPED_TRACE(mischief + " at " + at);
            const RunResult run = RunOverPlate(mischief, at);
            EXPECT_EQ(run.exitCode, 0);
            EXPECT_EQ(Steady(run.output), Steady(good.output));
            EXPECT_EQ(Differences(before, Files()), "");
            if (mischief == "prints")
                for (const char* printed : {"of a library\n", "a word "})
                    EXPECT_NE(run.errors.find(printed), std::string::npos) << run.errors;
            else
                EXPECT_EQ(run.errors, "");
        }
}

TEST_F(HostileLibrary, ThreadOfALibraryThatIsOnlyListedMayGoOn) {
    Copy(LANEWRIGHT_TEST_LIBRARIES "/every_tenth.so", "bin/well.so");
    temp.Write("bin/basecall.ini", "[Base Callers]\nTenth\ttenth.so\nWell\twell.so\n[Default]\nWell\n");
    EXPECT_EQ(RunOverPlate("leaves a thread", "load").exitCode, 0);
    EXPECT_EQ(RunOverPlate("reads its folder", "load").exitCode, 0);
}

TEST_F(HostileLibrary, ItCannotKeepTheRunFromBeingEnded) {
    for (const char* mischief : {"cannot be ended", "cannot be stopped"})
        for (const char* at : {"ExecuteProcedure", "CleanUp"})
            EXPECT_GT(RunOverPlate(mischief, at).exitCode, 127) << mischief << " at " << at;
}

TEST_F(HostileLibrary, RunThatEndsInsideItHasFailed) {
    for (const char* mischief : {"exits", "exits at once"})
        for (const std::string at : entryPoints) {
            SCOPED_TRACE(mischief + (" at " + at));
            const RunResult run = RunOverPlate(mischief, at);
            EXPECT_EQ(run.exitCode, 1);
            EXPECT_EQ(run.errors.find("lanewright: warning: "), 0u) << run.errors;
            EXPECT_NE(run.errors.find("tenth.so"), std::string::npos) << run.errors;
            EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
            if (at == "ExecuteProcedure") {
                EXPECT_NE(run.errors.find("a.rsd"), std::string::npos) << run.errors;
            }
            EXPECT_TRUE(temp.Has("plate/a.rsd"));
        }
}
