// SPDX-License-Identifier: MIT
// Four runs at once over one plate, on one machine or on four that share a network file system: what each of them
// reports stands in the records that they share.
#include <cstdlib>
#include <map>

#include "run/ProgramFixture.h"

using programtest::CountOf;

namespace {

constexpr int runsAtOnce = 4;
constexpr int samples = 6;

// How many rounds; $LANEWRIGHT_ROUNDS asks for more than the suite takes.
int Rounds() {
    const char* const asked = std::getenv("LANEWRIGHT_ROUNDS");
    return asked ? std::atoi(asked) : 3;
}

std::map<std::string, int> Lines(const std::string& text) {
    std::map<std::string, int> counts;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        ++counts[line];
    return counts;
}

class ConcurrentRuns : public programtest::ProgramTest {
  protected:
    // Gives what the runs printed.
    std::string RunAtOnce(const std::string& before) {
        std::string command = "cd '" + temp.Path() + "'; export HOME=. QUILLION_REGISTRY=bin/registry.ini;";
        for (int i = 0; i < runsAtOnce; ++i)
            command += "env " + before + std::to_string(i) +
                       " bin/lanewright -IP plate -OD out -BC -ABD -SCF -FA -FAP -FAG -PROC_TXT >printed" +
                       std::to_string(i) + " 2>>errors </dev/null &";
        EXPECT_EQ(std::system((command + " wait").c_str()), 0);
        std::string printed;
        for (int i = 0; i < runsAtOnce; ++i)
            printed += Steady(temp.Read("printed" + std::to_string(i)));
        return printed;
    }
    void ExpectThatNoEntryIsLost(const std::string& before);
};

}  // namespace

void ConcurrentRuns::ExpectThatNoEntryIsLost(const std::string& before) {
    for (int round = 0; round < Rounds(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        for (const char* folder : {"plate", "out"}) {
            std::filesystem::remove_all(Path(folder));
            temp.MakeFolder(folder);
        }
        for (int i = 0; i < samples; ++i)
            MakeSample("plate/s" + std::to_string(i) + ".rsd");
        temp.Write("errors", "");
        const std::string printed = RunAtOnce(before);
        EXPECT_EQ(temp.Read("errors"), "");

        EXPECT_EQ(CountOf("exported to ABD", printed), std::size_t{runsAtOnce * samples});
        EXPECT_TRUE(Lines(Steady(temp.Read("plate/basecall.log"))) == Lines(printed)) << "basecall.log has other lines";
        const std::string log = temp.Read("plate/log.xml");
        EXPECT_TRUE(log.ends_with("</log>\t\t\r\n"));
        EXPECT_EQ(CountOf(".esd\t\t\r\n", log), CountOf("successfully basecalled", printed));
        EXPECT_EQ(CountOf(".abd\t\t\r\n", log), CountOf("exported to ABD", printed));
        EXPECT_EQ(CountOf(".scf\t\t\r\n", log), CountOf("exported to SCF", printed));
        EXPECT_EQ(CountOf(".seq\t\t\r\n", log), CountOf("exported to FASTA", printed));
        EXPECT_EQ(CountOf(".txt\t\t\r\n", log), CountOf("exported to ABD", printed));

        const std::string record = temp.Read("out/plate_T10_QX1/FASTA/s0.seq");
        for (const char* common : {"out/out.seq", "out/plate_T10_QX1/FASTA/plate_T10_QX1.seq"}) {
            EXPECT_EQ(temp.Read(common).size(), record.size() * runsAtOnce * samples) << common;
            EXPECT_EQ(CountOf(record, temp.Read(common)), std::size_t{runsAtOnce}) << common;
        }
        for (const char* folder : {"plate", "out"})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(Path(folder)))
                EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path();
    }
}

TEST_F(ConcurrentRuns, NoEntryIsLost) {
    ExpectThatNoEntryIsLost("RUN=");
}

TEST_F(ConcurrentRuns, NoEntryIsLostBetweenMachines) {
    ExpectThatNoEntryIsLost("ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" STORAGE_SHIM " STORAGE_MACHINE=node");
}
