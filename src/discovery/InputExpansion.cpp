// SPDX-License-Identifier: MIT
// CCommandLine: turns the parameters of -ID, -IP and -IF into plate folders and sample files.

#include "discovery/FolderScan.h"
#include "discovery/ListFolder.h"
#include "discovery/SplitPath.h"
#include "platform/Console.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "run/CommandLine.h"
#include "run/Switches.h"

namespace {

// Adds a parameter without a "*" to `out` as typed. For one with a "*" `search` adds the matches, with a warning if
// there are none; one that begins with "*" is ignored, with a warning.
template <class Search>
void Expand(const std::string& parameter, std::vector<std::string>& out, Search search) {
    const std::size_t star = parameter.find('*');
    if (star == std::string::npos) {
        out.push_back(parameter);
        return;
    }
    const std::size_t before = out.size();
    if (star == 0)
        platform::Warn({parameter, " begins with a wildcard and is ignored"});
    else if (search(); out.size() == before)
        platform::Warn({parameter, " matches nothing"});
}

void Append(const std::vector<std::string>& from, std::vector<std::string>& to) {
    to.insert(to.end(), from.begin(), from.end());
}

void WarnOfUnlisted(const std::string& folder, platform::Error error) {
    platform::Warn({folder, " cannot be listed: ", error.Text()});
}

void ExpandPlates(const std::string& parameter, const std::vector<CFileTypeFilter>& patterns,
                  std::vector<std::string>& plates) {
    const CFolderScan scan(parameter, patterns, true);
    for (const auto& [folder, error] : scan.unlisted)
        WarnOfUnlisted(folder, error);
    if (scan.subfolders.empty() && scan.unlisted.empty()) platform::Warn({parameter, " contains no folders"});
    Append(scan.subfolders, plates);
}

void SearchPlates(const std::string& parameter, std::vector<std::string>& plates) {
    std::vector<std::string> found;
    platform::Error error;
    ListFolder(parameter, found, true, &error);
    if (error) WarnOfUnlisted(parameter, error);
    Append(found, plates);
}

void SearchFiles(const std::string& parameter, std::vector<std::string>& files) {
    std::string folder = parameter;
    const std::string pattern = SplitPath(folder);
    // Only a drive makes a folder absolute; a leading separator does not.
    if (folder.find(':') == std::string::npos) {
        const auto working = platform::CurrentFolder();
        if (!working) return;
        folder = *working + '\\' + folder;
    }
    const CFolderScan scan(folder, {{pattern}}, false);
    for (const auto& [path, error] : scan.unlisted)
        WarnOfUnlisted(path, error);
    Append(scan.files, files);
}

}  // namespace

void CCommandLine::ExpandInputs(const std::vector<CFileTypeFilter>& patterns) {
    for (const CParsedSwitch& given : switches) {
        if (IsSwitch(given.name, Switch::InputFolders)) {
            for (const std::string& parameter : given.parameters)
                ExpandPlates(parameter, patterns, plates);
        } else if (IsSwitch(given.name, Switch::InputPlates)) {
            for (const std::string& parameter : given.parameters)
                Expand(parameter, plates, [&] { SearchPlates(parameter, plates); });
        } else if (IsSwitch(given.name, Switch::InputFiles)) {
            for (const std::string& parameter : given.parameters)
                Expand(parameter, files, [&] { SearchFiles(parameter, files); });
        } else {
            OnOtherSwitch(given);
        }
    }
}
