// SPDX-License-Identifier: MIT
// The default base caller by its entry points: good reads, bad reads, and whatever else may come.
#include <gtest/gtest.h>

#include "lanecall/Answer.h"
#include "lanecall/SyntheticRead.h"

namespace lanecalltest {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::uint32_t slowness = 24;
#else
constexpr std::uint32_t slowness = 1;
#endif

class LanecallTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(library.Open(LANECALL_LIBRARY)); }
    Answer Ask(const HostileRead& read, const std::string& name) {
        try {
            return Converse(library, read);
        } catch (const Fault& fault) {
            ADD_FAILURE() << fault.text << ": " << name;
            return {};
        }
    }
    Answer Ask(const TestChannels& channels, const std::string& order = "ACTGN") {
        HostileRead read;
        read.order = order;
        std::copy(channels.begin(), channels.end(), read.arrays.begin());
        read.arrays[4].resize(channels[0].size());
        return Ask(read, order);
    }
    // The answer to a read, which is `MakeHostileRead` of the same numbers.
    Answer Ask(std::size_t shape, std::size_t scans, std::uint32_t seed) {
        const std::string name = std::string(shapes[shape].name) + ", " + std::to_string(scans) + " scans, seed ";
        const Answer answer = Ask(MakeHostileRead(shape, scans, seed), name + std::to_string(seed));
        called += answer.letters.empty() ? 0 : 1;
        return answer;
    }
    platform::Library library;
    int called = 0;
};

TEST_F(LanecallTest, CallsAReadWithEverythingThatRunsAddToIt) {
    Ways ways{.drift = 2, .shifts = {3, -2, 0, -1}, .baseline = 600, .noise = 15};
    ways.mixing = {{{1, 0.4, 0, 0.1}, {0.2, 1, 0.1, 0.5}, {0, 0, 1, 0.1}, {0, 0.2, 0.5, 1}}};
    std::string truth;
    const TestChannels read = SyntheticRead(ways, &truth);
    const Answer answer = Ask(read);
    EXPECT_EQ(answer.problem, "");
    EXPECT_NE(answer.letters.find(truth.substr(5, 290)), std::string::npos) << answer.letters << "\n" << truth;
    EXPECT_GT(answer.lastGood - answer.firstGood, 270);
    EXPECT_GT(answer.overall, 0.8);
    EXPECT_NEAR(answer.crossTalk, 0.4, 0.06);
    ASSERT_GE(answer.heights.size(), 280u);
    for (std::size_t i = 20; i < 280; ++i) {
        EXPECT_GT(answer.positions[i], answer.positions[i - 1]) << i;
        EXPECT_NEAR(answer.heights[i], 1, 0.6) << i;
    }
    const Answer strange = Ask(read, "?b*TN");  // strange letters go through, without a matrix in base order
    EXPECT_EQ(strange.problem, "");
    EXPECT_EQ(strange.letters.find_first_not_of("?b*T"), std::string::npos);
    EXPECT_EQ(strange.crossTalk, 0);
}

TEST_F(LanecallTest, UselessTracesAndCallsOutOfTurnGetAReason) {
    const auto execute = [&] {
        return reinterpret_cast<decltype(ExecuteProcedure)*>(library.Symbol("ExecuteProcedure"))(0, 0, 0);
    };
    const auto reason = [&] {
        return reinterpret_cast<decltype(ReportProblem)*>(library.Symbol("ReportProblem"))(0, nullptr, nullptr);
    };
    Ask({});  // a library stays loaded, with what the test before left in it
    EXPECT_EQ(execute(), 0);
    EXPECT_STREQ(reason(), "No sample was handed over");
    EXPECT_EQ(Ask({}).problem, "The trace is too short: 0 scans, 200 are needed");
    TestChannels flat, dead = SyntheticRead({}), wild = dead;
    flat.fill(std::vector<double>(3000, 32767));
    EXPECT_EQ(Ask(flat).problem, "No signal: no peaks stand out from the noise in any channel");
    EXPECT_NE(Ask(SyntheticRead({.height = 100000, .limit = 30000})).problem.find("saturated"), std::string::npos);
    EXPECT_NE(Ask(SyntheticRead({.bases = 0, .noise = 20})).problem, "");
    dead[1].assign(dead[1].size(), 0);
    EXPECT_EQ(Ask(dead).problem, "");
    for (std::size_t i = 0; i < wild[0].size(); ++i) {
        wild[0][i] *= i % 3 ? 1e300 : -1e300;
        if (i % 500 == 0) wild[1][i] = i % 1000 ? std::nan("") : HUGE_VAL;
    }
    Ask(wild);
}

// Smooth waves, whose peaks are as wide as those of bases but have no rhythm, as an idle run shows them.
TestChannels Waves(std::size_t scans, double height, double deviation, bool isCutOff, std::uint32_t seed) {
    std::mt19937 chance(seed);
    std::normal_distribution<double> normal;
    const int reach = static_cast<int>(3 * deviation);
    TestChannels waves;
    for (auto& wave : waves) {
        std::vector<double> steps(scans + 2 * static_cast<std::size_t>(reach) + 1);
        for (double& step : steps)
            step = normal(chance) * height / std::sqrt(std::sqrt(4 * std::acos(-1)) * deviation);
        for (std::size_t i = 0; i < scans; ++i) {
            double value = isCutOff ? 0 : 5 * height;
            for (int k = -reach; k <= reach; ++k)
                value +=
                    std::exp(-0.5 * k * k / deviation / deviation) * steps[i + static_cast<std::size_t>(reach + k)];
            wave.push_back(std::round(std::max(0.0, value)));
        }
    }
    return waves;
}

TEST_F(LanecallTest, NoiseIsNoRead) {
    for (const double deviation : {0.4, 1.5, 2.5, 4.0, 6.0, 14.0})
        for (const bool isCutOff : {false, true})
            for (std::uint32_t seed = 1; seed <= 3; ++seed) {
                const Answer answer = Ask(Waves(9000, 40, deviation, isCutOff, seed));
                EXPECT_EQ(answer.letters, "") << deviation << (isCutOff ? ", cut off at 0" : "");
            }
    TestChannels oneLetter = SyntheticRead({.bases = 300, .noise = 5});
    for (std::size_t c : {1u, 2u, 3u})
        oneLetter[c] = Waves(oneLetter[c].size(), 5, 2, false, 9)[c];
    std::vector<double> regular(oneLetter[0].size());
    for (std::size_t i = 0; i < regular.size(); ++i)
        regular[i] = 2000 * std::exp(-0.5 * std::pow((static_cast<double>(i % 12) - 6) / 3.0, 2));
    oneLetter[0] = regular;
    EXPECT_NE(Ask(oneLetter).problem.find("same letter"), std::string::npos) << Ask(oneLetter).problem;
}

TEST_F(LanecallTest, AShortReadIsFoundInALongRunWithoutOne) {
    for (const std::size_t before : {std::size_t{0}, std::size_t{3000}}) {
        std::string truth;
        const TestChannels read = SyntheticRead({.bases = 100, .noise = 5}, &truth);
        TestChannels run = Waves(before + 1200 + 13800, 60, 4, true, 3);
        for (std::size_t c = 0; c < 4; ++c)
            for (std::size_t i = 0; i < 1150; ++i)
                run[c][before + i] = std::max(0.0, std::round(read[c][500 + i]));
        const Answer answer = Ask(run);
        EXPECT_EQ(answer.problem, "") << before;
        EXPECT_NE(answer.letters.find(truth.substr(10, 80)), std::string::npos) << answer.letters << "\n" << truth;
        EXPECT_LT(answer.letters.size(), 160u);
    }
}

// Free dye arrives before the fragments: a flash, then some hundred scans without a peak, then the read.
TEST_F(LanecallTest, AFlashOfFreeDyeIsNoPartOfTheRead) {
    std::string truth;
    const TestChannels read = SyntheticRead({.bases = 200, .noise = 8}, &truth);
    for (const std::size_t gap : {600u, 800u}) {
        TestChannels run = Waves(1000 + gap, 8, 0.4, false, 5);
        for (std::size_t i = 0; i < run[2].size(); ++i)
            run[2][i] += 3000 * std::exp(-0.5 * std::pow((static_cast<double>(i) - 800) / 60, 2));
        for (std::size_t c = 0; c < 4; ++c)
            run[c].insert(run[c].end(), read[c].begin() + 480, read[c].end());
        const Answer answer = Ask(run);
        EXPECT_NE(answer.letters.find(truth.substr(20, 160)), std::string::npos) << answer.letters << "\n" << truth;
        EXPECT_LT(answer.letters.size(), truth.size() + 20) << answer.letters;
    }
}

TEST_F(LanecallTest, ShortTracesOfEveryLengthAndLongOnes) {
    for (std::size_t shape = 0; shape < shapeCount; ++shape) {
        for (std::size_t scans = 0; scans <= 260; scans += slowness)
            Ask(shape, scans, static_cast<std::uint32_t>(scans));
        Ask(shape, 60000 / slowness, 1);  // as long as a run over night, with as many peaks as fit
    }
}

TEST_F(LanecallTest, EveryShapeWithEverySetting) {
    for (std::uint32_t seed = 1; seed <= 1200 / slowness; ++seed) {
        // Two of three look like reads, so that most stages are reached.
        const std::size_t shape = seed % 3 == 0 ? seed / 3 % shapeCount : shapeCount - seed % 3;
        const std::size_t scans = 261 + seed * 7919 % 4000;
        const Answer answer = Ask(shape, scans, seed);
        if (seed % 8 != 0) continue;
        Ask(shapeCount - 1, 3000, seed);
        EXPECT_TRUE(Ask(shape, scans, seed) == answer) << "something is left of the read between, seed " << seed;
    }
    EXPECT_GT(called, 10) << "hardly a read was called, so little was looked at";
}

}  // namespace
}  // namespace lanecalltest
