// SPDX-License-Identifier: MIT
// The troubles that samplegen gives to reads, seen in the samples that it writes.
#include <map>

#include "tools/ToolsFixture.h"

namespace {

class Troubles : public toolstest::ToolsTest {
  protected:
    // Bases of the well of a plate with these options.
    std::string Truth(const std::string& options) const {
        EXPECT_EQ(Run(SAMPLEGEN_PROGRAM " p -w 1 " + options), 0) << temp.Read("printed");
        std::string bases = temp.Read("p/truth.fasta");
        bases.erase(0, bases.find('\n'));
        std::erase(bases, '\n');
        return bases;
    }

    CSampleInfo info;
    std::vector<ScanRecord> scans;
};

TEST_F(Troubles, MixedSitesStandInTheTruthAsCodes) {
    const std::string plain = Truth("-b 600 -s 2");
    const std::string mixed = Truth("-b 600 -s 2 --mixed-from 201 --mixed-every 4 --mixed-part 0.5");
    const std::map<char, std::string> codes = {{'R', "AG"}, {'Y', "CT"}, {'S', "CG"},
                                               {'W', "AT"}, {'K', "GT"}, {'M', "AC"}};
    ASSERT_EQ(mixed.size(), plain.size());
    EXPECT_EQ(mixed.substr(0, 200), plain.substr(0, 200));
    int sites = 0;
    for (std::size_t i = 200; i < mixed.size(); ++i) {
        if (mixed[i] == plain[i]) continue;
        ++sites;
        ASSERT_TRUE(codes.contains(mixed[i])) << i << ": " << mixed[i];
        ASSERT_NE(codes.at(mixed[i]).find(plain[i]), std::string::npos) << i << ": " << mixed[i];
    }
    EXPECT_NEAR(sites, 100, 30);
}

TEST_F(Troubles, HardWellsDifferAndTheSameSeedGivesTheSameWells) {
    ASSERT_EQ(Run(SAMPLEGEN_PROGRAM " a --hard -w 14 -s 6"), 0);
    ASSERT_EQ(Run(SAMPLEGEN_PROGRAM " b --hard -w 97 -s 6"), 0);
    // A well is the same on a plate of another size, except for the description of the plate.
    for (const std::string well : {"A05", "B02"}) {
        sampletest::ReadBack(Path("a/synth" + well + ".rsd"), info, scans);
        const std::size_t size = scans.size() * scanRecordSize;
        EXPECT_TRUE(temp.Read("a/synth" + well + ".rsd").substr(0, size) ==
                    temp.Read("b/synth" + well + ".rsd").substr(0, size))
            << well;
    }
    const std::string troubles = temp.Read("a/troubles.txt");
    for (const char* trouble : {"shifts common", "shifts early", " ends at ", " spikes"})
        EXPECT_NE(troubles.find(trouble), std::string::npos) << trouble << "\n" << troubles;
    // The truth goes as far as the template.
    const std::string truth = temp.Read("a/truth.fasta");
    const std::size_t end = troubles.find("ends at "), line = troubles.rfind("synth", end);
    std::string title = troubles.substr(line, 8) + " " + troubles.substr(end + 8, troubles.find('\n', end) - end - 8);
    title += " bases\n";
    EXPECT_NE(truth.find(title), std::string::npos) << title;
}

TEST_F(Troubles, WhatDoesNotGoTogetherIsRefused) {
    const std::map<std::string, std::string> sentences = {
        {"--hard --noise 5", "--hard: draws what --noise sets; give one of them"},
        {"--hard --spikes 3", "--hard: draws what --spikes sets; give one of them"},
        {"-b 300 --end-at 301", "--end-at: more bases than a read has"},
        {"-b 300 --drop 2 --drop-at 300", "--drop-at: lies after the read"},
        {"-b 300 --mixed-from 301", "--mixed-from: lies after the read"},
        {"--real-spacing 0.1", "--real-spacing: 0.1 is neither 0 nor 0.2 to 5"},
        {"--dye-shifts late", "--dye-shifts: late is neither plain, none, common nor early"},
        {"--cross-talk nan", "--cross-talk: nan is not in the range 0 to 1.5"}};
    for (const auto& [options, sentence] : sentences) {
        EXPECT_EQ(Run(SAMPLEGEN_PROGRAM " c " + options), 1) << options;
        EXPECT_EQ(temp.Read("printed").substr(0, sentence.size()), sentence);
        EXPECT_FALSE(temp.Has("c")) << options;
    }
}

}  // namespace
