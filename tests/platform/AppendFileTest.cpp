// SPDX-License-Identifier: MIT
#include "platform/AppendFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "support/TempFolder.h"

using platform::AppendFile;

TEST(AppendFile, AFailedRecordIsCutOffAgain) {
    testsupport::TempFolder folder;
    folder.Write("f", "before");
    // A limit that lets only a part of the record through.
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto former = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{100, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    AppendFile file;
    EXPECT_EQ(file.Open(folder.Path("f")), 0);
    EXPECT_EQ(file.Append(std::string(200, 'x')), EFBIG);
    EXPECT_EQ(file.Append(", after"), 0);
    EXPECT_EQ(file.Close(), 0);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, former);
    EXPECT_EQ(folder.Read("f"), "before, after");

    EXPECT_EQ(file.Open("/dev/full"), 0);
    EXPECT_EQ(file.Append("x"), ENOSPC);
    EXPECT_EQ(file.Open(folder.Path("f")), EBUSY);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.Open(folder.Path()), EISDIR);
}
