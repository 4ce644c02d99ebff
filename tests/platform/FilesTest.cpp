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
    for (const auto& entry : platform::FindFiles(pattern))
        names += (names.empty() ? "" : " ") + entry.name + (entry.isDirectory ? "/" : "");
    return names;
}

mode_t Permissions(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

}  // namespace

TEST(Files, OpenModesDifferInWhatTheyMakeAndKeep) {
    TempFolder folder;
    const std::string path = folder.Path("f");
    File file;
    EXPECT_EQ(file.Open(path, OpenMode::Read), ENOENT);
    EXPECT_EQ(file.Open(path, OpenMode::Update), ENOENT);
    ASSERT_EQ(file.Open(path, OpenMode::CreateOrKeep), 0);
    EXPECT_EQ(file.Open(path, OpenMode::Read), EBUSY);
    EXPECT_EQ(file.Write("kept"), 0);
    EXPECT_EQ(file.Close(), 0);

    ASSERT_EQ(file.Open(path, OpenMode::CreateOrKeep), 0);
    file.Close();
    EXPECT_EQ(folder.Read("f"), "kept");
    ASSERT_EQ(file.Open(path, OpenMode::Read), 0);
    EXPECT_NE(file.Write("x"), 0);
    file.Close();
    ASSERT_EQ(file.Open(path, OpenMode::CreateOrEmpty), 0);
    EXPECT_EQ(folder.Read("f"), "");

    for (const OpenMode mode : {OpenMode::Read, OpenMode::Update, OpenMode::CreateOrEmpty, OpenMode::CreateOrKeep}) {
        File other;
        EXPECT_EQ(other.Open(folder.Path(), mode), EISDIR);
        EXPECT_FALSE(other.IsOpen());
    }
}

TEST(Files, PositionsStayInsideAndSurviveABadSeek) {
    TempFolder folder;
    File file;
    ASSERT_EQ(file.Open(folder.Write("f", "0123456789"), OpenMode::Update), 0);
    std::array<std::byte, 8> bytes{};
    std::size_t got = 0;
    std::int64_t position = 0;
    EXPECT_EQ(file.SeekFromEnd(-3), 0);
    EXPECT_EQ(file.SeekSet(-1), EINVAL);
    EXPECT_EQ(file.SeekFromEnd(-11), EINVAL);
    EXPECT_EQ(file.Tell(position), 0);
    EXPECT_EQ(position, 7);
    EXPECT_EQ(file.Read(bytes, got), 0);
    EXPECT_EQ(got, 3u);
    EXPECT_EQ(file.Truncate(4), 0);
    EXPECT_EQ(file.Flush(), 0);

    File moved = std::move(file);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Read(bytes, got), EBADF);
    std::int64_t length = 0;
    EXPECT_EQ(moved.Length(length), 0);
    EXPECT_EQ(length, 4);
}

TEST(Files, AFullVolumeIsToldAndAReadHasItsLimit) {
    File full;
    ASSERT_EQ(full.Open("/dev/full", OpenMode::Update), 0);
    EXPECT_EQ(full.Write("x"), ENOSPC);

    TempFolder folder;
    const std::string big(20000, 'b');
    const std::string path = folder.Write("big", big);
    std::string text = "before";
    EXPECT_EQ(platform::ReadFile(path, text, big.size() - 1), EFBIG);
    EXPECT_EQ(text, "before");
    EXPECT_EQ(platform::ReadFile(path, text, big.size()), 0);
    EXPECT_EQ(text, big);
    EXPECT_EQ(platform::ReadFile("/dev/zero", text, 10000), EFBIG);
    EXPECT_EQ(platform::ReadFile(folder.Path(), text), EISDIR);
}

TEST(Files, ACopyReplacesItsTargetButNeverItsSource) {
    TempFolder folder;
    const std::string bytes = std::string(600000, 'r') + "end";
    const std::string raw = folder.Write("raw", bytes);
    ASSERT_EQ(::chmod(raw.c_str(), 0440), 0);
    const std::string target = folder.Write("target", std::string(700000, 'o'));
    EXPECT_EQ(platform::CopyFile(raw, target), 0);
    EXPECT_EQ(folder.Read("target"), bytes);
    EXPECT_EQ(Permissions(target), 0440u);
    EXPECT_EQ(platform::SetNormalAttributes(target), 0);
    EXPECT_EQ(Permissions(target), 0640u);
    EXPECT_FALSE(platform::IsSameFile(raw, target));

    ASSERT_EQ(::chmod(raw.c_str(), 0640), 0);
    ASSERT_EQ(::symlink(raw.c_str(), folder.Path("soft").c_str()), 0);
    ASSERT_EQ(::link(raw.c_str(), folder.Path("hard").c_str()), 0);
    for (const std::string& same : {raw, folder.Path("soft"), folder.Path("hard"), folder.Path(".//.\\raw")}) {
        EXPECT_TRUE(platform::IsSameFile(raw, same)) << same;
        EXPECT_EQ(platform::CopyFile(raw, same), EEXIST) << same;
        EXPECT_EQ(folder.Read("raw"), bytes) << same;
    }
    EXPECT_EQ(platform::CopyFile(raw, "/dev/full"), ENOSPC);
    EXPECT_EQ(::access("/dev/full", F_OK), 0);
    EXPECT_EQ(platform::CopyFile(folder.Path("none"), folder.Path("new")), ENOENT);
    EXPECT_FALSE(folder.Has("new"));
}

TEST(Files, NamesAreMadeMovedAndRemoved) {
    TempFolder folder;
    EXPECT_EQ(platform::MakeDirectory(folder.Path("a\\b")), ENOENT);
    EXPECT_EQ(platform::MakeDirectory(folder.Path("a")), 0);
    EXPECT_EQ(platform::MakeDirectory(folder.Path("a")), EEXIST);
    EXPECT_EQ(platform::MakeDirectory(""), ENOENT);
    folder.Write("a/one", "1");
    folder.Write("a/two", "2");
    EXPECT_EQ(platform::RenameFile(folder.Path("a\\one"), folder.Path("a/two")), 0);
    EXPECT_EQ(folder.Read("a/two"), "1");
    EXPECT_EQ(platform::DeleteFile(folder.Path("a\\two")), 0);
    EXPECT_EQ(platform::DeleteFile(folder.Path("a\\two")), ENOENT);
    EXPECT_NE(platform::DeleteFile(folder.Path("a")), 0);
    EXPECT_EQ(platform::DeleteFile(folder.Path(std::string_view("a\0b", 3))), ENOENT);
    EXPECT_GT(platform::FreeBytes(folder.Path()).value_or(0), 0u);
    EXPECT_FALSE(platform::FreeBytes(folder.Path("none")));
}

TEST(FindFiles, WildcardsTakeTheLastComponentAndSortWithoutCase) {
    TempFolder folder;
    for (const char* name : {"b2.RSD", "a10.rsd", "B1.rsd", "_.rsd", "c.esd", "noext", ".hidden", "a.rsd"})
        folder.Write(name, "");
    folder.MakeFolder("dir.rsd");
    ASSERT_EQ(::symlink("gone", folder.Path("lost.rsd").c_str()), 0);

    // "_" lies behind all letters in upper case, as volumes that ignore case have it.
    EXPECT_EQ(Names(folder.Path("*.rsd")), "a.rsd a10.rsd B1.rsd b2.RSD dir.rsd/ _.rsd");
    EXPECT_EQ(Names(folder.Path() + "\\B?.RSD"), "B1.rsd b2.RSD");
    EXPECT_EQ(Names(folder.Path("a*1*d")), "a10.rsd");
    EXPECT_EQ(Names(folder.Path("*.*")), Names(folder.Path("*")));
    EXPECT_NE(Names(folder.Path("*.*")).find("noext"), std::string::npos);
    EXPECT_EQ(Names(folder.Path("c.esd")), "c.esd");
    EXPECT_EQ(Names(folder.Path("C.esd")), "");
    EXPECT_EQ(Names(folder.Path("dir.rsd")), "dir.rsd/");
    EXPECT_EQ(Names(folder.Path("?")), "");
    EXPECT_EQ(Names(folder.Path("*/c.esd")), "");
    EXPECT_EQ(Names(folder.Path("none/*")), "");
    EXPECT_EQ(Names(folder.Path("lost.rsd")), "");
    EXPECT_EQ(Names(folder.Path("dir.rsd/")), "");
}

TEST(FindFiles, TiesGoByByteAndTheWorkingFolderServesPlainPatterns) {
    TempFolder folder;
    for (const char* name : {"ab", "aB", "Ab", "AB"})
        folder.Write(name, "");
    const auto before = platform::CurrentFolder();
    ASSERT_TRUE(before);
    ASSERT_EQ(platform::SetCurrentFolder(folder.Path()), 0);
    EXPECT_TRUE(platform::IsSameFile(platform::CurrentFolder().value_or(""), folder.Path()));
    EXPECT_EQ(Names("a*"), "AB Ab aB ab");
    ASSERT_EQ(platform::SetCurrentFolder(*before), 0);
}
