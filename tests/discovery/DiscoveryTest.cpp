#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "discovery/FolderScan.h"
#include "discovery/ListFolder.h"
#include "discovery/SplitPath.h"
#include "platform/Files.h"
#include "run/CommandLine.h"
#include "support/TempFolder.h"
#include "support/WorkingFolder.h"

using testsupport::TempFolder;
using testsupport::WorkingFolder;
using Paths = std::vector<std::string>;

namespace {

const std::vector<CFileTypeFilter> types = {{"*.esd"}, {"*.rsd"}};

// Paths below the temporary folder with "\" as the separator, one after the other.
std::string Below(const TempFolder& folder, const Paths& paths) {
    std::string text;
    for (const std::string& path : paths) {
        const bool inside = path.starts_with(folder.Path());
        text += (text.empty() ? "" : " ") + (inside ? path.substr(folder.Path().size()) : path);
    }
    std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

CCommandLine Expanded(const Paths& words) {
    std::vector<const char*> argv = {"program"};
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    return {static_cast<int>(argv.size()), argv.data(), {"-BC"}, {"*.esd", "*.rsd"}};
}

// Two plates, one of them with a folder and a sample below, and one folder of another name.
class Discovery : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"d\\stray.esd", "d\\P1\\b.rsd", "d\\P1\\a.ESD", "d\\P1\\sub\\deep.esd", "d\\p2\\c.esd",
                                 "d\\other\\x.rsd", "d\\P1\\note.txt"})
            folder.Write(Slashed(name), "");
        folder.MakeFolder("d/P1/dir.esd");
    }
    static std::string Slashed(std::string name) {
        std::replace(name.begin(), name.end(), '\\', '/');
        return name;
    }

    TempFolder folder;
};

}  // namespace

TEST(SplitPath, TheLastSeparatorOfEitherKindDivides) {
    const auto split = [](std::string path) {
        const std::string last = SplitPath(path);
        return path + "|" + last;
    };
    EXPECT_EQ(split("c:\\a/b.esd"), "c:\\a|b.esd");
    EXPECT_EQ(split("a/b\\c"), "a/b|c");
    EXPECT_EQ(split("a\\b\\"), "a\\b|");
    EXPECT_EQ(split("/a"), "|a");
    EXPECT_EQ(split("plain"), "|plain");
    EXPECT_EQ(split(""), "|");
}

TEST_F(Discovery, APlainFolderIsListedOneLevelDeepTypeAfterType) {
    CFolderScan scan(folder.Path("d/P1"), types, false);
    EXPECT_EQ(scan.folder, folder.Path("d/P1"));
    EXPECT_EQ(Below(folder, scan.files), "\\d\\P1\\a.ESD \\d\\P1\\dir.esd \\d\\P1\\b.rsd");
    EXPECT_EQ(Below(folder, scan.subfolders), "\\d\\P1\\dir.esd \\d\\P1\\sub");

    scan.Scan(folder.Path("none"), types, false);
    EXPECT_TRUE(scan.files.empty() && scan.subfolders.empty());

    Paths found = {folder.Path("d") + "\\P1"};
    EXPECT_TRUE(ListFolder(folder.Path("d/p*"), found, true));
    EXPECT_EQ(Below(folder, found), "\\d\\P1 \\d\\p2");
    EXPECT_TRUE(ListFolder(folder.Path("d/*.esd"), found, true));
    EXPECT_EQ(found.size(), 2u);
    EXPECT_FALSE(ListFolder(folder.Path("d/*.none"), found, true));
}

TEST_F(Discovery, AWildcardWalksTheTreeLevelByLevel) {
    const CFolderScan scan(folder.Path("d/p*"), types, true);
    EXPECT_EQ(Below(folder, scan.subfolders), "\\d\\P1 \\d\\p2 \\d\\P1\\dir.esd \\d\\P1\\sub");
    EXPECT_EQ(Below(folder, scan.files),
              "\\d\\P1\\a.ESD \\d\\P1\\dir.esd \\d\\P1\\b.rsd \\d\\p2\\c.esd \\d\\P1\\sub\\deep.esd");
}

TEST_F(Discovery, ALinkBackEndsTheWalk) {
    ASSERT_EQ(::symlink("..", folder.Path("d/P1/up").c_str()), 0);
    ASSERT_EQ(::symlink(".", folder.Path("d/P1/here").c_str()), 0);
    const CFolderScan scan(folder.Path("d/P1*"), types, false);
    EXPECT_EQ(Below(folder, scan.subfolders), "\\d\\P1 \\d\\P1\\dir.esd \\d\\P1\\here \\d\\P1\\sub \\d\\P1\\up");
    EXPECT_EQ(std::count(scan.files.begin(), scan.files.end(), folder.Path("d") + "\\P1\\b.rsd"), 1);
    EXPECT_EQ(scan.files.size(), 4u);
}

TEST_F(Discovery, FoldersAndPlatesExpandInTheOrderOfTheCommandLine) {
    const std::string d = folder.Path("d");
    EXPECT_EQ(Below(folder, Expanded({"-id", d}).plates), "\\d\\other \\d\\P1 \\d\\p2");
    EXPECT_EQ(Below(folder, Expanded({"-id", d + "/P*"}).plates), "\\d\\P1 \\d\\p2 \\d\\P1\\dir.esd \\d\\P1\\sub");
    EXPECT_EQ(Below(folder, Expanded({"-ip", d + "\\p*"}).plates), "\\d\\P1 \\d\\p2");

    const CCommandLine line = Expanded({"-ip", "*.run", "typed/", d + "/o*", "-bc", d, "-id", d, "-ip", "typed/"});
    EXPECT_EQ(Below(folder, line.plates), "typed\\ \\d\\other \\d\\other \\d\\P1 \\d\\p2 typed\\");
    EXPECT_TRUE(line.files.empty());

    const WorkingFolder working(d);
    EXPECT_EQ(Expanded({"-id", "*"}).plates, (Paths{"other", "P1", "p2", "P1\\dir.esd", "P1\\sub"}));
}

TEST_F(Discovery, FilePatternsCountFromTheWorkingFolderWithoutADrive) {
    const std::string p1 = folder.Path("d/P1");
    const WorkingFolder working(folder.Path("d"));
    const std::string here = platform::CurrentFolder().value();

    EXPECT_EQ(Expanded({"-if", "*.esd", "None.esd", "P1/no*"}).files, (Paths{"None.esd", here + "\\P1\\note.txt"}));
    EXPECT_EQ(Expanded({"-if", "s*.esd"}).files, Paths{here + "\\\\stray.esd"});
    EXPECT_EQ(Expanded({"-if", "z:" + p1 + "\\b*"}).files, Paths{"z:" + p1 + "\\b.rsd"});
    // A separator at the head does not make a pattern absolute.
    EXPECT_TRUE(Expanded({"-if", p1 + "/b*"}).files.empty());
    EXPECT_EQ(Expanded({"-if", "/P1/b*"}).files, Paths{here + "\\/P1\\b.rsd"});
    // A wildcard in the folder takes the trees below what matches.
    EXPECT_EQ(Expanded({"-if", "P*/*.esd"}).files, (Paths{here + "\\P1\\a.ESD", here + "\\P1\\dir.esd",
                                                          here + "\\p2\\c.esd", here + "\\P1\\sub\\deep.esd"}));
}
