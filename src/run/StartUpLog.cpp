// SPDX-License-Identifier: MIT
#include "run/StartUpLog.h"

#include <cerrno>

#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "run/InputSamples.h"

namespace startuplog {

namespace {

constexpr const char* name = "BaseCallStartUp.log";

bool LeadsToSample(const std::string& path) {
    // As a single input file: is it a sample, whatever its name?
    return CInputSamples({}, {path}, {}).IsWriteForbidden(path);
}

// True if there is a sample file in the log's place, which must not be changed.
bool IsForbidden() {
    static const auto folder = platform::ProgramFolder();
    static const bool isForbidden = folder && LeadsToSample(*folder + name);
    return isForbidden;
}

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
    if (IsForbidden()) return;
    const platform::Error error = Add(mode, text);
    // An installation folder that users cannot write to is normal; it simply has no start-up log.
    if (!error || error == EACCES || error == EPERM || error == EROFS) return;
    platform::Warn({name, " cannot be written: ", error.Text()});
}

}  // namespace

void Begin() {
    if (IsForbidden()) platform::Warn({name, " is or leads to the place of a sample file and is not written"});
    Write(platform::OpenMode::CreateOrEmpty, "Starting Lanewright.exe\n");
}

void Append(std::string_view text) {
    Write(platform::OpenMode::CreateOrKeep, text);
}

}  // namespace startuplog
