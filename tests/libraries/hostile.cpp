// SPDX-License-Identifier: MIT
// Calls bases like every_tenth, and does to the process what $MISCHIEF names whenever the entry point that $MISCHIEF_AT
// names is called, or as it is loaded ("load").
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cfenv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

static std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

static void Lower(__rlimit_resource resource, rlim_t limit) {
    rlimit now{};
    getrlimit(resource, &now);
    now.rlim_cur = limit;
    setrlimit(resource, &now);
}

static void Misbehave(const std::string& mischief) {
    static int calls = 0;
    ++calls;
    if (mischief == "exits") std::exit(0);
    if (mischief == "exits at once") std::quick_exit(0);
    if (mischief == "crashes") std::abort();
    if (mischief == "throws") throw 1;
    if (mischief == "reads its folder" && access("basecall.ini", R_OK) != 0) std::abort();
    if (mischief == "moves" && chdir("/") != 0) std::abort();
    if (mischief == "masks") umask(0777);
    if (mischief == "rounds") std::fesetround(FE_UPWARD);
    if (mischief == "closes") close(STDOUT_FILENO);
    if (mischief == "prints") {
        std::printf("a word ");
        if (write(STDOUT_FILENO, "of a library\n", 13) != 13) std::abort();
    }
    if (mischief == "limits files") Lower(RLIMIT_FSIZE, 300);
    if (mischief == "limits descriptors") Lower(RLIMIT_NOFILE, 3);
    if (mischief == "leaves a thread")
        std::thread([] {
            while (true)
                std::this_thread::sleep_for(std::chrono::microseconds(50));
        }).detach();
    // What was changed the first time must be as before at the second.
    if (mischief == "lets pipes kill") calls == 1 ? std::signal(SIGPIPE, SIG_DFL), 0 : std::raise(SIGPIPE);
    if (mischief == "cannot be ended") calls == 1 ? std::signal(SIGTERM, SIG_IGN), 0 : std::raise(SIGTERM);
    if (mischief == "cannot be stopped") calls == 1 ? std::signal(SIGINT, SIG_IGN), 0 : std::raise(SIGINT);
}

#define ENTERED(entry) \
    if (Variable("MISCHIEF_AT") == (entry)) Misbehave(Variable("MISCHIEF"))

namespace {
struct Loading {
    Loading() { ENTERED("load"); }
} loading;
}  // namespace

#include "every_tenth.cpp"
