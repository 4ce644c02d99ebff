// From the parameters of -ID, -IP and -IF to plate folders and sample files.

#include "discovery/FolderScan.h"
#include "discovery/ListFolder.h"
#include "discovery/SplitPath.h"
#include "platform/Files.h"
#include "run/CommandLine.h"
#include "run/Switches.h"

namespace {

// True for a parameter with a "*" to search for. One without is taken as typed, and one that begins with it is dropped.
bool NeedsSearch(const std::string& parameter, std::vector<std::string>& out) {
    const std::size_t star = parameter.find('*');
    if (star == std::string::npos) out.push_back(parameter);
    return star != std::string::npos && star != 0;
}

void Append(const std::vector<std::string>& from, std::vector<std::string>& to) {
    to.insert(to.end(), from.begin(), from.end());
}

void ExpandPlateFolder(const std::string& parameter, std::vector<std::string>& plates) {
    if (!NeedsSearch(parameter, plates)) return;
    std::vector<std::string> found;
    ListFolder(parameter, found, true);
    Append(found, plates);
}

void ExpandFiles(const std::string& parameter, std::vector<std::string>& files) {
    if (!NeedsSearch(parameter, files)) return;
    std::string folder = parameter;
    const std::string pattern = SplitPath(folder);
    // Only a drive makes a folder absolute; a separator at its head does not.
    if (folder.find(':') == std::string::npos) {
        const auto working = platform::CurrentFolder();
        if (!working) return;
        folder = *working + '\\' + folder;
    }
    Append(CFolderScan(folder, {{pattern}}, false).files, files);
}

}  // namespace

void CCommandLine::ExpandInputs(const std::vector<CFileTypeFilter>& patterns) {
    for (const CParsedSwitch& given : switches) {
        if (IsSwitch(given.name, Switch::InputFolders)) {
            for (const std::string& parameter : given.parameters)
                Append(CFolderScan(parameter, patterns, true).subfolders, plates);
        } else if (IsSwitch(given.name, Switch::InputPlates)) {
            for (const std::string& parameter : given.parameters)
                ExpandPlateFolder(parameter, plates);
        } else if (IsSwitch(given.name, Switch::InputFiles)) {
            for (const std::string& parameter : given.parameters)
                ExpandFiles(parameter, files);
        } else {
            OnOtherSwitch(given);
        }
    }
}
