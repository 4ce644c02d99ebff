#include <gtest/gtest.h>

#include "lanecall/Mobility.h"
#include "lanecall/SeparationEstimate.h"
#include "lanecall/SyntheticRead.h"

using namespace lanecall;

static constexpr ScanRange wholeRead{400, 3800};

TEST(LanecallStages, SpacingAndShiftsFollowTheRun) {
    const std::array<double, 4> shifts = {5, -4, -1, 0};  // nearly a spacing between A and C
    const Curves bends = Bend(SyntheticRead({.spacing = 10, .drift = 3, .shifts = shifts}), wholeRead, 1.5);
    const ImpulseLists impulses = FindImpulses(bends, wholeRead);
    const Spacing spacing = EstimateSpacing(impulses, wholeRead);
    EXPECT_NEAR(spacing.scans.At(700), 10.2, 0.25);
    EXPECT_NEAR(spacing.scans.At(3500), 12.7, 0.25);
    const ShiftTracks found = EstimateMobility(impulses, spacing);
    for (std::size_t c = 0; c < 4; ++c)
        EXPECT_NEAR(found[c].At(2000), shifts[c], 0.5) << c;
}

TEST(LanecallStages, SeparationIsReadFromThePeaks) {
    const Matrix truth = {{{1, 0.5, 0.1, 0}, {0.2, 1, 0.4, 0.05}, {0.02, 0.3, 1, 0.45}, {0, 0.04, 0.15, 1}}};
    const auto read = SyntheticRead({.shifts = {2, 0, -2, 1}, .mixing = truth, .baseline = 500, .noise = 10});
    const Curves bends = Bend(read, wholeRead, 1.5);
    const Matrix found = EstimateSeparation(bends, FindImpulses(bends, wholeRead));
    for (std::size_t r = 0; r < 4; ++r)
        for (std::size_t c = 0; c < 4; ++c)
            EXPECT_NEAR(found[r][c], truth[r][c], 0.06) << r << ", " << c;
}
