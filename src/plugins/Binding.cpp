// SPDX-License-Identifier: MIT
// CBaseCallerSet: which library of the list is current.
#include <algorithm>

#include "config/IniSection.h"
#include "platform/Ascii.h"
#include "plugins/BaseCallerSet.h"
#include "records/Messages.h"
#include "run/RunDriver.h"

namespace {

using Callers = std::vector<std::unique_ptr<CBaseCaller>>;

// Index of the first entry whose `field` is `text`, letter case ignored; the length of the list if there is none.
std::size_t IndexOf(const Callers& callers, std::string CBaseCaller::*field, const std::string& text) {
    const auto found = std::find_if(callers.begin(), callers.end(), [&](const auto& caller) {
        return platform::EqualIgnoringCase(*caller.*field, text);
    });
    return static_cast<std::size_t>(found - callers.begin());
}

}  // namespace

std::int32_t CBaseCallerSet::BindCallers(const std::string& file) {
    std::int32_t bound = 0;
    if (ReadCallerList() != 0) {
        if (!file.empty()) bound = SelectCaller(file);
        if (bound == 0) bound = BindDefaultCaller();
    }
    ReadDyeMatrix();
    return bound;
}

std::int32_t CBaseCallerSet::SelectCaller(const std::string& file) {
    const std::size_t i = IndexOf(callers, &CBaseCaller::fileName, file);
    if (i < callers.size()) return BindIndex(i);
    driver->Report(FormatMessage(MessageId::NotListed, {file, driver->settingsIniPath}));
    return 0;
}

std::int32_t CBaseCallerSet::BindDefaultCaller() {
    const std::vector<std::string> lines = ReadIniSection("Default", driver->settingsIniPath);
    return BindIndex(FindCallerByName(lines.empty() ? std::string() : lines.front()));
}

std::size_t CBaseCallerSet::FindCallerByName(const std::string& text) {
    const std::size_t i = IndexOf(callers, &CBaseCaller::name, text);
    if (i < callers.size()) return i;
    driver->Report(FormatMessage(MessageId::NotListed, {text, driver->settingsIniPath}));
    return 0;
}

std::int32_t CBaseCallerSet::BindIndex(std::size_t i) {
    if (i >= callers.size()) return 0;
    CBaseCaller& next = *callers[i];
    if (next.Load() == 0) {
        driver->Report(FormatMessage(MessageId::CannotLoad, {next.fileName}));
        return 0;
    }
    // The new library is loaded before the old one is released, so a failed selection leaves the old one in use.
    if (currentCaller && currentCaller->id != next.id) currentCaller->Unload();
    currentCaller = &next;
    return 1;
}
