// SPDX-License-Identifier: MIT
#include "platform/AtomicFile.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

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
        EXPECT_NE(file.TemporaryName().find(std::to_string(::getpid())), std::string::npos);
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
    // A number may come again: this process lives, but it did not make the file.
    folder.Write(".lw" + std::to_string(::getpid()) + "-7.tmp", "left");
    folder.Write(".lwnotes.tmp", "of somebody");
    AtomicFile file;
    ASSERT_EQ(file.Open(folder.Path("a")), 0);
    EXPECT_FALSE(folder.Has(".lw" + std::to_string(killed) + "-1.tmp"));
    EXPECT_FALSE(folder.Has(".lw" + std::to_string(::getpid()) + "-7.tmp"));
    EXPECT_TRUE(folder.Has(".lw" + std::to_string(alive) + "-1.tmp"));
    EXPECT_TRUE(folder.Has(".lwnotes.tmp"));
    end(alive);
    ::close(ready[0]);
    ::close(ready[1]);
}
