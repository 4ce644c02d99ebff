// SPDX-License-Identifier: MIT
// The troubles that samplegen gives to reads, seen in the samples that it writes.
#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "tools/ToolsFixture.h"

namespace {

using Values = std::vector<double>;

class Troubles : public toolstest::ToolsTest {
  protected:
    // Channels of well A01 of a plate of one well without noise, with these options.
    std::array<Values, 4> Channels(const std::string& options) {
        EXPECT_EQ(Run(SAMPLEGEN_PROGRAM " p -w 1 -n 0 " + options), 0) << temp.Read("printed");
        sampletest::ReadBack(Path("p/synthA01.rsd"), info, scans);
        std::array<Values, 4> channels;
        for (const ScanRecord& scan : scans)
            for (std::size_t c = 0; c < 4; ++c)
                channels[c].push_back(scan.words[c + 1]);
        return channels;
    }

    // Bases of the well.
    std::string Truth() const {
        std::string bases = temp.Read("p/truth.fasta");
        bases.erase(0, bases.find('\n'));
        std::erase(bases, '\n');
        return bases;
    }

    CSampleInfo info;
    std::vector<ScanRecord> scans;
};

TEST_F(Troubles, SpikesShowInAllChannelsAndBlobsInOne) {
    // How long each stretch is that the trouble adds to, and in how many channels.
    const auto stretches = [&](const std::string& trouble, const std::string& options) {
        const auto plain = Channels(options), with = Channels(options + trouble);
        std::vector<std::pair<std::size_t, std::size_t>> found;
        std::size_t last = 0;
        std::array<bool, 4> isIn{};
        for (std::size_t s = 0; s < std::min(plain[0].size(), with[0].size()); ++s)
            for (std::size_t c = 0; c < 4; ++c) {
                if (with[c][s] - plain[c][s] < 3) continue;  // counts, more than rounding makes
                if (found.empty() || s > last + 1) found.push_back({0, 0}), isIn = {};
                found.back().first += found.back().first == 0 || s != last;
                found.back().second += !std::exchange(isIn[c], true);
                last = s;
            }
        return found;
    };
    const auto spikes = stretches(" --spikes 4", "-s 9 -b 200");
    EXPECT_EQ(spikes.size(), 4u);
    for (const auto& [length, channels] : spikes) {
        EXPECT_LT(length, 14u);
        EXPECT_EQ(channels, 4u);
    }
    const auto blobs = stretches(" --blobs 1", "-s 8 -b 200 --cross-talk 0");
    ASSERT_EQ(blobs.size(), 1u);
    EXPECT_GT(blobs[0].first, 60u);
    EXPECT_EQ(blobs[0].second, 1u);
}

TEST_F(Troubles, LevelDropsAndTheTemplateEnds) {
    const std::string options = "-s 5 -b 400 ";
    const auto plain = Channels(options);
    const std::string bases = Truth();
    const auto dropped = Channels(options + "--drop 10 --drop-at 100");
    EXPECT_EQ(Truth(), bases);
    const auto ended = Channels(options + "--end-at 90");
    EXPECT_EQ(Truth(), bases.substr(0, 90));
    ASSERT_EQ(ended[0].size(), plain[0].size());
    // Before base 80, then from base 110 on, where the ended read is nothing but background.
    constexpr std::ptrdiff_t before = 2400 + 80 * 9;
    constexpr std::size_t after = 2600 + 110 * 11;
    double lightPlain = 0, lightDropped = 0;
    for (std::size_t c = 0; c < 4; ++c) {
        const Values &all = plain[c], &low = dropped[c], &none = ended[c];
        EXPECT_TRUE(std::equal(all.begin(), all.begin() + before, low.begin())) << c;
        EXPECT_TRUE(std::equal(all.begin(), all.begin() + before, none.begin())) << c;
        for (std::size_t s = after; s < all.size(); ++s) {
            lightPlain += all[s] - none[s];
            lightDropped += low[s] - none[s];
        }
    }
    EXPECT_GT(lightPlain, 1e6);
    EXPECT_NEAR(lightPlain / lightDropped, 10, 0.2);
}

TEST_F(Troubles, MixedSitesStandInTheTruthAsCodes) {
    Channels("-b 600 -s 2");
    const std::string plain = Truth();
    Channels("-b 600 -s 2 --mixed-from 201 --mixed-every 4 --mixed-part 0.5");
    const std::string mixed = Truth();
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

TEST_F(Troubles, CrossTalkMayBeLeftUnknown) {
    const auto stated = Channels("-b 20 --cross-talk 0.5");
    EXPECT_NE(temp.Read("p/dyeMethod1.ini").find("0.2750 1.0000 0.1100 0.0250"), std::string::npos);
    EXPECT_EQ(info.separationMatrix[1][0], 0.275f);
    EXPECT_TRUE(Channels("-b 20 --cross-talk 0.5 --matrix-unknown") == stated);
    EXPECT_NE(temp.Read("p/dyeMethod1.ini").find("0.0000 1.0000 0.0000 0.0000"), std::string::npos);
    EXPECT_EQ(info.separationMatrix[1][0], 0);
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
