// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "support/TempFolder.h"

using platform::File;
using platform::OpenMode;
using testsupport::TempFolder;

namespace {

std::string Names(const std::string& pattern) {
    std::string names;
    std::vector<platform::FoundEntry> entries;
    static_cast<void>(platform::FindFiles(pattern, entries));
    for (const auto& entry : entries)
        names += (names.empty() ? "" : " ") + entry.name + (entry.isDirectory ? "/" : "");
    return names;
}

}  // namespace

TEST(Files, OpenModesPositionsAndStates) {
    TempFolder folder;
    const std::string path = folder.Path("f");
    File file;
    EXPECT_EQ(file.Open(path, OpenMode::Update), ENOENT);
    EXPECT_EQ(file.Open(folder.Write("f", "0123456789"), OpenMode::CreateOrKeep), 0);
    EXPECT_EQ(file.Open(path, OpenMode::Read), EBUSY);
    std::array<std::byte, 8> bytes{};
    std::size_t got = 0;
    EXPECT_EQ(file.SeekFromEnd(-3), 0);
    EXPECT_EQ(file.SeekSet(-1), EINVAL);
    EXPECT_EQ(file.SeekFromEnd(-11), EINVAL);
    EXPECT_EQ(file.Read(bytes, got), 0);
    EXPECT_EQ(got, 3u);

    File moved = std::move(file);
    EXPECT_EQ(file.Read(bytes, got), EBADF);
    EXPECT_EQ(moved.Truncate(4), 0);
    EXPECT_EQ(folder.Read("f"), "0123");
    for (const OpenMode mode : {OpenMode::Update, OpenMode::CreateOrEmpty, OpenMode::CreateOrKeep})
        EXPECT_EQ(File().Open(folder.Path(), mode), EISDIR);
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    for (const std::string& noFile : {folder.Path(), folder.Path("pipe"), std::string("/dev/zero")})
        EXPECT_EQ(File().Open(noFile, OpenMode::Read), ENXIO);
}

TEST(Files, AFullVolumeIsReportedAndAReadHasItsLimit) {
    File full;
    ASSERT_EQ(full.Open("/dev/full", OpenMode::Update), 0);
    EXPECT_EQ(full.Write("x"), ENOSPC);

    TempFolder folder;
    const std::string big(20000, 'b');
    const std::string path = folder.Write("big", big);
    std::string text = "before";
    EXPECT_EQ(platform::ReadFile("/dev/zero", text, 10000), ENXIO);
    EXPECT_EQ(text, "before");
    EXPECT_EQ(platform::ReadFile(path, text, big.size() - 1), 0);
    EXPECT_EQ(text.size(), big.size() - 1);
    EXPECT_EQ(platform::ReadFile(path, text, big.size()), 0);
    EXPECT_EQ(text, big);
}

TEST(Files, ACopyReplacesItsTargetButNeverItsSource) {
    TempFolder folder;
    const std::string bytes = std::string(600000, 'r') + "end";
    const std::string raw = folder.Write("raw", bytes);
    ASSERT_EQ(::chmod(raw.c_str(), 0440), 0);
    const std::string target = folder.Write("target", std::string(700000, 'o'));
    EXPECT_EQ(platform::CopyFile(raw, target), 0);
    EXPECT_EQ(folder.Read("target"), bytes);
    EXPECT_EQ(platform::SetNormalAttributes(target), 0);
    struct stat status {};
    EXPECT_EQ(::stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);

    ASSERT_EQ(::chmod(raw.c_str(), 0640), 0);
    ASSERT_EQ(::symlink(raw.c_str(), folder.Path("soft").c_str()), 0);
    ASSERT_EQ(::link(raw.c_str(), folder.Path("hard").c_str()), 0);
    for (const std::string& same : {raw, folder.Path("soft"), folder.Path("hard"), folder.Path(".//.\\raw")}) {
        EXPECT_EQ(platform::CopyFile(raw, same), EEXIST) << same;
        EXPECT_EQ(folder.Read("raw"), bytes) << same;
    }
    EXPECT_EQ(platform::CopyFile(raw, "/dev/full"), ENOSPC);
    EXPECT_EQ(::access("/dev/full", F_OK), 0);
    EXPECT_EQ(platform::CopyFile(folder.Path("none"), folder.Path("new")), ENOENT);
    EXPECT_FALSE(folder.Has("new"));
    EXPECT_EQ(platform::DeleteFile(folder.Path(std::string_view("raw\0b", 5))), ENOENT);
}

TEST(FindFiles, WildcardsTakeTheLastComponentAndSortWithoutCase) {
    TempFolder folder;
    for (const char* name : {"b2.RSD", "a10.rsd", "B1.rsd", "b1.rsd", "_.rsd", "noext", "a.rsd"})
        folder.Write(name, "");
    folder.Write("dir.rsd/in.esd", "");
    ASSERT_EQ(::symlink("gone", folder.Path("lost.rsd").c_str()), 0);

    // "_" comes after all letters in upper case, as volumes that ignore case have it.
    EXPECT_EQ(Names(folder.Path("*.rsd")), "a.rsd a10.rsd B1.rsd b1.rsd b2.RSD dir.rsd/ lost.rsd _.rsd");
    EXPECT_EQ(Names(folder.Path() + "\\B?.RSD"), "B1.rsd b1.rsd b2.RSD");
    EXPECT_EQ(Names(folder.Path("a*1*d")), "a10.rsd");
    EXPECT_NE(Names(folder.Path("*.*")).find("noext"), std::string::npos);
    EXPECT_EQ(Names(folder.Path("dir.rsd")), "dir.rsd/");
    for (const char* nothing : {"A.rsd", "?", "*/in.esd", "none/*", "lost.rsd", "dir.rsd/", "."})
        EXPECT_EQ(Names(folder.Path(nothing)), "") << nothing;
}
