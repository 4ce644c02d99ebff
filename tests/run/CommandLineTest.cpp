// SPDX-License-Identifier: MIT
#include "run/CommandLine.h"

#include <gtest/gtest.h>

namespace {

// Notes every switch that is no input, such as "-BC(a b) -FA()".
class CNotingLine : public CCommandLine {
  public:
    std::string others;

    explicit CNotingLine(const std::vector<const char*>& words)
        : CCommandLine(static_cast<int>(words.size()), words.data(), {"-BC", "-FA", "-FA_"}) {
        ExpandInputs({{"*.esd"}});
    }

  protected:
    void OnOtherSwitch(const CParsedSwitch& given) override {
        others += given.name + "( ";
        for (const std::string& parameter : given.parameters)
            others += parameter + " ";
        others += ")";
    }
};

}  // namespace

TEST(CommandLine, GroupsWordsUnderTheSwitchBeforeAndHandsThemOn) {
    EXPECT_EQ(CNotingLine({"-BC", "lost.dll", "-bc", "One.dll", "-Bcx", "-fa_", "-FA", "", "-fa", "x.seq"}).others,
              "-BC( One.dll -Bcx )-FA_( )-FA(  )-FA( x.seq )");
    const CNotingLine line({"program", "-BC", "a.dll", "-ip", "c:\\p1", "d:/P2", "-fa", "-if", "c:/x.esd", "*.esd"});
    EXPECT_EQ(line.others, "-BC( a.dll )-FA( )");
    EXPECT_EQ(line.plates, (std::vector<std::string>{"c:\\p1", "d:/P2"}));
    EXPECT_EQ(line.files, std::vector<std::string>{"c:/x.esd"});
    EXPECT_TRUE(CNotingLine({}).switches.empty());
}
