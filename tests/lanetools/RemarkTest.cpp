// SPDX-License-Identifier: MIT
// Raw figures and remarks of reads whose every peak is known.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "lanetools/samples/RawFigures.h"
#include "lanetools/samples/Remark.h"

using namespace lanetools;

namespace {

struct Run {
    std::size_t bases = 400, before = 1500, after = 2500;
    std::array<double, 4> heights{2000, 2000, 2000, 2000};
    double limit = 1e9;
};

struct Remarks {
    CRawFigures figures;
    std::string text;
};

// Peaks of deviation 4 at every 12th scan on a baseline of 500 counts with a noise of deviation 10.
Remarks Look(const Run& run) {
    std::mt19937 chance(5);
    std::normal_distribution<double> noise(500, 10);
    std::vector<ScanRecord> scans(run.before + run.bases * 12 + run.after, ScanRecord{});
    CCalledPlaces places{{}, "", {0, run.bases}, {'T', 'G', 'C', 'A'}};
    for (std::size_t i = 0; i < run.bases; ++i) {
        places.scans.push_back(static_cast<std::int32_t>(run.before + 12 * i));
        places.letters += "TGCA"[i * 7 / 3 % 4];
    }
    for (std::size_t s = 0; s < scans.size(); ++s)
        for (std::size_t c = 0; c < 4; ++c) {
            double value = noise(chance);
            for (std::size_t i = 0; i < run.bases; ++i)
                if (places.letters[i] == places.channels[c] && std::abs(static_cast<double>(s) - places.scans[i]) < 24)
                    value +=
                        run.heights[c] * std::exp(-std::pow((static_cast<double>(s) - places.scans[i]) / 4, 2) / 2);
            scans[s].words[c + 1] = static_cast<std::uint32_t>(std::min(run.limit, value));
        }
    places.scans.push_back(-5);  // outside the trace, so not looked at
    places.scans.push_back(1 << 30);
    places.letters += "NN";
    places.good.length += 2;
    Remarks remarks{MeasureRaw(places, scans), ""};
    remarks.text = RemarkOn(places, remarks.figures);
    return remarks;
}

}  // namespace

TEST(Remarks, FiguresOfTheRawCurvesAndAReasonForEachTrouble) {
    const Remarks good = Look({});
    EXPECT_NEAR(good.figures.signal.value(), 2030, 60);
    EXPECT_NEAR(good.figures.noise.value(), 10, 2.5);
    EXPECT_EQ(good.text, "");
    EXPECT_EQ(Look({.bases = 200}).text, "Signal ends after 202 bases: short insert or hard stop");
    EXPECT_EQ(Look({.bases = 200, .after = 800}).text, "");
    EXPECT_EQ(Look({.before = 6000}).text, "Late start: the first good base is at scan 6000");
    EXPECT_EQ(Look({.heights = {2000, 2000, 150, 2000}}).text, "Weak channel: C");
    EXPECT_NE(Look({.limit = 1500}).text.find("Saturated channel: "), std::string::npos);
    EXPECT_FALSE(MeasureRaw({}, {}).signal.has_value());
    EXPECT_EQ(RemarkOn({}, {}), "");
}
