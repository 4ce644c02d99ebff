// SPDX-License-Identifier: MIT
// CBaseCallerSet: the list of libraries. Section "Base Callers" of the settings has one per line: display name, TAB,
// file.
#include <algorithm>
#include <utility>

#include "config/IniSection.h"
#include "discovery/SplitPath.h"
#include "platform/Ascii.h"
#include "plugins/BaseCallerSet.h"
#include "records/Messages.h"
#include "run/RunDriver.h"

namespace {

constexpr const char* listSection = "Base Callers";
constexpr std::size_t maxListed = 20;
constexpr std::int32_t firstId = 22912;

// The libraries are in the folder of the settings file.
std::unique_ptr<CBaseCaller> MakeEntry(const CBaseCallerSet& set, const std::string& file, const std::string& name) {
    auto caller = std::make_unique<CBaseCaller>();
    caller->fileName = file;
    caller->folder = set.driver->settingsIniPath;
    SplitPath(caller->folder);
    caller->name = name;
    caller->id = firstId + static_cast<std::int32_t>(set.callers.size());
    return caller;
}

// The display name that the settings give for a file; empty if the file is not listed.
std::string ListedName(const std::string& file, const std::string& settings) {
    for (const std::string& line : ReadIniSection(listSection, settings)) {
        const auto entry = SplitIniLine(line);
        if (entry && platform::EqualIgnoringCase(entry->value, file)) return entry->key;
    }
    return {};
}

void ReadAnnotationSetting(const std::string& settings, std::int32_t& annotationOn) {
    for (const std::string& line : ReadIniSection("General", settings)) {
        const auto entry = SplitIniLine(line);
        if (!entry || entry->key != "ANNOTATION TURNED ON") continue;
        annotationOn = IsIniTrue(entry->value) ? 1 : 0;
        return;
    }
}

}  // namespace

std::int32_t CBaseCallerSet::ReadCallerList() {
    std::vector<std::string> lines = ReadIniSection(listSection, driver->settingsIniPath);
    if (lines.size() > maxListed) lines.resize(maxListed);
    for (const std::string& line : lines) {
        const auto entry = SplitIniLine(line);
        if (!entry || !IsNewCaller(entry->value, entry->key)) {
            driver->ReportSyntaxError(driver->settingsIniPath, listSection);
            return 0;
        }
        auto caller = MakeEntry(*this, entry->value, entry->key);
        // Loaded only to set folderSuffix. A library that does not load is an error only once it is selected.
        caller->Load();
        caller->Unload();
        callers.push_back(std::move(caller));
    }
    if (!callers.empty()) return 1;
    driver->ReportSyntaxError(driver->settingsIniPath, listSection);
    return 0;
}

bool CBaseCallerSet::IsNewCaller(const std::string& file, const std::string& name) const {
    return !file.empty() && !name.empty() && std::none_of(callers.begin(), callers.end(), [&](const auto& caller) {
        return caller->fileName == file || caller->name == name;
    });
}

std::int32_t CBaseCallerSet::BindOneCaller(const std::string& file) {
    callers.push_back(MakeEntry(*this, file, ListedName(file, driver->settingsIniPath)));
    CBaseCaller& caller = *callers.back();
    if (caller.Load() == 0) {
        driver->Report(FormatMessage(MessageId::CannotLoad, {file}));
        return 0;
    }
    caller.Unload();
    ReadDyeMatrix();
    ReadAnnotationSetting(driver->settingsIniPath, annotationOn);
    return 1;
}
