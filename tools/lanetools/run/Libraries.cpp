// SPDX-License-Identifier: MIT
#include "lanetools/run/Libraries.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "config/FileExists.h"
#include "config/IniSection.h"
#include "config/Registry.h"
#include "discovery/SplitPath.h"
#include "lanetools/system/Child.h"
#include "lanetools/system/Interrupt.h"
#include "platform/Ascii.h"
#include "platform/Drives.h"
#include "plugins/BaseCaller.h"
#include "plugins/BaseCallerSet.h"
#include "plugins/EntryPoints.h"
#include "run/RunDriver.h"
#include "run/Switches.h"

namespace lanetools {

namespace {

using std::chrono::steady_clock;

constexpr std::size_t mostListed = 20;  // the program does not look at further lines

std::string FindSettings() {
    RegistryText folder{};
    if (GetRegStr(baseCallingKey, "Path", folder) == 0) return {};
    const std::string path = std::string(folder.data()) + "\\basecall.ini";
    return FileExists(path) != 0 ? platform::NativePath(path).value_or(path) : std::string();
}

struct NamedLibrary {
    std::string name, file;
};

// The list in the settings; `error` is the reason why the program would refuse it.
std::vector<NamedLibrary> ReadList(const std::string& settings, std::string& error) {
    CRunDriver driver(1);
    CBaseCallerSet set(&driver);
    std::vector<NamedLibrary> list;
    for (const std::string& line : ReadIniSection("Base Callers", settings)) {
        if (list.size() == mostListed) break;
        const auto entry = SplitIniLine(line);
        if (!entry || !set.IsNewCaller(entry->value, entry->key)) {
            error = "the line \"" + line + "\" of its base callers lacks a TAB, a name or a file, or repeats one";
            return list;
        }
        list.push_back({entry->key, entry->value});
        set.callers.push_back(std::make_unique<CBaseCaller>());
        set.callers.back()->fileName = entry->value;
        set.callers.back()->name = entry->key;
    }
    if (list.empty()) error = "it lists no base callers";
    return list;
}

// Runs in a separate process: loads the library and returns the suffix and the missing entry point, each with a NUL at
// its end; one NUL if it does not load.
std::string Examine(const std::string& settings, const std::string& file) {
    CBaseCaller caller;
    caller.folder = settings;
    SplitPath(caller.folder);
    caller.fileName = file;
    if (caller.Load() == 0) return std::string(1, '\0');
    const std::string noSample;
    const CEntryPoints entries(caller.module, noSample, false);
    std::string answer = caller.folderSuffix + '\0' + entries.Missing() + '\0';
    caller.Unload();
    return answer;
}

CLibrary Try(const std::string& settings, const std::string& file, std::chrono::seconds limit) {
    CLibrary library;
    library.file = file;
    CChild child = CChild::Apart([&] { return Examine(settings, file); });
    const auto start = steady_clock::now();
    while (!child.IsEnded() && steady_clock::now() - start < limit) {
        CheckInterrupt();
        const std::array<CChild*, 1> one{&child};
        CChild::Wait(one, std::chrono::milliseconds(100));
    }
    const std::string answer = child.TakeOutput();
    const std::size_t first = answer.find('\0'), second = answer.find('\0', first + 1);
    if (child.IsEnded() && child.End().exitCode == CChild::exceptionCode && !answer.empty())
        throw std::runtime_error(file + ": the library cannot be tried out: " + answer);
    if (!child.IsEnded())
        library.accident = "hangs (for " + std::to_string(limit.count()) + " s)";
    else if (child.End().signal != 0)
        library.accident = "crashes (" + SignalName(child.End().signal) + ")";
    else if (answer.empty())
        library.accident = "ends the process";
    if (second == std::string::npos) return library;
    library.isLoaded = true;
    library.suffix = answer.substr(0, first);
    library.missing = answer.substr(first + 1, second - first - 1);
    return library;
}

template <class Entries, class GetText>
std::optional<std::size_t> IndexOf(const Entries& entries, const std::string& text, GetText getText) {
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (platform::EqualIgnoringCase(getText(entries[i]), text)) return i;
    return std::nullopt;
}

// An unattended run loads the one library that it names, listed or not.
std::vector<std::string> FilesToLoad(const CSwitchWords& switches, const std::vector<NamedLibrary>& list) {
    std::vector<std::string> files;
    if (switches.Has(Switch::Unattended)) {
        const auto named = switches.Libraries();
        if (!named.empty()) files.push_back(named.front());
    } else {
        for (const NamedLibrary& entry : list)
            files.push_back(entry.file);
    }
    return files;
}

CLibraries::Chosen DefaultLibrary(const std::string& settings, const std::vector<NamedLibrary>& list) {
    const std::vector<std::string> lines = ReadIniSection("Default", settings);
    const std::string name = lines.empty() ? std::string() : lines.front();
    return {name, IndexOf(list, name, [](const NamedLibrary& entry) { return entry.name; }), true};
}

}  // namespace

std::vector<std::string> CLibraries::Names(const std::vector<std::size_t>& ofChosen) const {
    std::vector<std::string> names;
    for (const std::size_t i : ofChosen)
        if (!chosen[i].isDefault) names.push_back(chosen[i].name);
    return names;
}

const std::string& CLibraries::File(std::size_t ofChosen) const {
    const Chosen& one = chosen[ofChosen];
    return one.index ? known[*one.index].file : one.name;
}

CLibraries FindLibraries(const CSwitchWords& switches, std::chrono::seconds limit) {
    CLibraries libraries;
    libraries.settings = FindSettings();
    if (libraries.settings.empty()) return libraries;
    const bool isUnattended = switches.Has(Switch::Unattended);
    std::vector<NamedLibrary> list;
    if (!isUnattended) list = ReadList(libraries.settings, libraries.listError);
    for (const std::string& file : FilesToLoad(switches, list))
        libraries.known.push_back(Try(libraries.settings, file, limit));
    for (const std::string& name : switches.Libraries())
        libraries.chosen.push_back(
            {name, IndexOf(libraries.known, name, [](const CLibrary& one) { return one.file; }), false});
    if (libraries.chosen.empty() && !isUnattended) libraries.chosen.push_back(DefaultLibrary(libraries.settings, list));
    return libraries;
}

}  // namespace lanetools
