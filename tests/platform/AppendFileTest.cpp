#include "platform/AppendFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "support/TempFolder.h"

using platform::AppendFile;

TEST(AppendFile, RecordsOfSeveralProcessesStandWholeOneAfterAnother) {
    testsupport::TempFolder folder;
    constexpr int processes = 4, records = 50;
    const std::string record(10000, 'r');
    for (int i = 0; i < processes; ++i)
        if (::fork() == 0) {
            for (int k = 0; k < records; ++k) {
                AppendFile file;
                if (file.Open(folder.Path("f")) || file.Append(std::to_string(i) + record + "\n") || file.Close())
                    ::_exit(1);
            }
            ::_exit(0);
        }
    for (int i = 0, status = 0; i < processes; ++i)
        EXPECT_TRUE(::wait(&status) > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0);
    std::ifstream in(folder.Path("f"));
    int whole = 0;
    for (std::string line; std::getline(in, line); ++whole)
        ASSERT_EQ(line.substr(1), record);
    EXPECT_EQ(whole, processes * records);
}

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
