// SPDX-License-Identifier: MIT
#include "platform/RegistryStore.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "platform/Drives.h"
#include "platform/Files.h"
#include "support/Environment.h"
#include "support/TempFolder.h"

using platform::NativePath;
using platform::ReadRegistryText;
using testsupport::Environment;
using testsupport::TempFolder;

TEST(RegistryStore, ReadsTheLatestTextWithoutRegardToCase) {
    TempFolder folder;
    const Environment store("QUILLION_REGISTRY",
                            folder.Write("r.ini",
                                         "Path = before any section\r\n[Quillion\\Base Calling]\r\n"
                                         "; Path = comment\r\n  # Path = comment\r\n\tPath =  /opt/a = b \t\r\n"
                                         "Empty=\nno equals sign\n"
                                         "[other]\nPath = other\nRelative = ./x\nUp = ../y\nHere = .\nHidden = .z\n"
                                         "[ quillion\\BASE calling ]\nlater = 1\nLATER = 2"));
    const char* key = "Quillion\\Base Calling";
    EXPECT_EQ(ReadRegistryText(key, "path"), "/opt/a = b");
    EXPECT_EQ(ReadRegistryText(key, "Empty"), "");
    EXPECT_EQ(ReadRegistryText(key, "Later"), "2");
    EXPECT_FALSE(ReadRegistryText(key, "no equals sign"));
    EXPECT_EQ(ReadRegistryText("other", "Relative"), folder.Path("x"));
    EXPECT_EQ(ReadRegistryText("other", "Up"), folder.Path("../y"));
    EXPECT_EQ(ReadRegistryText("other", "Here"), folder.Path());
    EXPECT_EQ(ReadRegistryText("other", "Hidden"), ".z");
}

TEST(RegistryStore, IsLookedForInTheKnownPlaces) {
    TempFolder folder;
    folder.Write("config/quillion/registry.ini", "[s]\nv = config\n");
    folder.Write("home/.config/quillion/registry.ini", "[s]\nv = home\n");
    const Environment home("HOME", folder.Path("home"));
    const Environment noStore("QUILLION_REGISTRY", std::nullopt);
    const Environment noConfiguration("XDG_CONFIG_HOME", std::nullopt);
    EXPECT_EQ(ReadRegistryText("s", "v"), "home");
    const Environment configuration("XDG_CONFIG_HOME", folder.Path("config"));
    EXPECT_EQ(ReadRegistryText("s", "v"), "config");
    const Environment given("QUILLION_REGISTRY", folder.Path("none.ini"));
    EXPECT_FALSE(ReadRegistryText("s", "v"));
}

TEST(Drives, HeadsOfPathsBecomeFoldersOfTheHost) {
    TempFolder folder;
    const Environment store("QUILLION_REGISTRY",
                            folder.Write("r.ini", "[drives]\nc = /mnt/c\nD: = ./data/\nE =\nZ = /elsewhere\n"));
    EXPECT_EQ(NativePath("z:/data\\p1/*.esd"), "/data/p1/*.esd");
    EXPECT_EQ(NativePath("Z:"), "/");
    EXPECT_EQ(NativePath("c:runs"), "/mnt/c/runs");
    EXPECT_EQ(NativePath("d:/x"), folder.Path("data/x"));
    EXPECT_FALSE(NativePath("e:/x"));
    EXPECT_EQ(NativePath("sub\\x:y"), "sub/x:y");
    EXPECT_EQ(platform::MakeDirectory("Q:/x"), ENOENT);
    std::vector<platform::FoundEntry> entries;
    EXPECT_EQ(platform::FindFiles("Q:/*", entries), ENOENT);
    EXPECT_TRUE(entries.empty());
}
