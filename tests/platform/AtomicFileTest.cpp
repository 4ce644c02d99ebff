// SPDX-License-Identifier: MIT
#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>

#include "support/TempFolder.h"

using platform::AtomicFile;
using testsupport::TempFolder;

namespace {

std::string NamesIn(const TempFolder& folder) {
    std::string names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        names += entry.path().filename().string() + ' ';
    return names;
}

}  // namespace

TEST(AtomicFile, GetsItsNameWhenItIsComplete) {
    TempFolder folder;
    const std::string other = folder.Write("other", "of somebody");
    ASSERT_EQ(::symlink(other.c_str(), folder.Path("a").c_str()), 0);
    {
        AtomicFile file, second;
        ASSERT_EQ(file.Open(folder.Path("a")), 0);
        EXPECT_EQ(file.Open(folder.Path("b")), EBUSY);
        ASSERT_EQ(second.Open(folder.Path("a")), 0);
        EXPECT_TRUE(file.TemporaryName().starts_with(folder.Path(platform::TemporaryBeginning(::getpid()))));
        std::array<char, 65> machine{};
        ASSERT_EQ(::gethostname(machine.data(), machine.size() - 1), 0);
        EXPECT_NE(file.TemporaryName().find(machine.data()), std::string::npos);
        file.Write("one ");
        file.Write("two");
        EXPECT_EQ(folder.Read("a"), "of somebody");
        EXPECT_EQ(file.Commit(), 0);
        EXPECT_EQ(file.Commit(), EBADF);
    }
    EXPECT_EQ(folder.Read("a"), "one two");
    EXPECT_EQ(folder.Read("other"), "of somebody") << "the link was followed";
    AtomicFile lost;
    EXPECT_EQ(lost.Open(folder.Path("none/a")), ENOENT);
    lost.Write("nowhere");
    EXPECT_EQ(lost.Commit(), ENOENT);
    EXPECT_EQ(lost.Open(folder.Path()), EISDIR);
    std::filesystem::remove(other);
    EXPECT_EQ(NamesIn(folder), "a ");
}

TEST(AtomicFile, ANewOneReplacesNothing) {
    TempFolder folder;
    AtomicFile first, second;
    ASSERT_EQ(first.Open(folder.Path("a")), 0);
    ASSERT_EQ(second.Open(folder.Path("a")), 0);
    first.Write("first");
    EXPECT_EQ(first.CommitNew(), 0);
    EXPECT_EQ(second.CommitNew(), EEXIST);
    EXPECT_EQ(folder.Read("a") + NamesIn(folder), "firsta ");
}

TEST(AtomicFile, AnErrorOfAnyStepLeavesTheFormerFile) {
    TempFolder folder;
    folder.Write("a", "former");
    AtomicFile file;
    ASSERT_EQ(file.Open(folder.Path("a")), 0);
    // Somebody takes the temporary file away.
    ASSERT_EQ(::unlink(file.TemporaryName().c_str()), 0);
    file.Write("new");
    EXPECT_EQ(file.Commit(), ENOENT);
    EXPECT_EQ(folder.Read("a"), "former");
}

TEST(AtomicFile, WhatAKilledProcessLeftGoesWithTheNextFile) {
    TempFolder folder;
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const auto begin = [&] {
        const pid_t child = ::fork();
        if (child == 0) {
            AtomicFile file;
            const bool isOpen = !file.Open(folder.Path("a"));
            static_cast<void>(!::write(ready[1], isOpen ? "y" : "n", 1));
            ::pause();
        }
        char answer = 0;
        EXPECT_EQ(::read(ready[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        return child;
    };
    const auto end = [](pid_t child) {
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    };
    const pid_t killed = begin(), alive = begin();
    end(killed);
    const auto named = [](pid_t process, const char* number) {
        return platform::TemporaryBeginning(process) + number + ".tmp";
    };
    // A number may come again: this process lives, but it did not make the file.
    folder.Write(named(::getpid(), "7"), "left");
    folder.Write(named(alive, "8"), "without a lock, as on a volume that has none");
    // Here nobody knows whether the processes of another machine live.
    const std::string there = ".lwfar-away.00c0ffee-" + std::to_string(killed);
    const auto makeOld = [&](const std::string& name) {
        std::filesystem::last_write_time(folder.Write(name, "left"),
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
    };
    folder.Write(there + "-1.tmp", "new");
    makeOld(there + "-2.tmp");
    makeOld(there + "-3.tmp");
    makeOld(".lw" + std::to_string(killed) + "-4.tmp");  // of a version that did not name the machine
    folder.Write(".lw" + std::to_string(killed) + "-5.tmp", "new");
    makeOld(".lwnotes.tmp");
    makeOld(".lwmy-notes-x.tmp");
    const int locked = ::open(folder.Path(there + "-3.tmp").c_str(), O_RDWR);
    ASSERT_EQ(::flock(locked, LOCK_EX), 0);

    AtomicFile file;
    ASSERT_EQ(file.Open(folder.Path("a")), 0);
    for (const std::string& gone :
         {named(killed, "1"), named(::getpid(), "7"), there + "-2.tmp", ".lw" + std::to_string(killed) + "-4.tmp"})
        EXPECT_FALSE(folder.Has(gone)) << gone;
    for (const std::string& kept :
         {named(alive, "1"), named(alive, "8"), there + "-1.tmp", there + "-3.tmp",
          ".lw" + std::to_string(killed) + "-5.tmp", std::string(".lwnotes.tmp"), std::string(".lwmy-notes-x.tmp")})
        EXPECT_TRUE(folder.Has(kept)) << kept;
    ::close(locked);
    end(alive);
    ::close(ready[0]);
    ::close(ready[1]);
}
