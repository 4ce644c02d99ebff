// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "lanecall/Levels.h"
#include "lanecall/NoiseSmoothing.h"
#include "lanecall/PeakFit.h"
#include "lanecall/ReadBases.h"
#include "lanecall/RunCurve.h"
#include "lanecall/Separation.h"
#include "lanecall/SeparationEstimate.h"
#include "lanecall/SyntheticRead.h"
#include "lanecall/Unreadable.h"

using namespace lanecall;

namespace {

Measured MeasuredFrom(const TestChannels& channels) {
    Recorded recorded;
    recorded.curves = channels;
    return Measure(SeparateDyes(Prepare(recorded), Letters{'A', 'C', 'T', 'G'}, Identity()));
}

std::string LettersOf(const CalledRead& read) {
    std::string letters;
    for (const Call& call : read.calls)
        letters += Letters{'A', 'C', 'T', 'G'}[static_cast<std::size_t>(call.channel)];
    return letters;
}

CalledRead ReadOf(const TestChannels& channels) {
    return ReadBases(Align(SharpenPeaks(MeasuredFrom(channels)), Letters{'A', 'C', 'T', 'G'}));
}

}  // namespace

TEST(LanecallStages, FlashesGoAndPeaksStay) {
    TestChannels flashed = SyntheticRead({.noise = 5});
    const TestChannels clean = flashed;
    for (std::size_t c = 0; c < 4; ++c)
        for (int k = -1; k <= 1; ++k)
            flashed[c][static_cast<std::size_t>(2000 + k)] += k == 0 ? 20000 : 6000;
    Recorded recorded;
    recorded.curves = clean;
    const Prepared plain = Prepare(recorded);
    recorded.curves = flashed;
    const Prepared prepared = Prepare(recorded);
    for (std::size_t c = 0; c < 4; ++c) {
        EXPECT_LT(*std::max_element(prepared.curves[c].begin(), prepared.curves[c].end()), 4000) << c;
        EXPECT_EQ(prepared.curves[c][1000], plain.curves[c][1000]) << c;
    }
}

TEST(LanecallStages, ALevelThatDropsTenfoldIsFollowedToTheEndOfTheSignal) {
    std::string truth;
    TestChannels dropped = SyntheticRead({.bases = 500, .spacing = 13, .noise = 6}, &truth);
    for (auto& channel : dropped) {
        std::mt19937 chance(11);
        for (std::size_t i = 3800; i < channel.size(); ++i)
            channel[i] *= 0.1;
        for (int i = 0; i < 8000; ++i)  // the run goes on without a read
            channel.push_back(static_cast<double>(chance() % 13));
    }
    const CalledRead read = ReadOf(dropped);
    EXPECT_NE(LettersOf(read).find(truth.substr(15, 470)), std::string::npos) << LettersOf(read) << "\n" << truth;
    EXPECT_LT(read.calls.size(), 550U);
    EXPECT_GT(read.good.last - read.good.first, 450);
}

TEST(LanecallStages, TheDyesOfTheUsualKitAreKnown) {
    // T more than a whole spacing after G: the angles of their rhythms alone do not show by how many spacings.
    std::string truth;
    const TestChannels read =
        SyntheticRead({.bases = 300, .spacing = 13, .shifts = {0.6, 0.3, 6.0, -6.9}, .noise = 10}, &truth);
    EXPECT_NE(LettersOf(ReadOf(read)).find(truth.substr(15, 270)), std::string::npos);
}

TEST(LanecallStages, QualitiesFallWithTheSignal) {
    const CalledRead clear = ReadOf(SyntheticRead({.bases = 400, .spacing = 13, .noise = 5}));
    const CalledRead noisy = ReadOf(SyntheticRead({.bases = 400, .spacing = 13, .noise = 600}));
    const double doubt = 1 - OverallQuality(clear.qualities, clear.good);
    EXPECT_LT(doubt, 0.002);
    EXPECT_GT(1 - OverallQuality(noisy.qualities, noisy.good), 3 * doubt);
    for (double quality : noisy.qualities)
        ASSERT_EQ(quality, std::clamp(quality, 0.0, std::nextafter(1.0, 0.0)));
    EXPECT_THROW(ReadOf(SyntheticRead({.bases = 400, .spacing = 13, .noise = 6000})), CUnreadable);
}

TEST(LanecallStages, GoodRegionIsTheStretchThatTrimmingKeeps) {
    const GoodRegion good = FindGoodRegion({0.5, 0.99, 0.99, 0.9, 0.99, 0.99, 0.2, 0.99});
    EXPECT_EQ(good.first, 1);
    EXPECT_EQ(good.last, 5);
    EXPECT_NEAR(OverallQuality({0.5, 0.9, 0.7}, {1, 2}), 0.8, 1e-12);
    EXPECT_EQ(FindGoodRegion({0.5, 0.94}).last, 0);
    EXPECT_EQ(FindGoodRegion({}).last, 0);
}

TEST(LanecallStages, ASecondLetterIsSeenAndTheFlankOfANeighbourIsNot) {
    // Peaks that reach into each other, on a broad hump of channel 3; the fifth call has the light of two dyes.
    constexpr double spacing = 12, deviation = 4.2;
    const CTrack widths(0, 100, std::vector<double>(5, deviation)), distance(0, 100, std::vector<double>(5, spacing));
    const std::array<std::size_t, 9> letters{0, 1, 0, 0, 1, 0, 3, 1, 0};
    std::array<PerChannel, 9> light{};
    std::vector<Call> calls;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        light[i][letters[i]] = 1;
        calls.push_back({150 + spacing * static_cast<double>(i), static_cast<int>(letters[i]), spacing});
    }
    light[4][3] = 0.5;
    Curves curves;
    for (std::size_t c = 0; c < 4; ++c)
        for (int s = 0; s < 400; ++s) {
            double value = c == 2 ? 0.25 * std::exp(-std::pow((s - 200) / 20.0, 2) / 2) : 0;
            for (std::size_t i = 0; i < letters.size(); ++i)
                value += light[i][c] * std::exp(-std::pow((s - calls[i].scan) / deviation, 2) / 2);
            curves[c].push_back(value);
        }
    const HumpFilter filter = HumpFilterFor(widths, distance);
    Curves flat;
    for (std::size_t c = 0; c < 4; ++c)
        flat[c] = WithoutHumps(curves[c], filter);
    const std::vector<PerChannel> heights = FitPeaks(flat, calls, widths, filter);
    for (std::size_t i = 0; i < letters.size(); ++i)
        for (std::size_t c = 0; c < 4; ++c)
            EXPECT_NEAR(heights[i][c], light[i][c], c == 2 ? 0.2 : 0.06) << i << c;
    calls[2].channel = 1;  // its neighbour's letter
    calls[4].channel = 3;  // the weaker of two letters
    CorrectLetters(calls, heights);
    EXPECT_EQ(calls[2].channel, 0);
    EXPECT_EQ(calls[4].channel, 1);
    EXPECT_TRUE(FitPeaks(flat, {}, widths, filter).empty());
}
