#include "run/StartUpLog.h"

#include <cerrno>

#include "platform/Console.h"
#include "platform/Files.h"

namespace startuplog {

namespace {

constexpr const char* name = "BaseCallStartUp.log";

platform::Error Add(platform::OpenMode mode, std::string_view text) {
    const auto folder = platform::ProgramFolder();
    if (!folder) return ENOENT;  // in another folder nobody would look for it
    platform::File log;
    if (const platform::Error error = log.Open(*folder + name, mode)) return error;
    if (const platform::Error error = log.SeekFromEnd(0)) return error;
    if (const platform::Error error = log.Write(text)) return error;
    return log.Close();
}

void Write(platform::OpenMode mode, std::string_view text) {
    const platform::Error error = Add(mode, text);
    // An installation that its users may not write to goes without, and that is nothing odd.
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
