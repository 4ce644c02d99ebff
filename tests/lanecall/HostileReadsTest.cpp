// Whatever trace comes with whatever settings, the default library answers with a sentence or with calls that hold
// together. Under a sanitizer this also finds what reads or writes beyond an array.
#include <gtest/gtest.h>

#include "lanecall/Answer.h"

namespace lanecalltest {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::uint32_t slowness = 24;
#else
constexpr std::uint32_t slowness = 1;
#endif

class HostileReadsTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(library.Open(LANECALL_LIBRARY)); }
    // The answer to a read, which is `MakeHostileRead` of the same numbers.
    Answer Ask(std::size_t shape, std::size_t scans, std::uint32_t seed) {
        const Answer answer = Converse(library, MakeHostileRead(shape, scans, seed));
        EXPECT_EQ(answer.fault, "") << shapes[shape].name << ", " << scans << " scans, seed " << seed;
        called += answer.letters.empty() ? 0 : 1;
        return answer;
    }
    platform::Library library;
    int called = 0;
};

TEST_F(HostileReadsTest, ShortTracesOfEveryLength) {
    for (std::size_t scans = 0; scans <= 260; scans += slowness)
        for (std::size_t shape = 0; shape < shapeCount; ++shape)
            Ask(shape, scans, static_cast<std::uint32_t>(scans));
}

TEST_F(HostileReadsTest, EveryShapeWithEverySetting) {
    for (std::uint32_t seed = 1; seed <= 1200 / slowness; ++seed) {
        // Two of three look like reads, so that most stages are reached.
        const std::size_t shape = seed % 3 == 0 ? seed / 3 % shapeCount : shapeCount - seed % 3;
        const std::size_t scans = 261 + seed * 7919 % 4000;
        const Answer answer = Ask(shape, scans, seed);
        // Nothing of the conversations between is left.
        if (seed % 8 == 0) {
            Ask(shapeCount - 1, 3000, seed);
            EXPECT_EQ(Ask(shape, scans, seed), answer)
                << shapes[shape].name << ", " << scans << " scans, seed " << seed;
        }
    }
    EXPECT_GT(called, 10) << "hardly a read was called, so little was looked at";
}

// As long as a run over night, with as many peaks as fit.
TEST_F(HostileReadsTest, LongTraces) {
    for (std::size_t shape = 0; shape < shapeCount; ++shape)
        Ask(shape, 60000 / slowness, 1);
}

}  // namespace
}  // namespace lanecalltest
