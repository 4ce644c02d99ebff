// SPDX-License-Identifier: MIT
// "lanetools run" over plates with libraries that crash, hang and leave: what it costs is the sample alone.
#include <array>
#include <chrono>
#include <cstdio>
#include <thread>

#include "lanetools/RunFixture.h"
#include "lanetools/system/Child.h"

using namespace lanetest;

namespace {

constexpr const char* allExports = "-BC -ABD -SCF -FA -FAP -RAW_TXT -PROC_TXT";
using FileMap = std::map<std::string, std::string>;

class RunPlates : public RunTest {
  protected:
    // A plate of six samples; `values` are the first values of those that are not good.
    void MakePlate(const std::string& plate, const std::map<char, std::uint32_t>& values) const {
        std::filesystem::remove_all(Path(plate));
        temp.MakeFolder(plate);
        for (const char well : std::string("abcdef")) {
            const auto value = values.find(well);
            const auto usual = 500u + static_cast<std::uint32_t>(well);
            MakeSample(plate + '/' + well + ".rsd", value == values.end() ? usual : value->second);
        }
    }

    // Those of `files` that are not about a sample of `lost`, such as "ABD/a.abd".
    static FileMap Without(const std::string& lost, FileMap files) {
        std::erase_if(files, [&](const auto& file) {
            const std::filesystem::path path = file.first;
            return path.stem().string().size() == 1 && lost.find(path.stem().string()) != std::string::npos;
        });
        return files;
    }

    // Names of what differs between two of them.
    static std::string Differences(const FileMap& a, const FileMap& b) {
        std::string text;
        for (const auto& [name, bytes] : a)
            if (!b.contains(name) || b.at(name) != bytes) text += name + ' ';
        for (const auto& [name, bytes] : b)
            if (!a.contains(name)) text += name + ' ';
        return text;
    }
};

}  // namespace

TEST_F(RunPlates, AsTheProgramItselfDoes) {
    MakePlate("plate", {{'c', failing}});
    const std::string words = "-OD '" + Path("out") + "' " + allExports;
    ASSERT_EQ(Run("-IP '" + Path("plate") + "' " + words).exitCode, 0);
    const FileMap expected = Files("out");
    const FileMap raw = Files("plate");
    std::filesystem::remove_all(Path("out"));
    MakePlate("plate", {{'c', failing}});
    const RunResult run = RunTool(std::string("plate/ -o ./out/ -- ") + allExports);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "plate   called   failed  missing  damaged\n"
              "plate        5        1        0        0\n"
              "lanetools: plate: B07 c: failed: thirteen brings bad luck\n");
    EXPECT_EQ(Differences(Files("out"), expected), "");
    EXPECT_EQ(Differences(Files("plate"), raw), "");
    EXPECT_EQ(RunTool("plate -o out --min-pass 83").exitCode, 0);
}

TEST_F(RunPlates, DryRunPrintsWhatAShellTakes) {
    MakePlate("a plate's", {});
    const RunResult run = RunTool("\"a plate's\" -o out --dry-run -- -abd -BC tenth.so");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(std::filesystem::is_empty(Path("out")));
    ASSERT_EQ(CountOf("\n", run.output), 1u) << run.output;
    temp.Write("command", "cd '" + temp.Path() + "'; export HOME=. QUILLION_REGISTRY=bin/registry.ini; " + run.output);
    ASSERT_EQ(std::system(("sh '" + Path("command") + "' >/dev/null").c_str()), 0);
    EXPECT_TRUE(temp.Has("out/a plate's_T10_QX1/ABD/f.abd"));
    EXPECT_EQ(RunTool("\"a plate's\" -o out --dry-run", "sh -c '\"$@\" >/dev/full' sh").exitCode, 1);
}

// The other samples have the results of a run that nothing disturbed, byte for byte, and their records.
TEST_F(RunPlates, LibraryThatEndsTheProcessCostsTheSample) {
    const std::string switches = std::string(" -- ") + allExports + " -FA all.seq";
    MakePlate("plate", {{'c', failing}});
    ASSERT_EQ(RunTool("plate -o out" + switches).exitCode, 3);
    const FileMap good = Without("abf", Files("out")), goodTexts = Without("abf", Files("plate/Text"));
    const std::string goodRecords = temp.Read("all.seq");

    std::filesystem::remove_all(Path("out"));
    MakePlate("plate", {{'a', leaving}, {'b', killing}, {'c', failing}, {'f', vanishing}});
    const RunResult run = RunTool("plate -o out" + switches);
    EXPECT_EQ(run.exitCode, 3);
    for (const char* line :
         {"lanetools: plate: a.rsd: lost to the library fragile.so (the library ended the process)\n",
          "lanetools: plate: b.rsd: lost to the library fragile.so (SIGKILL)\n",
          "lanetools: plate: f.rsd: lost to the library fragile.so (the library ended the process)\n",
          "plate        2        1        3        0\n"})
        EXPECT_EQ(CountOf(line, run.errors), 1u) << line << run.errors;
    const std::string plateFile = "plate_FRA_QX1/FASTA/plate_FRA_QX1.seq";
    EXPECT_EQ(Differences(Without("abf", Files("out")), good), plateFile + ' ');
    EXPECT_EQ(Differences(Without("abf", Files("plate/Text")), goodTexts), "");
    for (const std::string& file : {std::string("all.seq"), "out/" + plateFile}) {
        const std::string records = temp.Read(file);
        EXPECT_EQ(CountOf(">", records), file == "all.seq" ? 4u : 2u) << file;  // -FA is given twice
        EXPECT_NE(goodRecords.find(records.substr(0, records.find('>', 1))), std::string::npos) << file;
    }
}

TEST_F(RunPlates, FurtherLibrariesRunToo) {
    for (const char* libraries : {"tenth.so fragile.so", "fragile.so tenth.so"}) {
        SCOPED_TRACE(libraries);
        std::filesystem::remove_all(Path("out"));
        MakePlate("plate", {{'a', failing}, {'c', aborting}});
        const RunResult run = RunTool(std::string("plate -o out -- -ABD -BC ") + libraries);
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_EQ(CountOf("c.rsd: lost to the library fragile.so (SIGABRT)\n", run.errors), 1u) << run.errors;
        EXPECT_EQ(CountOf("plate        9        2        1        0\n", run.errors), 1u) << run.errors;
        EXPECT_TRUE(temp.Has("out/plate_T10_QX1/ABD/f.abd"));
        EXPECT_TRUE(temp.Has("out/plate_FRA_QX1/ABD/f.abd"));
    }
}

TEST_F(RunPlates, CrashAfterTheLastSampleCostsNone) {
    MakePlate("plate", {{'f', dooming}});
    const RunResult run = RunTool("plate -o out -- -FAP");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(CountOf("plate: f.rsd: the program ended after its base call (SIGABRT)", run.errors), 1u) << run.errors;
    EXPECT_EQ(CountOf("plate        6        0        0        0\n", run.errors), 1u) << run.errors;
    EXPECT_EQ(CountOf(">", temp.Read("out/plate_FRA_QX1/FASTA/plate_FRA_QX1.seq")), 6u);
}

// Also at the last sample, where nothing is left to be done and the exit code is that of a good end.
TEST_F(RunPlates, ExitCodeOfALibraryIsNoEndOfTheProgram) {
    MakePlate("plate", {{'f', vanishing}});
    MakePlate("second", {});
    const RunResult run = RunTool("plate second -o out");
    EXPECT_EQ(run.exitCode, 3);
    for (const char* line :
         {"lanetools: plate: f.rsd: lost to the library fragile.so (the library ended the process)\n",
          "total        11        0        1        0\n"
          "lanetools: plate: B07 f: missing: lost to the library fragile.so (the library ended the process)\n"})
        EXPECT_EQ(CountOf(line, run.errors), 1u) << line << run.errors;
}

TEST_F(RunPlates, AtTheEndAScreenfulOfReasons) {
    temp.MakeFolder("plate");
    for (int i = 10; i < 33; ++i)
        MakeSample("plate/s" + std::to_string(i) + ".rsd", failing);
    const RunResult run = RunTool("plate -o out");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(CountOf("failed: thirteen brings bad luck\n", run.errors), 20u) << run.errors;
    EXPECT_TRUE(run.errors.ends_with("lanetools: and 3 more: lanetools summary out\n")) << run.errors;
}

TEST_F(RunPlates, WhatALibraryPrintsAsItIsTriedOutIsBounded) {
    const std::string line(1 << 20, 'x');
    lanetools::CChild child = lanetools::CChild::Apart([&] {
        for (int i = 0; i < 64; ++i)
            std::printf("%s", line.c_str());
        std::fflush(stdout);
        return std::string("answer");
    });
    const std::array<lanetools::CChild*, 1> one{&child};
    while (!child.IsEnded())
        lanetools::CChild::Wait(one, std::chrono::seconds(1));
    EXPECT_EQ(child.TakeOutput(), "answer");
    EXPECT_LE(child.TakeErrors().size(), std::size_t{4} << 20);
}

TEST_F(RunPlates, LibraryThatHangsCostsTheSample) {
    MakePlate("plate", {{'b', hanging}, {'f', hanging}});
    MakePlate("second", {});
    const RunResult run = RunTool("plate second -o out -j 2 --timeout 2");
    EXPECT_EQ(run.exitCode, 3);
    for (const char* line :
         {"plate: b.rsd: lost to the library fragile.so (no progress for 2 s)\n",
          "plate: f.rsd: lost to the library fragile.so (no progress for 2 s)\n",
          "plate         4        0        2        0\n", "second        6        0        0        0\n"})
        EXPECT_EQ(CountOf(line, run.errors), 1u) << line << run.errors;
}

TEST_F(RunPlates, CtrlCEndsTheProgramAndTheSameCommandGoesOn) {
    MakePlate("plate", {{'d', hanging}});
    MakePlate("second", {{'a', hanging}});
    std::thread interrupting([&] {
        const auto areHanging = [&] { return temp.Has("out/plate_FRA_QX1/c.esd") && temp.Has("out/second_FRA_QX1"); };
        for (int i = 0; i < 600 && !areHanging(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        std::ignore = std::system(("kill -INT $(cat '" + Path("number") + "')").c_str());
    });
    const RunResult run = RunTool("plate second -o out -j 2", "sh -c 'echo $$ >number; exec \"$@\"' sh");
    interrupting.join();
    EXPECT_EQ(run.exitCode, 130);
    EXPECT_EQ(run.errors, "lanetools: interrupted\n");
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        std::error_code ignored;
        const auto program = std::filesystem::read_symlink(entry.path() / "exe", ignored);
        EXPECT_NE(program.string(), Path("bin/lanewright")) << "it still runs";
    }
    const FileMap left = Files("out");
    EXPECT_EQ(left.size(), 5u) << "two folders and three samples";

    MakeSample("plate/d.rsd", 500);
    MakeSample("second/a.rsd", 500);
    const RunResult rest = RunTool("plate second -o out -j 2");
    EXPECT_EQ(rest.exitCode, 0) << rest.errors;
    EXPECT_EQ(CountOf("         6        0        0        0\n", rest.errors), 1u) << rest.errors;
    for (const auto& [name, bytes] : left)
        EXPECT_EQ(Files("out")[name], bytes) << name;
}

TEST_F(RunPlates, WarningsOfTheProgramAreShown) {
    MakePlate("plate", {});
    temp.Write("plate/g.rsd", "no sample");
    const RunResult run = RunTool("plate -o out");
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(CountOf("lanetools: plate: lanewright: warning: ", run.errors), 2u) << run.errors;
    EXPECT_EQ(CountOf("plate        6        0        1        0\n", run.errors), 1u) << run.errors;
}
