// SPDX-License-Identifier: MIT
#include "platform/ExchangedFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <vector>

#include "support/TempFolder.h"

using platform::ExchangedFile;

namespace {

class Exchanged : public testing::Test {
  protected:
    platform::Error Put(ExchangedFile& file, const std::vector<std::string_view>& parts, std::uint64_t same = 0,
                        const std::string& name = "log") {
        if (const platform::Error error = file.Begin(temp.Path(name))) return error;
        const platform::Error error = file.Replace(parts, same);
        file.End();
        return error;
    }
    std::string Both() const { return temp.Read("log") + '|' + temp.Read("log.temp"); }
    struct stat Status(const std::string& name) const {
        struct stat status {};
        EXPECT_EQ(::lstat(temp.Path(name).c_str(), &status), 0) << name;
        return status;
    }
    std::size_t Entries() const {
        const std::filesystem::directory_iterator all(temp.Path());
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }
    // Runs `work` in a process of its own, which may give up its rights, and gives its exit code.
    static int Elsewhere(const std::function<int()>& work) {
        const pid_t child = ::fork();
        if (child == 0) ::_exit(work());
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    testsupport::TempFolder temp;
};

}  // namespace

TEST_F(Exchanged, OnlyWhatDiffersIsWrittenAsLongAsNobodyElseWrites) {
    ExchangedFile file, other;
    temp.Write("log", "before");
    ASSERT_EQ(::chmod(temp.Path("log").c_str(), 0604), 0);
    EXPECT_EQ(Put(file, {"a", "", "z"}), 0);
    EXPECT_EQ(Both(), "az|before");
    EXPECT_EQ(Put(file, {"ab", "z"}, 1), 0);
    EXPECT_EQ(Both(), "abz|az");
    const ino_t first = Status("log").st_ino, second = Status("log.temp").st_ino;
    // Each goes over the state before the former one, and from where the former one began to differ from that.
    EXPECT_EQ(Put(file, {"abc", "z"}, 2), 0);
    EXPECT_EQ(Both(), "abcz|abz");
    EXPECT_EQ(Put(file, {"abcd", "z"}, 3), 0);
    EXPECT_EQ(Both(), "abcdz|abcz");
    EXPECT_EQ(Put(file, {"x"}, 0), 0);
    EXPECT_EQ(Both(), "x|abcdz") << "a shorter state";
    EXPECT_EQ(Status("log").st_ino, second) << "a file was made";
    EXPECT_EQ(Status("log.temp").st_ino, first) << "a file was made";
    EXPECT_EQ(Status("log").st_mode & 0777, 0604u);

    // Another process writes, as far as this object knows; then somebody touches the former state, or links to it.
    EXPECT_EQ(Put(other, {"of another"}), 0);
    ASSERT_EQ(file.Begin(temp.Path("log")), 0);
    EXPECT_FALSE(file.IsAsWritten());
    std::string text;
    EXPECT_EQ(file.Read(text, 9), EFBIG);
    EXPECT_EQ(file.Read(text, 10), 0);
    EXPECT_EQ(text, "of another");
    EXPECT_EQ(file.Replace(std::vector<std::string_view>{"of another", "1"}, 0), 0);
    EXPECT_EQ(Put(file, {"of another", "12"}, 11), 0);
    temp.Write("log.temp", "? another1");
    EXPECT_EQ(Put(file, {"of another", "123"}, 12), 0);
    EXPECT_EQ(Both(), "of another123|of another12");
    EXPECT_EQ(Put(file, {"of another", "1234"}, 13), 0);
    ASSERT_EQ(::link(temp.Path("log.temp").c_str(), temp.Path("mine").c_str()), 0);
    EXPECT_EQ(Put(file, {"of another", "12345"}, 14), 0);
    EXPECT_EQ(temp.Read("mine"), "of another123") << "written to through another name";
    EXPECT_EQ(Both(), "of another12345|of another1234");
    EXPECT_EQ(Entries(), 3u);
}

TEST_F(Exchanged, LinksAreFollowedAndOtherThingsRefused) {
    temp.MakeFolder("far");
    std::filesystem::create_symlink("far/next", temp.Path("log"));
    std::filesystem::create_symlink(temp.Path("far/end"), temp.Path("far/next"));
    ExchangedFile file;
    EXPECT_EQ(Put(file, {"one"}), 0) << "the end of the links was not made";
    EXPECT_EQ(Put(file, {"one", "two"}, 3), 0);
    EXPECT_EQ(temp.Read("log") + temp.Read("far/end.temp"), "onetwoone");
    for (const char* name : {"log", "far/next"})
        EXPECT_TRUE(std::filesystem::is_symlink(temp.Path(name))) << name;

    // The former state takes the place of a link, and of nothing but a file.
    std::filesystem::create_symlink("end", temp.Path("far/plain.temp"));
    EXPECT_EQ(Put(file, {"x"}, 0, "far/plain"), 0);
    EXPECT_EQ(temp.Read("far/end") + temp.Read("far/plain.temp"), "onetwo");
    temp.MakeFolder("far/folder.temp");
    temp.Write("far/folder", "kept");
    EXPECT_EQ(Put(file, {"y"}, 0, "far/folder"), EISDIR);
    EXPECT_EQ(temp.Read("far/folder"), "kept");

    std::filesystem::create_symlink("loop", temp.Path("loop"));
    std::filesystem::create_symlink("/dev/null", temp.Path("null"));
    EXPECT_EQ(Put(file, {"z"}, 0, "loop"), ELOOP);
    EXPECT_EQ(Put(file, {"z"}, 0, "null"), ENXIO);
    EXPECT_EQ(Put(file, {"z"}, 0, "far"), EISDIR);
    EXPECT_EQ(Put(file, {"z"}, 0, "gone/log"), ENOENT);
}

TEST_F(Exchanged, WhoWaitsFindsTheFileThatHasTheNameAfterwards) {
    temp.Write("log", "before");
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        ExchangedFile file;
        bool isGood = !file.Begin(temp.Path("log"));
        isGood = ::write(ready[1], "y", 1) == 1 && isGood;
        ::usleep(200000);  // meanwhile this process waits for the file that is about to lose its name
        isGood = isGood && !file.Replace(std::vector<std::string_view>{"of the other"}, 0);
        file.End();
        ::_exit(isGood ? 0 : 1);
    }
    char answer = 0;
    EXPECT_EQ(::read(ready[0], &answer, 1), 1);
    ExchangedFile file;
    std::string text;
    EXPECT_EQ(file.Begin(temp.Path("log")), 0);
    EXPECT_EQ(file.Read(text, 100), 0);
    EXPECT_EQ(text, "of the other");
    file.End();
    int status = 0;
    ::waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST_F(Exchanged, FileThatHasLostItsContentsIsReadFromItsFormerState) {
    const auto read = [&] {
        ExchangedFile file;
        std::string text = "error";
        EXPECT_EQ(file.Begin(temp.Path("log")), 0);
        EXPECT_EQ(file.Read(text, 100), 0);
        return text;
    };
    temp.Write("log", "");
    EXPECT_EQ(read(), "");
    temp.Write("log.temp", "former");
    EXPECT_EQ(read(), "former");
    temp.Write("log", std::string(50, '\0'));
    EXPECT_EQ(read(), "former");
    temp.Write("log", "now");
    EXPECT_EQ(read(), "now");
    // A file that somebody has removed begins anew.
    std::filesystem::remove(temp.Path("log"));
    EXPECT_EQ(read(), "");
}

TEST_F(Exchanged, AFileInAFolderThatMayNotBeWrittenToIsRewrittenInPlace) {
    constexpr uid_t nobody = 65534;
    temp.Write("log", "a longer state than the next");
    const bool isRoot = ::geteuid() == 0;
    if (isRoot)
        ASSERT_EQ(::chown(temp.Path("log").c_str(), nobody, nobody), 0);
    else
        ASSERT_EQ(::chmod(temp.Path("log").c_str(), 0666), 0);
    const ino_t before = Status("log").st_ino;
    ASSERT_EQ(::chmod(temp.Path().c_str(), 0555), 0);
    const auto put = [&](const std::vector<std::vector<std::string_view>>& states) {
        return Elsewhere([&] {
            ExchangedFile file;
            if (isRoot && ::seteuid(nobody) != 0) return 99;
            for (const auto& state : states)
                if (const platform::Error error = Put(file, state)) return error.Code();
            return 0;
        });
    };
    EXPECT_EQ(put({{"new ", "state"}, {"newer"}}), 0);
    EXPECT_EQ(temp.Read("log"), "newer");
    EXPECT_EQ(Status("log").st_ino, before);
    EXPECT_FALSE(temp.Has("log.temp"));

    ASSERT_EQ(::chmod(temp.Path("log").c_str(), 0444), 0);
    EXPECT_EQ(put({{"refused"}}), EACCES);
    ASSERT_EQ(::chmod(temp.Path().c_str(), 0755), 0);
    EXPECT_EQ(temp.Read("log"), "newer");
}
