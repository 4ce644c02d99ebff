// SPDX-License-Identifier: MIT
// CRunDriver: where the settings files are and where the output goes.

#include <cerrno>
#include <optional>

#include "config/FileExists.h"
#include "config/Registry.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "records/Messages.h"
#include "run/RunDriver.h"

namespace {

std::optional<std::string> RegistryValue(const char* subKey, const char* valueName) {
    RegistryText text{};
    if (GetRegStr(subKey, valueName, text) == 0) return std::nullopt;
    return text.data();
}

// Sets `found` to the path of `fileName` in the folder that the registry gives for `subKey`. False, after showing a box
// with that path, if there is no such file; the box is shown in unattended runs too.
bool Locate(const char* subKey, const char* fileName, std::string& found) {
    const auto folder = RegistryValue(subKey, "Path");
    const std::string candidate = folder ? *folder + '\\' + fileName : std::string();
    if (FileExists(candidate) == 0) {
        platform::ShowBox(FormatMessage(MessageId::CannotLocate, {candidate}));
        return false;
    }
    found = candidate;
    return true;
}

}  // namespace

void WarnUnlessFolder(const std::string& path) {
    if (platform::IsOtherThanFolder(path)) platform::Warn({"the output folder ", path, " is not a folder"});
}

std::int32_t CRunDriver::LocateSettings() {
    if (!Locate(baseCallingKey, "basecall.ini", settingsIniPath)) return 0;
    if (unattended != 0 || skipAnalysisIni != 0) return 1;
    return Locate(strandReaderKey, "StrandReader.ini", analysisIniPath) ? 1 : 0;
}

std::int32_t CRunDriver::SetOutputFolder(const std::string& path) {
    if (MakeFolder(path) == 0) return 0;
    WarnUnlessFolder(path);
    outputFolder = path;
    return 1;
}

std::int32_t CRunDriver::SetDefaultOutputFolder() {
    const char* const valueName = "AnalyzedDataPath";
    const auto stored = RegistryValue(baseCallingKey, valueName);
    if (!stored) {
        Report(FormatMessage(MessageId::CannotReadRegistry, {valueName}));
        return 0;
    }
    if (SetOutputFolder(*stored) != 0) return 1;
    const auto installation = RegistryValue(baseCallingKey, "QuillionDir");
    return installation ? SetOutputFolder(*installation + "\\AnalyzedData") : 0;
}

std::int32_t CRunDriver::MakeFolder(const std::string& path) {
    // Any error but a missing parent will show when the folder is written to.
    if (platform::MakeDirectory(path) != ENOENT) return 1;
    Report(FormatMessage(MessageId::PathDoesNotExist, {path}));
    return 0;
}
