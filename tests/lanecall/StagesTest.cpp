#include <gtest/gtest.h>

#include "lanecall/FreeShifts.h"
#include "lanecall/Levels.h"
#include "lanecall/Mobility.h"
#include "lanecall/NoiseSmoothing.h"
#include "lanecall/ReadBases.h"
#include "lanecall/RunCurve.h"
#include "lanecall/Separation.h"
#include "lanecall/SeparationEstimate.h"
#include "lanecall/SyntheticRead.h"
#include "lanecall/Unreadable.h"

using namespace lanecall;

namespace {

constexpr ScanRange wholeRead{400, 3800};

ChannelTracks Smoothing(double scans) {
    ChannelTracks tracks;
    tracks.fill(CTrack(0, 1, {scans}));
    return tracks;
}

ImpulseLists ImpulsesOf(const Curves& curves, ScanRange range) {
    return FindImpulses(Bend(curves, range, Smoothing(1.5)), range);
}

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

TEST(LanecallStages, SpacingAndShiftsFollowTheRun) {
    const std::array<double, 4> shifts = {5, -4, -1, 0};  // nearly a spacing between A and C
    const ImpulseLists impulses = ImpulsesOf(SyntheticRead({.spacing = 10, .drift = 3, .shifts = shifts}), wholeRead);
    const Spacing spacing = FollowSpacing(impulses, wholeRead, FindRunCurve(impulses, wholeRead));
    EXPECT_NEAR(spacing.scans.At(700), 10.2, 0.25);
    EXPECT_NEAR(spacing.scans.At(3500), 12.7, 0.25);
    const ChannelTracks found = FreeShifts(impulses, wholeRead, RhythmOf(impulses, spacing), spacing);
    for (std::size_t c = 1; c < 4; ++c)
        EXPECT_NEAR(found[c].At(2000) - found[0].At(2000), shifts[c] - shifts[0], 0.7) << c;
}

TEST(LanecallStages, NoiseHasNoRhythmOfItsOwn) {
    // Maxima of noise stand 3 to 5 scans apart; as tall as a third of the peaks they must not pass for the read.
    const Measured measured = MeasuredFrom(SyntheticRead({.bases = 400, .spacing = 13, .noise = 300}));
    for (double scan : {1500.0, 3000.0, 4500.0})
        EXPECT_NEAR(measured.spacing.scans.At(scan), 13, 0.4) << scan;
}

TEST(LanecallStages, SeparationIsReadFromThePeaks) {
    const Matrix truth = {{{1, 0.5, 0.1, 0}, {0.2, 1, 0.4, 0.05}, {0.02, 0.3, 1, 0.45}, {0, 0.04, 0.15, 1}}};
    const auto read = SyntheticRead({.shifts = {2, 0, -2, 1}, .mixing = truth, .baseline = 500, .noise = 10});
    const Curves bends = Bend(read, wholeRead, Smoothing(1.5));
    const Matrix found = EstimateSeparation(bends, FindImpulses(bends, wholeRead));
    for (std::size_t r = 0; r < 4; ++r)
        for (std::size_t c = 0; c < 4; ++c)
            EXPECT_NEAR(found[r][c], truth[r][c], 0.06) << r << ", " << c;
}

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
    EXPECT_LT(read.calls.size(), 540U);
    EXPECT_GT(read.good.last - read.good.first, 450);
}

TEST(LanecallStages, TheDyesOfTheUsualKitAreKnown) {
    // T more than a whole spacing after G: the angles of their rhythms alone do not say by how many spacings.
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
