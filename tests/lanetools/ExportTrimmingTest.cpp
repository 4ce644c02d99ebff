// SPDX-License-Identifier: MIT
// Which part of a read is kept: trimming against plain second implementations, and adapters.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "lanetools/ExitCode.h"
#include "lanetools/export/Adapter.h"
#include "lanetools/export/Trimming.h"

namespace lanetools {

void PrintTo(const CStretch& stretch, std::ostream* out) {
    *out << stretch.start << "+" << stretch.length;
}

namespace {

using Percents = std::vector<float>;

// Qualities that are whole eighths of a percent are exact, and many stretches are equal; others hardly ever.
Percents RandomPercents(std::mt19937& random, bool areEighths) {
    Percents percents(random() % 50);
    for (float& percent : percents) {
        percent = static_cast<float>(random() % 81) / 8 + 90;
        if (!areEighths) percent = std::uniform_real_distribution<float>(60, 100)(random);
        if (random() % 40 == 0) percent = std::numeric_limits<float>::quiet_NaN();
    }
    return percents;
}

double Percent(float stored) {
    return std::isnan(stored) ? 0 : stored;
}

// Every stretch in order of start and end; the first of the highest sum.
CStretch PlainMott(const Percents& percents, double limit) {
    CStretch best;
    double bestSum = 0;
    for (std::size_t start = 0; start < percents.size(); ++start) {
        double sum = 0;
        for (std::size_t end = start; end < percents.size(); ++end) {
            sum += limit * 100 - (100 - Percent(percents[end]));
            if (sum > bestSum) {
                bestSum = sum;
                best = {start, end + 1 - start};
            }
        }
    }
    return best;
}

// Every run of at least one window, the longest first; true of each of its windows, counted again.
CStretch PlainWindow(const Percents& percents, std::size_t wanted, double phred) {
    const std::size_t window = std::min(wanted, percents.size());
    const auto isGood = [&](std::size_t first) {
        double sum = 0;
        for (std::size_t i = first; i < first + window; ++i)
            sum += std::min(93.0, -10 * std::log10((100 - Percent(percents[i])) / 100));
        return sum >= (phred - 1e-9) * static_cast<double>(window);
    };
    for (std::size_t length = percents.size(); length >= window && length > 0; --length) {
        for (std::size_t start = 0; start + length <= percents.size(); ++start) {
            bool areGood = true;
            for (std::size_t first = start; first + window <= start + length; ++first)
                areGood = areGood && isGood(first);
            if (areGood) return {start, length};
        }
    }
    return {};
}

TEST(ExportTrimming, MottIsTheFirstStretchOfTheHighestSum) {
    std::mt19937 random(1);
    for (int i = 0; i < 4000; ++i) {
        const Percents percents = RandomPercents(random, i % 2 == 0);
        const double limit = static_cast<double>(random() % 10 + 1) / 64;
        EXPECT_EQ(TrimMott(percents, limit), PlainMott(percents, limit)) << "case " << i;
    }
}

TEST(ExportTrimming, WindowIsTheLongestRunOfGoodWindows) {
    std::mt19937 random(2);
    for (int i = 0; i < 4000; ++i) {
        const Percents percents = RandomPercents(random, i % 2 == 0);
        const std::size_t window = random() % 12 + 1;
        const double phred = 8 + static_cast<double>(random() % 90) / 8;
        EXPECT_EQ(TrimWindow(percents, window, phred), PlainWindow(percents, window, phred)) << "case " << i;
    }
}

TEST(ExportTrimming, AStored99IsPhred20) {
    const Percents percents{90, 99, 99, 99, 90};
    EXPECT_EQ(TrimWindow(percents, 1, 20), (CStretch{1, 3}));
}

TEST(ExportTrimming, ValuesAreReadWhole) {
    const Percents percents{50, 99, 99, 50};
    EXPECT_EQ(ParseTrim("mott:0.05")(percents, {}), (CStretch{1, 2}));
    EXPECT_EQ(ParseTrim("window:2,20")(percents, {}), (CStretch{1, 2}));
    EXPECT_EQ(ParseTrim("good")(percents, {2, 1}), (CStretch{2, 1}));
    EXPECT_EQ(ParseTrim("none")(percents, {2, 1}), (CStretch{0, 4}));
    for (const char* bad : {"", "mott", "mott:", "mott:0", "mott:1.1", "mott:nan", "mott:0.05x", "mott: 0.05",
                            "window:10", "window:0,20", "window:-1,20", "window:32768,20", "window:2,94", "window:2,-1",
                            "window:2.5,20", "window:2,20,3", "Good", "none "})
        EXPECT_THROW(ParseTrim(bad), CRefused) << bad;
}

TEST(ExportAdapter, IsCutWithTheNearerEnd) {
    const CAdapter adapter("GGATTC", 0);  // its other strand is GAATCC
    EXPECT_EQ(adapter.Cut("ACGGATTCAAAAAAAAAAAA"), (CStretch{8, 12}));
    EXPECT_EQ(adapter.Cut("AAAAAAAAAAAAGGATTCAC"), (CStretch{0, 12}));
    EXPECT_EQ(adapter.Cut("ACGAATCCAAAAAAGAATCC"), (CStretch{8, 6}));
    EXPECT_EQ(adapter.Cut("GGATTCAAGGATTCAAAAAAAAAAAAAAAAAA"), (CStretch{14, 18})) << "the inner one of two";
    EXPECT_EQ(adapter.Cut("GGATTC"), (CStretch{6, 0}));
    EXPECT_EQ(adapter.Cut("GGATT"), (CStretch{0, 5}));
    EXPECT_EQ(adapter.Cut(""), (CStretch{0, 0}));
}

TEST(ExportAdapter, MatchesWithinItsLimits) {
    EXPECT_EQ(CAdapter("GGATTCGGAT", 0.1).Cut("GGATTCGGACAAAAAAAAAAAAAA"), (CStretch{10, 14}));
    EXPECT_EQ(CAdapter("GGATTCGGA", 0.1).Cut("GGATTCGGCAAAAAAAAAAAAAA"), (CStretch{0, 23})) << "0.9 is not one";
    EXPECT_EQ(CAdapter("ggrnuc", 0).Cut("GGACTCAAAAAAAAAA"), (CStretch{6, 10})) << "letters for several bases";
    EXPECT_EQ(CAdapter("GGATTC", 0).Cut("GGANTCAAAAAAAAAA"), (CStretch{0, 16}))
        << "an unknown base matches nothing else";
    EXPECT_EQ(CAdapter("GGANTC", 0).Cut("GGANTCAAAAAAAAAA"), (CStretch{6, 10}));
    EXPECT_THROW(CAdapter("", 0), CRefused);
    EXPECT_THROW(CAdapter("ACGX", 0), CRefused);
    EXPECT_THROW(CAdapter("AC1T", 0), CRefused);
}

}  // namespace

}  // namespace lanetools
