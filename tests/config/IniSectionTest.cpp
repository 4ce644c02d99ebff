// SPDX-License-Identifier: MIT
#include "config/IniSection.h"

#include <gtest/gtest.h>

#include <array>

#include "config/Registry.h"
#include "support/Environment.h"
#include "support/TempFolder.h"

using testsupport::TempFolder;
using Lines = std::vector<std::string>;

TEST(IniSection, GivesTheLinesOfTheFirstSectionOfThatName) {
    TempFolder folder;
    const std::string file = folder.Write("f.ini",
                                          "before\tany\n[other]\nx\n \t[GENERAL] \r\n  a\tb \t\r\n\r\n ; comment\n;c\n"
                                          "[no section\n\tc=d\r\r\n[Next]\n[General]\nlate\tline\n[last]\nend");
    EXPECT_EQ(ReadIniSection("General", file), (Lines{"a\tb", "[no section", "c=d\r"}));
    EXPECT_EQ(ReadIniSection("last", file), Lines{"end"});
    EXPECT_TRUE(ReadIniSection("Next", file).empty());
    EXPECT_TRUE(ReadIniSection("General", folder.Path()).empty());
}

TEST(IniSection, IsCutToItsBuffer) {
    TempFolder folder;
    // 20 lines of 49 bytes with their NULs are 980 bytes, so 18 are left for the next.
    std::string text = "[s]\n";
    for (int i = 0; i < 20; ++i)
        text += std::string(48, 'x') + "\n";
    const std::string file = folder.Write("cut.ini", text + "key 8901234567890\tY\nlost\n");
    EXPECT_EQ(ReadIniSection("s", file).size(), 21u);
    EXPECT_EQ(ReadIniSection("s", file).back(), "key 8901234567890\t");

    std::array<char, 8> buffer;
    buffer.fill('?');
    EXPECT_EQ(GetPrivateProfileSectionA("s", buffer.data(), 6, file), 4u);
    EXPECT_EQ(std::string_view(buffer.data(), 8), std::string_view("xxxx\0\0??", 8));
    EXPECT_EQ(GetPrivateProfileSectionA("s", buffer.data(), 1, file), 0u);
}

TEST(Registry, ATextFitsWithItsEndOrIsNotRead) {
    TempFolder folder;
    const testsupport::Environment store(
        "QUILLION_REGISTRY",
        folder.Write("r.ini", "[s]\nfits = " + std::string(259, 'f') + "\nlong = " + std::string(260, 'l') + "\n"));
    RegistryText text;
    EXPECT_NE(GetRegStr("S", "fits", text), 0);
    EXPECT_EQ(std::string(text.data()), std::string(259, 'f'));
    EXPECT_EQ(GetRegStr("s", "long", text), 0);
}
