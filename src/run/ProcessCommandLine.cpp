// CRunDriver: from the words of the command line to the settings and the operations of the run.
#include "platform/Files.h"
#include "records/Messages.h"
#include "run/CommandLine.h"
#include "run/RunDriver.h"
#include "run/SwitchTable.h"

namespace {

// What the switches say of the run itself; the rest goes into the base caller set.
struct RunRequest {
    std::vector<std::string> callerNames;
    bool callerSwitchAdded = false;
    bool needDefaultOutput = true;
    std::int32_t result = 0;  // of the latest choice of an output folder
};

// An empty word counts as no parameter.
bool HasParameter(const CParsedSwitch& given) {
    return !given.parameters.empty() && !given.parameters.front().empty();
}

// Operations on a called sample need the base call before the first of them, and need it once.
void EnsureBaseCall(CBaseCallerSet& set, RunRequest& request) {
    if (request.callerSwitchAdded) return;
    set.AddSwitch("-BC");
    request.callerSwitchAdded = true;
}

// The operations of a sample. False for a switch that is none.
bool ApplyOperation(const CParsedSwitch& given, CBaseCallerSet& set, RunRequest& request) {
    const std::string& name = given.name;
    if (name == "-BC") {
        EnsureBaseCall(set, request);
        if (HasParameter(given))
            request.callerNames.insert(request.callerNames.end(), given.parameters.begin(), given.parameters.end());
    } else if (name == "-ABD" || name == "-SCF" || name == "-PROC_TXT" || name == "-FAP" || name == "-FAG") {
        EnsureBaseCall(set, request);
        set.AddSwitch(name);
    } else if (name == "-RAW_TXT") {
        set.AddSwitch(name);
    } else if (name == "-FA" || name == "-FA_") {
        set.AddSwitch(name);
        if (HasParameter(given)) {
            if (name == "-FA") platform::DeleteIfThere(given.parameters.front());
            set.SetFastaFile(given.parameters.front());
        }
    } else {
        return false;
    }
    return true;
}

void ApplySetting(const CParsedSwitch& given, CRunDriver& driver, RunRequest& request) {
    constexpr std::size_t orderLength = 4;
    CBaseCallerSet& set = *driver.baseCallers;
    const std::string& name = given.name;
    if (name == "-OD") {
        if (!HasParameter(given)) return;
        request.result = driver.SetOutputFolder(given.parameters.front());
        request.needDefaultOutput = false;
    } else if (name == "-BO") {
        if (HasParameter(given) && given.parameters.front().size() == orderLength)
            set.SetBaseOrder(given.parameters.front());
        set.baseOrderForced = 1;
    } else if (name == "-GOOD_SEQ") {
        set.goodRegionOnly = 1;
    } else if (name == "-USER_EXT") {
        set.noExtensions = 1;
    } else if (name == "-NOEMPTY") {
        set.skipFailedExports = 1;
    } else if (name == "-PILE") {
        set.exportToSubfolders = 0;
    } else if (name == "-H") {
        ShowHelp();
    }
}

}  // namespace

std::int32_t CRunDriver::ProcessCommandLine(int argc, const char* const* argv,
                                            const std::vector<std::string>& switchNames,
                                            const std::vector<CFileTypeFilter>& types) {
    std::vector<std::string> patterns;
    patterns.reserve(types.size());
    for (const CFileTypeFilter& type : types)
        patterns.push_back(type.pattern);
    const CCommandLine line(argc, argv, switchNames, patterns);
    inputPlates = line.plates;
    inputFiles = line.files;
    fileTypes = types;
    // Ahead of all else: how anything is reported depends on it.
    for (const CParsedSwitch& given : line.switches)
        if (given.name == "-E") unattended = 1;

    if (LocateSettings() == 0) return 0;
    baseCallers = std::make_unique<CBaseCallerSet>(this);
    RunRequest request;
    for (const CParsedSwitch& given : line.switches)
        if (!ApplyOperation(given, *baseCallers, request)) ApplySetting(given, *this, request);
    if (request.needDefaultOutput) request.result = SetDefaultOutputFolder();
    if (request.result == 0) return 0;
    if (unattended != 0 && request.callerNames.empty()) {
        Report(FormatMessage(MessageId::LibraryNeeded));
        return 0;
    }
    return Run(request.callerNames);
}
