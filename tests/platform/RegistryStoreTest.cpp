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
    const Environment store("QUILLION_REGISTRY", folder.Write("r.ini",
                                                              "Path = before any section\r\n"
                                                              "[Quillion\\Base Calling]\r\n"
                                                              "; Path = comment\r\n"
                                                              "  # Path = comment\r\n"
                                                              "\tPath =  /opt/a = b \t\r\n"
                                                              "Empty=\n"
                                                              "no equals sign\n"
                                                              "[other]\nPath = other\nRelative = ./x\nUp = ../y\n"
                                                              "Here = .\nHidden = .z\n"
                                                              "[ quillion\\BASE calling ]\nlater = 1\nLATER = 2"));
    const char* key = "Quillion\\Base Calling";
    EXPECT_EQ(ReadRegistryText(key, "path"), "/opt/a = b");
    EXPECT_EQ(ReadRegistryText(key, "Empty"), "");
    EXPECT_EQ(ReadRegistryText(key, "Later"), "2");
    EXPECT_EQ(ReadRegistryText("OTHER", "Path"), "other");
    EXPECT_FALSE(ReadRegistryText(key, "no equals sign"));
    EXPECT_FALSE(ReadRegistryText("none", "Path"));
    EXPECT_EQ(ReadRegistryText("other", "Relative"), folder.Path("x"));
    EXPECT_EQ(ReadRegistryText("other", "Relative", false), "./x");
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
    {
        const Environment configuration("XDG_CONFIG_HOME", folder.Path("config"));
        EXPECT_EQ(ReadRegistryText("s", "v"), "config");
        const Environment given("QUILLION_REGISTRY", folder.Path("none.ini"));
        EXPECT_EQ(platform::RegistryStorePath(), folder.Path("none.ini"));
        EXPECT_FALSE(ReadRegistryText("s", "v"));
    }
    const Environment noConfiguration("XDG_CONFIG_HOME", std::nullopt);
    EXPECT_EQ(ReadRegistryText("s", "v"), "home");
}

TEST(RegistryStore, ARelativeStoreStillGivesFullPaths) {
    TempFolder folder;
    folder.Write("r.ini", "[s]\nv = ./x\n");
    const std::string before = platform::CurrentFolder().value();
    ASSERT_EQ(platform::SetCurrentFolder(folder.Path()), 0);
    const Environment store("QUILLION_REGISTRY", "r.ini");
    EXPECT_EQ(ReadRegistryText("s", "v"), platform::CurrentFolder().value() + "/x");
    ASSERT_EQ(platform::SetCurrentFolder(before), 0);
}

TEST(Drives, HeadsOfPathsBecomeFoldersOfTheHost) {
    TempFolder folder;
    const Environment store("QUILLION_REGISTRY",
                            folder.Write("r.ini", "[drives]\nc = /mnt/c\nD: = ./data/\nE =\nZ = /elsewhere\n"));
    EXPECT_EQ(NativePath("z:/data\\p1/*.esd"), "/data/p1/*.esd");
    EXPECT_EQ(NativePath("Z:"), "/");
    EXPECT_EQ(NativePath("C:\\runs\\a"), "/mnt/c/runs/a");
    EXPECT_EQ(NativePath("c:runs"), "/mnt/c/runs");
    EXPECT_EQ(NativePath("C:"), "/mnt/c");
    EXPECT_EQ(NativePath("d:/x"), folder.Path("data/x"));
    EXPECT_FALSE(NativePath("e:/x"));
    EXPECT_FALSE(NativePath("Q:/x"));
    EXPECT_EQ(NativePath("1:/x"), "1:/x");
    EXPECT_EQ(NativePath("sub\\x:y"), "sub/x:y");

    EXPECT_EQ(platform::MakeDirectory("Q:/x"), ENOENT);
    EXPECT_EQ(platform::CopyFile("Z:/dev/null", "Q:/x"), ENOENT);
    EXPECT_TRUE(platform::FindFiles("Q:/*").empty());
    EXPECT_FALSE(platform::IsSameFile("Q:/x", "Q:/x"));
}
