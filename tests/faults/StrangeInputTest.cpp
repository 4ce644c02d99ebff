// SPDX-License-Identifier: MIT
// Input that is no file, or has no end. Every run is kept from filling the disk and from going on for ever.
#include <sys/stat.h>

#include "run/ProgramFixture.h"

using programtest::CountOf;
using programtest::RunResult;

namespace {

class StrangeInput : public programtest::ProgramTest {
  protected:
    RunResult RunWithin(const std::string& words) { return Run(words, "timeout -s KILL 20 prlimit --fsize=50000000"); }

    // The good sample beside the strange one must come out as always.
    void ExpectTheOther(const RunResult& run) {
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(CountOf("successfully basecalled good.rsd", run.output), 1u) << run.output;
        EXPECT_EQ(CountOf("failed to basecall  strange.rsd   with  tenth.so\r\n", run.output), 1u) << run.output;
        EXPECT_FALSE(temp.Has("out/plate_T10_QX1/strange.esd"));
        EXPECT_FALSE(temp.Has("out/plate_T10_QX1/strange.fsd"));
        EXPECT_GE(CountOf("lanewright: warning: ", run.errors), 1u) << run.errors;
        EXPECT_EQ(CountOf("strange", temp.Read("plate/log.xml")), 0u);
        for (const auto& entry : std::filesystem::directory_iterator(Path("out/plate_T10_QX1")))
            EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path();
    }
};

}  // namespace

TEST_F(StrangeInput, SampleThatIsNoFile) {
    MakeSample("plate/good.rsd");
    std::filesystem::create_symlink("/dev/zero", Path("plate/strange.rsd"));
    ExpectTheOther(RunWithin("-IP plate -OD out -BC"));
    std::filesystem::remove(Path("plate/strange.rsd"));
    std::filesystem::remove_all(Path("out/plate_T10_QX1"));
    std::filesystem::remove(Path("plate/log.xml"));
    ASSERT_EQ(::mkfifo(Path("plate/strange.rsd").c_str(), 0600), 0);
    ExpectTheOther(RunWithin("-IP plate -OD out -BC"));
}

TEST_F(StrangeInput, SampleWithoutTrailerIsNotCopied) {
    MakeSample("plate/good.rsd");
    temp.Write("plate/strange.rsd", "");
    std::filesystem::resize_file(Path("plate/strange.rsd"), std::uintmax_t{2} << 30);
    ExpectTheOther(RunWithin("-IP plate -OD out -BC"));
}

TEST_F(StrangeInput, FoldersThatLinkToEachOther) {
    for (char from = 'a'; from < 'h'; ++from) {
        temp.MakeFolder(std::string("tree/") + from);
        MakeSample(std::string("tree/") + from + "/" + from + ".rsd");
        for (char to = 'a'; to < 'h'; ++to)
            std::filesystem::create_symlink(Path(std::string("tree/") + to),
                                            Path(std::string("tree/") + from + "/to_" + to));
    }
    // Each folder is entered once; a link to it is a plate of its own, whose samples are found stored or are called.
    const RunResult run = RunWithin("-ID 'tree/*' -OD out -BC");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(CountOf("\tLoading a.rsd  a  ", run.output), 1u);
    EXPECT_EQ(CountOf("\tLoading a.rsd  to_a  ", run.output), 7u);
    EXPECT_EQ(CountOf("\tLoading ", run.output), 7u + 49u);
}

TEST_F(StrangeInput, SettingsThatAreNoFile) {
    MakeSample("plate/good.rsd");
    const std::string settings = temp.Read("bin/basecall.ini");
    std::filesystem::create_symlink("/dev/zero", Path("bin/dyeMethod1.ini"));
    EXPECT_EQ(RunWithin("-IP plate -OD out -BC").exitCode, 0);
    for (const std::string name : {"bin/basecall.ini", "bin/registry.ini"}) {
        SCOPED_TRACE(name);
        const std::string former = temp.Read(name);
        std::filesystem::remove(Path(name));
        std::filesystem::create_symlink("/dev/zero", Path(name));
        const RunResult run = RunWithin("-IP plate -OD out -BC");
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(CountOf("Fatal Error", run.errors), 0u) << run.errors;
        EXPECT_NE(run.errors, "");
        std::filesystem::remove(Path(name));
        temp.Write(name, former);
    }
    // What lies beyond the first 1,048,576 bytes of the settings is not read.
    temp.Write("bin/basecall.ini", std::string(1 << 20, ';') + "\n" + settings);
    EXPECT_EQ(RunWithin("-IP plate -OD out -BC").exitCode, 1);
}
