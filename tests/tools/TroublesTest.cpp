// The troubles that samplegen gives to reads, seen in the samples that it writes.
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "tools/ToolsFixture.h"

namespace {

using Values = std::vector<double>;

// What a trouble adds to each channel, scan by scan, and the stretches of scans in which it adds anything.
struct Change {
    std::array<Values, 4> channels;
    std::vector<std::pair<std::size_t, std::size_t>> stretches;  // from, to (not included)
};

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

    // Bases of the well, line by line joined.
    std::string Truth() const {
        const std::string text = temp.Read("p/truth.fasta");
        std::string bases;
        bool isTitle = false;
        for (const char c : text) {
            if (c == '>' || c == '\n') isTitle = c == '>';
            if (!isTitle && c != '\n') bases += c;
        }
        return bases;
    }

    Change ChangeBy(const std::string& trouble, const std::string& options) {
        const auto plain = Channels(options);
        Change change{Channels(options + " " + trouble), {}};
        const std::size_t count = std::min(plain[0].size(), change.channels[0].size());
        EXPECT_EQ(plain[0].size(), change.channels[0].size());
        constexpr double least = 3;  // counts, more than rounding makes
        bool before = false;
        for (std::size_t s = 0; s < count; ++s) {
            bool any = false;
            for (std::size_t c = 0; c < 4; ++c)
                any |= (change.channels[c][s] -= plain[c][s]) >= least;
            if (any && !before) change.stretches.push_back({s, s});
            if (any) change.stretches.back().second = s + 1;
            before = any;
        }
        return change;
    }

    // Scans of the tops of each letter's channel, parabolas through them, in an easy read without cross-talk.
    std::map<char, Values> Tops(const std::string& options) {
        constexpr double start = 2500, least = 150;  // past the primers' peak; above the background
        const auto channels = Channels("--decay 10000 --widening 0 --cross-talk 0 " + options);
        std::map<char, Values> tops;
        for (std::size_t c = 0; c < 4; ++c) {
            const Values& y = channels[c];
            for (auto s = static_cast<std::size_t>(start); s + 1 < y.size(); ++s)
                if (y[s] > y.back() + least && y[s] > y[s - 1] && y[s] >= y[s + 1])
                    tops[info.channelBase[c][0]].push_back(
                        static_cast<double>(s) + (y[s + 1] - y[s - 1]) / 2 / (2 * y[s] - y[s - 1] - y[s + 1]));
        }
        return tops;
    }

    CSampleInfo info;
    std::vector<ScanRecord> scans;
};

constexpr const char* spread = "-s 3 -b 700 -r 3 --real-spacing 4 --dye-shifts ";

TEST_F(Troubles, BasesComeInTheRhythmOfRealRuns) {
    Values all;
    for (const auto& [letter, tops] : Tops(std::string(spread) + "none"))
        all.insert(all.end(), tops.begin(), tops.end());
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all.size(), 700u);
    const std::map<std::size_t, double> known = {{30, 11.4}, {75, 12.7}, {220, 14.3}, {400, 14.9}, {600, 14.3}};
    for (const auto& [base, spacing] : known)
        EXPECT_NEAR((all[base + 15] - all[base - 15]) / 30 / 4, spacing, 0.2) << base;
}

TEST_F(Troubles, DyesShiftAsTheirChemistryDoes) {
    // Scans at the bases 60 to 90 and 300 to 500; the same peaks with and without shifts are held together.
    const std::map<std::string, std::map<char, std::array<double, 2>>> known = {
        {"common", {{'G', {-7.2, -5.9}}, {'T', {7.0, 5.0}}, {'A', {0.7, 0.3}}, {'C', {0.0, 0.6}}}},
        {"early", {{'G', {-6.6, -3.9}}, {'C', {3.2, 2.0}}, {'A', {1.3, 0.7}}, {'T', {1.1, 1.1}}}}};
    const auto unshifted = Tops(std::string(spread) + "none");
    const std::string truth = Truth();
    for (const auto& [chemistry, letters] : known) {
        const auto shifted = Tops(spread + chemistry);
        for (const auto& [letter, shifts] : letters) {
            std::array<Values, 2> found;
            std::size_t k = 0;
            ASSERT_EQ(shifted.at(letter).size(),
                      static_cast<std::size_t>(std::count(truth.begin(), truth.end(), letter)));
            for (std::size_t i = 0; i < truth.size(); ++i) {
                if (truth[i] != letter) continue;
                const double shift = (shifted.at(letter)[k] - unshifted.at(letter)[k]) / 4;
                ++k;
                if (i >= 60 && i < 90) found[0].push_back(shift);
                if (i >= 350 && i < 450) found[1].push_back(shift);
            }
            for (std::size_t part = 0; part < 2; ++part) {
                std::nth_element(found[part].begin(), found[part].begin() + std::ssize(found[part]) / 2,
                                 found[part].end());
                EXPECT_NEAR(found[part][found[part].size() / 2], shifts[part], 0.3) << chemistry << letter << part;
            }
        }
    }
}

TEST_F(Troubles, SpikesShowInAllChannelsAndBlobsInOne) {
    const Change spiked = ChangeBy("--spikes 4", "-s 9 -b 200");
    EXPECT_EQ(spiked.stretches.size(), 4u);
    for (const auto& [from, to] : spiked.stretches) {
        EXPECT_LT(to - from, 14u);
        for (const Values& channel : spiked.channels)
            EXPECT_GT(*std::max_element(channel.begin() + static_cast<std::ptrdiff_t>(from),
                                        channel.begin() + static_cast<std::ptrdiff_t>(to)),
                      100);
    }
    const Change blobbed = ChangeBy("--blobs 1", "-s 8 -b 200 --cross-talk 0");
    ASSERT_EQ(blobbed.stretches.size(), 1u);
    EXPECT_GT(blobbed.stretches[0].second - blobbed.stretches[0].first, 60u);
    EXPECT_LT(blobbed.stretches[0].second, 2500u + 140 * 11);
    EXPECT_EQ(
        std::count_if(blobbed.channels.begin(), blobbed.channels.end(),
                      [](const Values& channel) { return *std::max_element(channel.begin(), channel.end()) > 0; }),
        1);
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
        EXPECT_TRUE(std::equal(all.begin(), all.begin() + before, low.begin()) &&
                    std::equal(all.begin(), all.begin() + before, none.begin()));
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
        ASSERT_TRUE(codes.contains(mixed[i]) && codes.at(mixed[i]).find(plain[i]) != std::string::npos) << i;
    }
    EXPECT_NEAR(sites, 100, 30);
    // Both letters of a site show, all but a few as a top of their own.
    const auto tops = Tops("-b 100 --mixed-from 1 --mixed-every 1 --mixed-part 0.5 --dye-shifts none --real-spacing 4");
    for (const char letter : {'A', 'C', 'G', 'T'}) {
        const std::string all = Truth();
        const auto with = std::count_if(all.begin(), all.end(), [&](char code) {
            return codes.contains(code) && codes.at(code).find(letter) != std::string::npos;
        });
        EXPECT_NEAR(static_cast<double>(tops.at(letter).size()), static_cast<double>(with), 3) << letter;
    }
}

TEST_F(Troubles, CrossTalkMayBeLeftUnsaid) {
    Channels("-b 20 --cross-talk 0.5");
    EXPECT_NE(temp.Read("p/dyeMethod1.ini").find("0.2750 1.0000 0.1100 0.0250"), std::string::npos);
    EXPECT_EQ(info.separationMatrix[1][0], 0.275f);
    const auto stated = scans;
    Channels("-b 20 --cross-talk 0.5 --matrix-unknown");
    EXPECT_NE(temp.Read("p/dyeMethod1.ini").find("0.0000 1.0000 0.0000 0.0000"), std::string::npos);
    EXPECT_EQ(info.separationMatrix[1][0], 0);
    EXPECT_TRUE(std::equal(scans.begin(), scans.end(), stated.begin(), stated.end(),
                           [](const ScanRecord& a, const ScanRecord& b) { return a.words == b.words; }));
}

TEST_F(Troubles, HardWellsDifferAndComeBackTheSame) {
    ASSERT_EQ(Run(SAMPLEGEN_PROGRAM " a --hard -w 14 -s 6"), 0);
    ASSERT_EQ(Run(SAMPLEGEN_PROGRAM " b --hard -w 97 -s 6"), 0);
    // A well is the same on a plate of another size, but for what its file says of the plate.
    std::vector<ScanRecord> other;
    for (const std::string well : {"A05", "B02"}) {
        sampletest::ReadBack(Path("a/synth" + well + ".rsd"), info, scans);
        sampletest::ReadBack(Path("b/synth" + well + ".rsd"), info, other);
        EXPECT_TRUE(std::equal(scans.begin(), scans.end(), other.begin(), other.end(),
                               [](const ScanRecord& a, const ScanRecord& b) { return a.words == b.words; }));
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
        EXPECT_EQ(Run(SAMPLEGEN_PROGRAM " c " + options), 1);
        EXPECT_TRUE(temp.Read("printed").starts_with(sentence) && !temp.Has("c")) << temp.Read("printed");
    }
}

}  // namespace
