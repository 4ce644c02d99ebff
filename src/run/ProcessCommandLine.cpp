// CRunDriver: from the words of the command line to the settings and the operations of the run.
#include "records/Messages.h"
#include "run/CommandLine.h"
#include "run/RunDriver.h"
#include "run/Switches.h"

std::int32_t CRunDriver::ProcessCommandLine(int argc, const char* const* argv,
                                            const std::vector<std::string>& switchNames,
                                            const std::vector<CFileTypeFilter>& types) {
    const CCommandLine line(argc, argv, switchNames, types);
    inputPlates = line.plates;
    inputFiles = line.files;
    fileTypes = types;
    // Ahead of all else: how anything is reported depends on it.
    for (const CParsedSwitch& given : line.switches)
        if (IsSwitch(given.name, Switch::Unattended)) unattended = 1;

    if (LocateSettings() == 0) return 0;
    baseCallers = std::make_unique<CBaseCallerSet>(this);
    RunRequest request;
    for (const CParsedSwitch& given : line.switches)
        ApplySwitch(given, *this, request);
    if (request.needDefaultOutput) request.result = SetDefaultOutputFolder();
    if (request.result == 0) return 0;
    if (unattended != 0 && request.callerNames.empty()) {
        Report(FormatMessage(MessageId::LibraryNeeded));
        return 0;
    }
    return Run(request.callerNames);
}
