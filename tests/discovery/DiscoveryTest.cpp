// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "discovery/FolderScan.h"
#include "discovery/SplitPath.h"
#include "platform/Files.h"
#include "run/CommandLine.h"
#include "support/TempFolder.h"

using Paths = std::vector<std::string>;

namespace {

const std::vector<CFileTypeFilter> types = {{"*.esd"}, {"*.rsd"}};

CCommandLine Expanded(const Paths& words) {
    std::vector<const char*> argv = {"program"};
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    return {static_cast<int>(argv.size()), argv.data(), {"-BC"}, types};
}

// Two plates, one of them with folders below, and one folder of another name. The working folder is the one above.
class Discovery : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"stray.esd", "P1/b.rsd", "P1/a.ESD", "P1/note.txt", "P1/sub/deep.esd",
                                 "P1/dir.esd/note.txt", "p2/c.esd", "other/x.rsd"})
            folder.Write(name, "");
        before = platform::CurrentFolder().value();
        ASSERT_EQ(platform::SetCurrentFolder(folder.Path()), 0);
        here = platform::CurrentFolder().value();
    }
    void TearDown() override { EXPECT_EQ(platform::SetCurrentFolder(before), 0); }

    testsupport::TempFolder folder;
    std::string before, here;
};

}  // namespace

TEST(SplitPath, TheLastSeparatorOfEitherKindDivides) {
    const auto split = [](std::string path) {
        const std::string last = SplitPath(path);
        return path + "|" + last;
    };
    EXPECT_EQ(split("c:\\a/b.esd"), "c:\\a|b.esd");
    EXPECT_EQ(split("a/b\\"), "a/b|");
    EXPECT_EQ(split("/a"), "|a");
    EXPECT_EQ(split("plain"), "|plain");
}

TEST_F(Discovery, APlainFolderIsOneLevelAndAWildcardATree) {
    CFolderScan scan("P1", types, false);
    EXPECT_EQ(scan.files, (Paths{"P1\\a.ESD", "P1\\dir.esd", "P1\\b.rsd"}));
    EXPECT_EQ(scan.subfolders, (Paths{"P1\\dir.esd", "P1\\sub"}));

    ASSERT_EQ(::symlink("..", "P1/up"), 0);
    scan.Scan("p*", types, true);
    EXPECT_EQ(scan.subfolders, (Paths{"P1", "p2", "P1\\dir.esd", "P1\\sub", "P1\\up"}));
    EXPECT_EQ(std::count(scan.files.begin(), scan.files.end(), "P1\\sub\\deep.esd"), 1);
    scan.Scan("none", types, false);
    EXPECT_TRUE(scan.files.empty());
    EXPECT_TRUE(scan.subfolders.empty());
}

TEST_F(Discovery, FoldersAndPlatesExpandInTheOrderOfTheCommandLine) {
    const CCommandLine line =
        Expanded({"-ip", "*.run", "typed/", "./p*", "-bc", "c", "-id", ".", "-ip", "typed/", "-id", "*"});
    EXPECT_EQ(line.plates, (Paths{"typed/", ".\\P1", ".\\p2", ".\\other", ".\\P1", ".\\p2", "typed/", "other", "P1",
                                  "p2", "P1\\dir.esd", "P1\\sub"}));
    EXPECT_TRUE(line.files.empty());
}

TEST_F(Discovery, FilePatternsCountFromTheWorkingFolderWithoutADrive) {
    EXPECT_EQ(Expanded({"-if", "*.esd", "None.esd", "P1/no*"}).files, (Paths{"None.esd", here + "\\P1\\note.txt"}));
    EXPECT_EQ(Expanded({"-if", "s*.esd"}).files, Paths{here + "\\\\stray.esd"});
    EXPECT_EQ(Expanded({"-if", "z:" + here + "/P1\\b*"}).files, Paths{"z:" + here + "/P1\\b.rsd"});
    // A separator at the head does not make a pattern absolute.
    EXPECT_EQ(Expanded({"-if", "/P1/b*"}).files, Paths{here + "\\/P1\\b.rsd"});
    // A wildcard in the folder takes the trees below what matches.
    EXPECT_EQ(Expanded({"-if", "P*/*.esd"}).files, (Paths{here + "\\P1\\a.ESD", here + "\\P1\\dir.esd",
                                                          here + "\\p2\\c.esd", here + "\\P1\\sub\\deep.esd"}));
}
