#include "run/StartUpLog.h"

#include <tuple>

#include "platform/Files.h"

namespace startuplog {

namespace {

void Write(platform::OpenMode mode, std::string_view text) {
    platform::File log;
    if (log.Open(platform::BesideProgram("BaseCallStartUp.log"), mode) || log.SeekFromEnd(0)) return;
    std::ignore = log.Write(text);
}

}  // namespace

void Begin() {
    Write(platform::OpenMode::CreateOrEmpty, "Starting Lanewright.exe\n");
}

void Append(std::string_view text) {
    Write(platform::OpenMode::CreateOrKeep, text);
}

}  // namespace startuplog
