#include "config/IniSection.h"

#include <gtest/gtest.h>

#include <array>

#include "config/FileExists.h"
#include "config/Registry.h"
#include "support/Environment.h"
#include "support/TempFolder.h"

using testsupport::TempFolder;
using Lines = std::vector<std::string>;

TEST(IniSection, GivesTheLinesOfTheFirstSectionOfThatName) {
    TempFolder folder;
    const std::string file = folder.Write("f.ini",
                                          "before\tany\n[other]\nx\n \t[GENERAL] \r\n"
                                          "  a\tb \t\r\n\r\n ; comment\n;c\n[no section\n\tc=d\r\r\n"
                                          "[Next]\n[General]\nlate\tline\n[last]\nend");
    EXPECT_EQ(ReadIniSection("General", file), (Lines{"a\tb", "[no section", "c=d\r"}));
    EXPECT_EQ(ReadIniSection("last", file), Lines{"end"});
    EXPECT_TRUE(ReadIniSection("Next", file).empty());
    EXPECT_TRUE(ReadIniSection("none", file).empty());
    EXPECT_TRUE(ReadIniSection("General", folder.Path("none.ini")).empty());
    EXPECT_TRUE(ReadIniSection("General", folder.Path()).empty());
}

TEST(IniSection, IsCutToItsBuffer) {
    TempFolder folder;
    // 20 lines of 49 bytes with their NULs are 980 bytes, so 18 are left for the next.
    std::string text = "[s]\n";
    for (int i = 0; i < 20; ++i)
        text += std::string(48, 'x') + "\n";
    const std::string fits = folder.Write("fits.ini", text + "key 890123456\tvY\n");
    EXPECT_EQ(ReadIniSection("s", fits).back(), "key 890123456\tvY");
    const std::string cut = folder.Write("cut.ini", text + "key 8901234567890\tY\nlost\n");
    EXPECT_EQ(ReadIniSection("s", cut).size(), 21u);
    EXPECT_EQ(ReadIniSection("s", cut).back(), "key 8901234567890\t");

    std::array<char, 8> buffer;
    buffer.fill('?');
    EXPECT_EQ(GetPrivateProfileSectionA("s", buffer.data(), 6, cut), 4u);
    EXPECT_EQ(std::string_view(buffer.data(), 8), std::string_view("xxxx\0\0??", 8));
    EXPECT_EQ(GetPrivateProfileSectionA("s", buffer.data(), 1, cut), 0u);
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_EQ(GetPrivateProfileSectionA("s", nullptr, 0, cut), 0u);
}

TEST(IniSection, LinesAndValuesHaveTheirForms) {
    const auto entry = SplitIniLine("KEY = 1 \t two\tthree ");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->key, "KEY = 1");
    EXPECT_EQ(entry->value, "two\tthree");
    EXPECT_FALSE(SplitIniLine("KEY=Y"));
    EXPECT_TRUE(IsIniTrue("t") && IsIniTrue("Y"));
    EXPECT_FALSE(IsIniTrue("yes") || IsIniTrue("1") || IsIniTrue(""));
    EXPECT_EQ(IniNumber(" -12x"), -12);
    EXPECT_EQ(IniNumber("abc"), 0);
    EXPECT_EQ(IniNumber("99999999999999999999"), 2147483647);
}

TEST(Registry, ATextFitsWithItsEndOrIsNotRead) {
    TempFolder folder;
    const testsupport::Environment store(
        "QUILLION_REGISTRY", folder.Write("r.ini", "[s]\nfits = " + std::string(259, 'f') +
                                                       "\nlong = " + std::string(260, 'l') + "\nempty =\n"));
    RegistryText text;
    EXPECT_NE(GetRegStr("S", "fits", text), 0);
    EXPECT_EQ(std::string(text.data()), std::string(259, 'f'));
    EXPECT_EQ(GetRegStr("s", "long", text), 0);
    EXPECT_EQ(GetRegStr("s", "none", text), 0);
    EXPECT_NE(GetRegStr("s", "empty", text), 0);
    EXPECT_EQ(text[0], '\0');

    EXPECT_NE(FileExists(folder.Path() + "\\r.ini"), 0);
    EXPECT_EQ(FileExists(folder.Path("R.ini")), 0);
    EXPECT_EQ(FileExists(""), 0);
}
