// SPDX-License-Identifier: MIT
// The default caller in the built program, over plates with the troubles of real reads.
#include <filesystem>

#include "tools/ToolsFixture.h"

namespace {

class LanecallOnHardPlates : public toolstest::ToolsTest {
  protected:
    void SetUp() override {
        std::filesystem::create_directory(Path("bin"));
        std::filesystem::copy_file(LANEWRIGHT_PROGRAM, Path("bin/lanewright"));
        std::filesystem::copy_file(LANECALL_LIBRARY, Path("bin/lanecall.so"));
        temp.Write("bin/registry.ini", "[Quillion\\Base Calling]\nPath = .\nAnalyzedDataPath = ../analyzed\n");
        temp.Write("bin/basecall.ini", "[Base Callers]\nLanecall\tlanecall.so\n[Default]\nLanecall\n");
        std::filesystem::create_directory(Path("out"));
    }
    // Makes a plate with these options and calls it.
    void Call(const std::string& options) const {
        ASSERT_EQ(Run(SAMPLEGEN_PROGRAM " p " + options), 0) << temp.Read("printed");
        ASSERT_EQ(Run("bin/lanewright -IP p -OD out -BC -FA"), 0) << temp.Read("printed");
    }
    int Agreement(const std::string& least) const {
        return Run(CALLS_AGREE_PROGRAM " p/truth.fasta out --at-least " + least + " --cover 97");
    }
};

}  // namespace

TEST_F(LanecallOnHardPlates, ReadsWithTheTroublesOfRealOnes) {
    Call("--hard --wells 6 --seed 31");
    EXPECT_EQ(Agreement("99.5"), 0) << temp.Read("printed");
}

TEST_F(LanecallOnHardPlates, NoiseIsNotTakenForTheRhythm) {
    Call("--wells 3 --seed 7 --noise 100");
    EXPECT_EQ(Agreement("99"), 0) << temp.Read("printed");
}

TEST_F(LanecallOnHardPlates, AWellWithoutAReadFailsWithASentence) {
    Call("--wells 2 --failed 2 --noise 60");
    EXPECT_TRUE(temp.Has("out/p_LC1_QX1/synthA01.fsd"));
    EXPECT_FALSE(temp.Has("out/p_LC1_QX1/synthA01.esd"));
    EXPECT_NE(temp.Read("p/basecall.log").find("failed to basecall"), std::string::npos);
    EXPECT_NE(temp.Read("out/p_LC1_QX1/synthA01.fsd").find("No "), std::string::npos);
}
