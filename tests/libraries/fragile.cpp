// SPDX-License-Identifier: MIT
// Calls bases like every_tenth, but a sample whose first channel begins with one of these numbers is its end. Its code
// is the one that $FRAGILE_CODE names, if any.
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

static void Enter(std::string_view entry);
#define ENTERED(entry) Enter(entry)
#define GetBaseCallerCod GetUsualCode
#include "every_tenth.cpp"
#undef GetBaseCallerCod

static void Enter(std::string_view entry) {
    static bool isDoomed = false;
    if (entry == "CleanUp" && isDoomed && channels.empty()) std::abort();  // as it is released
    if (entry != "ExecuteProcedure" || channels[0].empty()) return;
    if (channels[0][0] == 101) std::abort();
    if (channels[0][0] == 102) raise(SIGKILL);
    if (channels[0][0] == 103) std::exit(0);
    if (channels[0][0] == 106) _exit(0);
    if (channels[0][0] == 105) isDoomed = true;
    if (channels[0][0] == 104)
        while (true)
            pause();
}

extern "C" const char* GetBaseCallerCod(void) {
    const char* const code = std::getenv("FRAGILE_CODE");
    return code ? code : "FRA";
}
