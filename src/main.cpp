// SPDX-License-Identifier: MIT
// The program's entry point.
#include <exception>
#include <string>
#include <vector>

#include "discovery/FileTypeFilter.h"
#include "platform/Console.h"
#include "platform/Process.h"
#include "run/RunDriver.h"
#include "run/StartUpLog.h"
#include "run/Switches.h"

namespace {

constexpr int exitDone = 0;
constexpr int exitFailed = 1;

int RunProgram(int argc, const char* const* argv) {
    // Comes before the log: without it the log could open as descriptor 1, or end the process at a file size limit.
    const bool isStarted = platform::StartProcess();
    startuplog::Begin();
    if (!isStarted) {
        platform::PrintError("Fatal Error: MFC initialization failed\n");
        startuplog::Append("Fatal Error: MFC initialization failed\n");
        return exitFailed;
    }
    CRunDriver driver(1);
    std::string words;
    for (int i = 0; i < argc; ++i)
        words.append(argv[i]).append("\n");
    startuplog::Append(words);
    // Samples of a folder are processed in the order of these types.
    const std::vector<CFileTypeFilter> fileTypes{{"*.esd"}, {"*.rsd"}};
    return driver.ProcessCommandLine(argc, argv, SwitchNames(), fileTypes) != 0 ? exitDone : exitFailed;
}

int RunAndReport(int argc, const char* const* argv) try {
    return RunProgram(argc, argv);
} catch (const std::exception& error) {
    // Written without allocating memory, since a lack of memory may be the error.
    for (const char* text : {"Fatal Error: ", error.what(), "\n"})
        platform::PrintError(text);
    return exitFailed;
}

}  // namespace

int main(int argc, char** argv) {
    const int exitCode = RunAndReport(argc, argv);
    platform::EndProcess();
    return exitCode;
}
