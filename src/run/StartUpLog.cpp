// SPDX-License-Identifier: MIT
#include "run/StartUpLog.h"

#include <cerrno>

#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"

namespace startuplog {

namespace {

constexpr const char* name = "BaseCallStartUp.log";

platform::Error Add(platform::OpenMode mode, std::string_view text) {
    const auto folder = platform::ProgramFolder();
    if (!folder) return ENOENT;  // nobody would look for the log in another folder
    platform::File log;
    if (const platform::Error error = log.Open(*folder + name, mode)) return error;
    if (const platform::Error error = log.SeekFromEnd(0)) return error;
    if (const platform::Error error = log.Write(text)) return error;
    return log.Close();
}

void Write(platform::OpenMode mode, std::string_view text) {
    const platform::Error error = Add(mode, text);
    // An installation folder that users cannot write to is normal; it simply has no start-up log.
    if (!error || error == EACCES || error == EPERM || error == EROFS) return;
    platform::Warn({name, " cannot be written: ", error.Text()});
}

}  // namespace

void Begin() {
    Write(platform::OpenMode::CreateOrEmpty, "Starting Lanewright.exe\n");
}

void Append(std::string_view text) {
    Write(platform::OpenMode::CreateOrKeep, text);
}

}  // namespace startuplog
