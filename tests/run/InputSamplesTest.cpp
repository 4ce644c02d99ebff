// SPDX-License-Identifier: MIT
#include "run/InputSamples.h"

#include <unistd.h>

#include "samplestore/SampleFixture.h"

using sampletest::SampleTest;

class InputSamples : public SampleTest {};

TEST_F(InputSamples, AreKnownByAnyNameAndOtherSamplesOnlyThroughALink) {
    const auto sample = [&](const std::string& name) {
        temp.MakeFolder(name.substr(0, name.rfind("/")));
        ASSERT_EQ(WriteSample(Path(name), sampletest::RawInfo(3), sampletest::NumberedScans(3)), 0);
    };
    const auto link = [&](const std::string& name, const std::string& to) {
        std::filesystem::create_symlink(Path(to), Path(name));
    };
    for (const char* name : {"p/a.rsd", "q/data", "archive/b", "archive/named.ESD"})
        sample(name);
    temp.Write("p/torn.esd", "no trailer");
    // Its 25th byte from the end makes it look like a sample of version 8 to 32.
    temp.Write("q/text", std::string(1000, 'A'));
    std::string sized = temp.Read("q/data");
    for (const char* name : {"q/fitting", "q/unfitting"}) {
        temp.Write(name, sized);
        ++sized[sized.size() - 632 + 458];
    }
    link("p/linked.rsd", "archive/b");
    ASSERT_EQ(::link(Path("p/a.rsd").c_str(), Path("hard").c_str()), 0);
    link("soft", "p/a.rsd");
    link("soft.again", "soft");
    link("to.data", "q/data");
    link("to.named", "archive/named.ESD");
    link("to.text", "q/text");
    link("to.unfitting", "q/unfitting");
    link("to.fitting", "q/fitting");
    link("to.nothing", "none");
    link("to.none", "none.rsd");
    link("to.to.none", "to.none");
    link("name.esd", "none");

    const std::vector<CFileTypeFilter> types{{"*.esd"}, {"*.rsd"}};
    const CInputSamples none, plate({Path("p"), Path("missing")}, {}, types),
        files({}, {Path("q/data"), Path("q/text"), Path("none.rsd")}, types);
    // What may be neither written to nor replaced, by name.
    const auto forbidden = [&](const CInputSamples& samples, const char* name) {
        return std::string(samples.IsWriteForbidden(Path(name)) ? "write " : "") +
               (samples.IsReplaceForbidden(Path(name)) ? "replace" : "");
    };
    for (const char* name : {"p/a.rsd", "hard", "p/../p/a.rsd", "p/torn.esd", "archive/b", "p/linked.rsd"})
        EXPECT_EQ(forbidden(plate, name), "write replace") << name;
    for (const char* name : {"p/a.rsd", "hard", "p/../p/a.rsd", "p/torn.esd", "archive/b"})
        EXPECT_EQ(forbidden(none, name), "") << name;
    // Links may give their place to another file, but for those that are the input's own.
    for (const char* name : {"soft", "soft.again", "to.data", "to.named", "to.fitting"})
        EXPECT_EQ(forbidden(plate, name), "write ") << name;
    for (const char* name : {"soft", "soft.again", "to.data", "to.named", "p/linked.rsd"})
        EXPECT_EQ(forbidden(none, name), "write ") << name;
    // Nor does a link make a sample.
    for (const char* name : {"to.none", "to.to.none", "name.esd"})
        EXPECT_EQ(forbidden(none, name), "write ") << name;
    for (const char* name :
         {"q/text", "to.text", "to.unfitting", "to.nothing", "none.rsd", "missing", "archive/named.ESD"})
        EXPECT_EQ(forbidden(plate, name), "") << name;
    for (const char* name : {"q/text", "none.rsd", "p/a.rsd"})
        EXPECT_EQ(forbidden(files, name), "") << name;
    EXPECT_EQ(forbidden(files, "q/data"), "write replace");
}
