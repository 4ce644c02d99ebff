#include <gtest/gtest.h>
#include <lanewright/basecaller.h>

#include "lanecall/SyntheticRead.h"
#include "platform/Library.h"

// An entry point of the library, by its name in the header.
#define ENTRY(name) reinterpret_cast<decltype(name)*>(library.Symbol(#name))

class LanecallTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(library.Open(LANECALL_LIBRARY)); }
    // A whole conversation up to the report of the sequence; the text of what went wrong, or nothing.
    std::string Run(TestChannels channels, const char* order = "ACTGN") {
        double* arrays[5] = {channels[0].data(), channels[1].data(), channels[2].data(), channels[3].data(), nullptr};
        float rows[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
        float* matrix[4] = {rows[0], rows[1], rows[2], rows[3]};
        ENTRY(CleanUp)();
        ENTRY(CleanUp)();
        ENTRY(SetNumSamples)(1);
        ENTRY(SetRawData)(0, arrays, 4, static_cast<int>(channels[0].size()), 2.89f, order);
        ENTRY(SetSpecSepMatrix)(0, matrix);
        for (int i = 0; i < ENTRY(GetNumOfProcedures)(); ++i)
            if (!ENTRY(ExecuteProcedure)(0, i, 0)) return ENTRY(ReportProblem)(0, nullptr, nullptr);
        records = ENTRY(ReportSequence)(0, &count, &first, &last, &overall);
        letters.clear();
        for (int i = 0; i < count; ++i) {
            letters += records[i].letter;
            EXPECT_TRUE(records[i].quality >= 0 && records[i].quality <= 1 && records[i].peaks[0].position >= 0);
        }
        return "";
    }
    platform::Library library;
    BaseRecord* records = nullptr;
    std::int32_t count = 0, first = 0, last = 0;
    float overall = 0;
    std::string letters;
};

TEST_F(LanecallTest, CallsAReadWithEverythingThatRunsAddToIt) {
    Ways ways{.drift = 2, .shifts = {3, -2, 0, -1}, .baseline = 600, .noise = 15};
    ways.mixing = {{{1, 0.4, 0, 0.1}, {0.2, 1, 0.1, 0.5}, {0, 0, 1, 0.1}, {0, 0.2, 0.5, 1}}};
    std::string truth;
    const TestChannels read = SyntheticRead(ways, &truth);
    ASSERT_EQ(Run(read), "");
    EXPECT_NE(letters.find(truth.substr(5, 290)), std::string::npos) << letters << "\n" << truth;
    EXPECT_TRUE(last - first > 270 && overall > 0.8) << first << " to " << last << ": " << overall;
    std::int32_t scratch = 0, start = 0, end = 0;
    double** curves = ENTRY(PeekProcessedTrace)(0, &scratch, &start, &end);
    for (int i = 20; i < 280; ++i) {
        const double at = records[i].peaks[0].position;
        ASSERT_TRUE(start <= at && at < end && at > records[i - 1].peaks[0].position) << i;
        EXPECT_NEAR(curves[std::string("ACTG").find(records[i].letter)][std::lround(at)], 1, 0.6) << i;
    }
    EXPECT_NEAR(ENTRY(ReportSpecSeparatnMatrixUsed)(0)[0][1], 0.4, 0.06);
    EXPECT_EQ(Run(read, "?b*TN"), "");  // strange letters go through, without a matrix in base order
    EXPECT_EQ(letters.find_first_not_of("?b*T"), std::string::npos);
    EXPECT_EQ(ENTRY(ReportSpecSeparatnMatrixUsed)(0), nullptr);
}

TEST_F(LanecallTest, HostileTracesAndCallsOutOfTurnGetAReason) {
    ENTRY(CleanUp)();  // a library stays loaded, with what the test before left in it
    EXPECT_EQ(ENTRY(ExecuteProcedure)(0, 0, 0), 0);
    EXPECT_STREQ(ENTRY(ReportProblem)(0, nullptr, nullptr), "No sample was handed over");
    EXPECT_EQ(Run({}), "The trace is too short: 0 scans, 200 are needed");
    TestChannels flat;
    flat.fill(std::vector<double>(3000, 32767));
    EXPECT_EQ(Run(flat), "No signal: no peaks stand out from the noise in any channel");
    EXPECT_NE(Run(SyntheticRead({.height = 100000, .limit = 30000})).find("saturated"), std::string::npos);
    EXPECT_NE(Run(SyntheticRead({.bases = 0, .noise = 20})), "");
    TestChannels dead = SyntheticRead({}), wild = dead;
    dead[1].assign(dead[1].size(), 0);
    EXPECT_EQ(Run(dead), "");
    EXPECT_EQ(ENTRY(ExecuteProcedure)(0, 0, 0), 0);  // it has run
    for (std::size_t i = 0; i < wild[0].size(); ++i) {
        wild[0][i] *= i % 3 ? 1e300 : -1e300;
        if (i % 500 == 0) wild[1][i] = i % 1000 ? std::nan("") : HUGE_VAL;
    }
    Run(wild);
}
