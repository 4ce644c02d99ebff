#include "run/CommandLine.h"

#include <gtest/gtest.h>

namespace {

const std::vector<std::string> names = {"-BC", "-FA", "-FA_"};

// The switches with their parameters, such as "-BC(a b) -FA()".
std::string Grouped(const std::vector<CParsedSwitch>& switches) {
    std::string text;
    for (const CParsedSwitch& given : switches) {
        text += (text.empty() ? "" : " ") + given.name + "(";
        for (const std::string& parameter : given.parameters)
            text += (&parameter == &given.parameters.front() ? "" : " ") + parameter;
        text += ")";
    }
    return text;
}

std::string Grouped(std::vector<const char*> words) {
    words.insert(words.begin(), "-BC");  // the program's own name is never looked at
    return Grouped(CCommandLine(static_cast<int>(words.size()), words.data(), names, {}).switches);
}

// Notes the switches that are no input.
class CNotingLine : public CCommandLine {
  public:
    std::vector<CParsedSwitch> others;

    explicit CNotingLine(const std::vector<const char*>& words)
        : CCommandLine(static_cast<int>(words.size()), words.data(), names) {
        ExpandInputs({"*.esd"});
    }

  protected:
    void OnOtherSwitch(const CParsedSwitch& given) override { others.push_back(given); }
};

}  // namespace

TEST(CommandLine, GroupsWordsUnderTheSwitchBefore) {
    EXPECT_EQ(Grouped({"lost.dll", "-bc", "One.dll", "-Bcx", "-fa_", "-fa", "", "-FA", "x.seq"}),
              "-BC(One.dll -Bcx) -FA_() -FA() -FA(x.seq)");
    EXPECT_EQ(Grouped(std::vector<const char*>{}), "");
    const char* nothing = nullptr;
    EXPECT_TRUE(CCommandLine(0, &nothing, names, {}).switches.empty());
}

TEST(CommandLine, HandsOtherSwitchesToADerivedClass) {
    const CNotingLine line({"program", "-BC", "a.dll", "-ip", "c:\\p1", "d:/P2", "-fa", "-if", "c:/x.esd", "*.esd"});
    EXPECT_EQ(Grouped(line.others), "-BC(a.dll) -FA()");
    EXPECT_EQ(line.plates, (std::vector<std::string>{"c:\\p1", "d:/P2"}));
    EXPECT_EQ(line.files, std::vector<std::string>{"c:/x.esd"});
    EXPECT_EQ(line.knownNames.size(), 6u);
}
